#include "demo/host/tour/GroupRows.h"

#include "demo/datalayer/Sqlite.h"

namespace korvane::host
{

std::wstring shown(const GroupRow& row)
{
    return std::to_wstring(row.id) + L"  " + row.name + L"  (flags " + std::to_wstring(row.flags) + L")";
}

std::vector<GroupRow> readGroups(const std::wstring& databaseFile)
{
    const store::Connection connection(databaseFile, 2000);
    store::Statement statement(connection, "SELECT id, name, flags FROM groups ORDER BY position");
    std::vector<GroupRow> rows;
    while (statement.next())
        rows.push_back({statement.number(0), statement.text(1), statement.number(2)});
    return rows;
}

} // namespace korvane::host
