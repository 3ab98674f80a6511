#include "demo/host/tour/GroupRows.h"

#include "demo/datalayer/Sqlite.h"

namespace korvane::host
{

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
