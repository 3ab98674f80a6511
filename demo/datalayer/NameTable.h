// The resources as the database holds them.
#pragma once

#include "demo/datalayer/Sqlite.h"

#include <string>
#include <vector>

namespace korvane::store
{

/// A resource as the member of a group.
struct Name
{
    long id;
    std::wstring text;
    long group;
    long color; ///< RGB; below 1 where none is chosen
};

/// The members of a group in their stored order; for group 0 those of every group, group by group.
std::vector<Name> namesOf(long group, const Connection& connection);

} // namespace korvane::store
