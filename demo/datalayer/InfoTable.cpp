#include "demo/datalayer/InfoTable.h"

namespace korvane::store
{

std::vector<InfoRow> InfoTable::rows(long name) const
{
    requireName(name);
    std::vector<InfoRow> rows;
    Statement row(connection_, "SELECT label, value FROM info WHERE name_id = ? ORDER BY position, label",
                  name);
    while (row.next())
        rows.push_back({row.text(0), row.text(1)});
    return rows;
}

void InfoTable::set(long name, std::wstring_view label, long position, std::wstring_view value)
{
    Transaction transaction(connection_);
    if (!rights_.mayEditName(name))
        throw error(Code::mayNotEditName, L"Names");
    requireName(name);
    if (position < 0)
        Statement(connection_, "DELETE FROM info WHERE name_id = ? AND label = ?", name, label).run();
    else if (!label.empty() || !value.empty())
        Statement(connection_,
                  "INSERT OR REPLACE INTO info (name_id, label, position, value) VALUES (?, ?, ?, ?)", name,
                  label, position, value)
            .run();
    transaction.commit();
}

void InfoTable::requireName(long name) const
{
    if (!Statement(connection_, "SELECT 1 FROM names WHERE id = ?", name).next())
        throw error(Code::unknownName, L"Names");
}

} // namespace korvane::store
