#include "demo/datalayer/TypeTable.h"

#include "demo/datalayer/BuiltIn.h"
#include "demo/datalayer/Text.h"

namespace korvane::store
{

namespace
{

constexpr MemberKind kind{.className = L"Types",
                          .items = "types",
                          .members = "group_types",
                          .id = "type_id",
                          .mayNotAdd = Code::mayNotAddTypes,
                          .mayNotEdit = Code::mayNotEditType,
                          .mayNotRemove = Code::mayNotRemoveType,
                          .mayNotArrange = Code::mayNotArrangeTypes,
                          .unknown = Code::unknownType,
                          .needsText = Code::typeNeedsText};

} // namespace

TypeTable::TypeTable(Store& store) : GroupMembers(store, kind) {}

std::vector<Type> TypeTable::list(long group) const
{
    std::vector<Type> types;
    Statement row(connection_,
                  "SELECT types.id, types.name, types.color"
                  "  FROM types"
                  "  LEFT JOIN group_types ON group_types.type_id = types.id AND group_types.group_id = ?1"
                  " WHERE types.id = ?2 OR group_types.group_id IS NOT NULL"
                  "    OR NOT EXISTS (SELECT 1 FROM group_types WHERE group_id = ?1 AND type_id <> ?2)"
                  " ORDER BY coalesce(group_types.position, iif(types.id = ?2, 0, 2147483647)), types.id",
                  group, builtInType);
    while (row.next())
        types.push_back({row.number(0), row.text(1), row.number(2)});
    return types;
}

TypeDetails TypeTable::fetch(long id) const
{
    Statement row(connection_,
                  "SELECT name, color, flags, (SELECT count(*) FROM group_types WHERE type_id = types.id)"
                  "  FROM types WHERE id = ?",
                  id);
    if (!row.next())
        throw refusal(Code::unknownType);
    return {row.text(0), row.number(1), row.number(2), row.number(3)};
}

bool TypeTable::permits(long operation, long id) const
{
    switch (operation)
    {
    case 1:
        return rights_.coversAnyGroup();
    case 2:
        return id != builtInType && rights_.coversAnyGroup();
    case 3:
        return rights_.coversType(id);
    default:
        return false;
    }
}

void TypeTable::requireFreeText(std::wstring_view text, long exceptItem) const
{
    for (const Type& type : list(0))
        if (type.id != exceptItem && sameText(type.text, text))
            throw refusal(Code::typeTextTaken, type.text);
}

/// A group that has no types of its own shows all: what it shows becomes its own, so that nothing is lost by adding
/// one, nor by removing one.
void TypeTable::prepareGroup(long group)
{
    if (Statement(connection_,
                  "SELECT 1 WHERE EXISTS (SELECT 1 FROM group_types WHERE group_id = ?1 AND type_id = ?2)"
                  "   AND EXISTS (SELECT 1 FROM group_types WHERE group_id = ?1 AND type_id <> ?2)",
                  group, builtInType)
            .next())
        return;
    long position = 0;
    for (const Type& type : list(group))
        Statement(connection_,
                  "INSERT INTO group_types (group_id, type_id, position) VALUES (?, ?, ?)"
                  " ON CONFLICT DO UPDATE SET position = excluded.position",
                  group, type.id, ++position)
            .run();
}

} // namespace korvane::store
