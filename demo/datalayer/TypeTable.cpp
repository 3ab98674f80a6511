#include "demo/datalayer/TypeTable.h"

namespace korvane::store
{

std::vector<Type> Type::allOf(long group, const Connection& connection)
{
    std::vector<Type> types;
    Statement row(connection,
                  "SELECT types.id, types.name, types.color"
                  "  FROM types"
                  "  LEFT JOIN group_types ON group_types.type_id = types.id AND group_types.group_id = ?1"
                  " WHERE types.id = 0 OR group_types.group_id IS NOT NULL"
                  "    OR NOT EXISTS (SELECT 1 FROM group_types WHERE group_id = ?1 AND type_id <> 0)"
                  " ORDER BY types.id <> 0, group_types.position, types.id",
                  group);
    while (row.next())
        types.push_back({row.number(0), row.text(1), row.number(2)});
    return types;
}

} // namespace korvane::store
