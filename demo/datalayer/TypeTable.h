// The activity types as the database holds them.
#pragma once

#include "demo/datalayer/Sqlite.h"

#include <string>
#include <tuple>
#include <vector>

namespace korvane::store
{

struct Type
{
    long id;
    std::wstring text;
    long color; ///< RGB; below 1 where none is chosen

    static constexpr const wchar_t* loading = L"Types.Load";
    auto announced() const { return std::tie(id, text, color); }
    /// The built-in type, and then the types of a group in their stored order; all types for group 0, and for a
    /// group that has none of its own.
    static std::vector<Type> allOf(long group, const Connection& connection);
};

} // namespace korvane::store
