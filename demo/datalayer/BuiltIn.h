// What every database has from the beginning, and nobody changes.
#pragma once

namespace korvane::store
{

constexpr long unassignedGroup = 3; ///< shows the resources that are in no group
constexpr long lastBuiltInGroup = 3;
constexpr long builtInName = 1;    ///< the super-user
constexpr long builtInType = 0;    ///< it stands in every group
constexpr long builtInAccount = 1; ///< the administrator's

constexpr long noUser = -1; ///< the role of whoever may only read

constexpr bool isBuiltInGroup(long id) noexcept
{
    return id >= 1 && id <= lastBuiltInGroup;
}

} // namespace korvane::store
