// The resources as the database holds them.
#pragma once

#include "demo/datalayer/Sqlite.h"

#include <string>
#include <tuple>
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

    static constexpr const wchar_t* loading = L"Names.Load";
    auto announced() const { return std::tie(id, text, group, color); }
    /// The members of a group in their stored order; for group 0 those of every group, group by group.
    static std::vector<Name> allOf(long group, const Connection& connection);
};

} // namespace korvane::store
