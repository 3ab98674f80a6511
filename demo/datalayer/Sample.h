// Groups, resources with logins and messages, and activity types to play with.
#pragma once

#include "demo/datalayer/Store.h"

namespace korvane::store
{

/// Fills a database that has no resources but the built-in one. Groups and types that have the names of the
/// sample's are taken as they are.
void addSample(Store& store);

} // namespace korvane::store
