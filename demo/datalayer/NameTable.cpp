#include "demo/datalayer/NameTable.h"

namespace korvane::store
{

std::vector<Name> Name::allOf(long group, const Connection& connection)
{
    std::vector<Name> names;
    Statement row(connection,
                  "SELECT names.id, names.name, groups.id, names.color"
                  "  FROM groups"
                  "  JOIN group_names ON group_names.group_id = groups.id"
                  "  JOIN names ON names.id = group_names.name_id"
                  " WHERE ?1 IN (0, groups.id)"
                  " ORDER BY groups.position, groups.id, group_names.position, names.id",
                  group);
    while (row.next())
        names.push_back({row.number(0), row.text(1), row.number(2), row.number(3)});
    return names;
}

} // namespace korvane::store
