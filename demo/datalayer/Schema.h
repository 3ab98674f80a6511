// The tables of a database.
#pragma once

#include "demo/datalayer/Sqlite.h"

namespace korvane::store
{

/// Makes the tables and the first rows in an empty database; refuses databases of other programs and of newer
/// versions.
void prepareSchema(Connection& connection);

} // namespace korvane::store
