// The groups as they stand in the database file, read past the data layer.
#pragma once

#include <string>
#include <vector>

namespace korvane::host
{

struct GroupRow
{
    long id;
    std::wstring name;
    long flags;
    friend bool operator==(const GroupRow&, const GroupRow&) = default;
};

/// As the tour prints it.
std::wstring shown(const GroupRow& row);

/// In the order in which they are shown.
std::vector<GroupRow> readGroups(const std::wstring& databaseFile);

} // namespace korvane::host
