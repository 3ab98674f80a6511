#include "demo/datalayer/GroupTable.h"

#include "demo/datalayer/BuiltIn.h"
#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Text.h"

namespace korvane::store
{

namespace
{

Failure refusal(Code code, std::wstring_view detail = {})
{
    return error(code, L"Groups", detail);
}

void requireName(std::wstring_view name)
{
    if (isBlank(name))
        throw refusal(Code::groupNeedsName);
}

Group groupOf(const Statement& row)
{
    return {row.number(0), row.text(1), row.number(2)};
}

} // namespace

std::vector<Group> GroupTable::all() const
{
    std::vector<Group> groups;
    Statement row(connection_, "SELECT id, name, flags FROM groups ORDER BY position, id");
    while (row.next())
        groups.push_back(groupOf(row));
    return groups;
}

std::optional<Group> GroupTable::find(long id) const
{
    Statement row(connection_, "SELECT id, name, flags FROM groups WHERE id = ?", id);
    return row.next() ? std::optional(groupOf(row)) : std::nullopt;
}

bool GroupTable::mayPerform(long operation, long id) const
{
    const Reading reading(connection_);
    const auto rights = rights_.toGroup(id);
    switch (operation)
    {
    case 1:
        return rights.add;
    case 2:
        return rights.remove && !isBuiltInGroup(id) && find(id);
    case 3:
        return rights.change && !isBuiltInGroup(id) && find(id);
    default:
        return false;
    }
}

GroupChange GroupTable::add(std::wstring_view name, long flags)
{
    if (!rights_.toGroup(0).add)
        throw refusal(Code::mayNotAddGroups);
    requireName(name);

    Transaction transaction(connection_);
    requireFreeName(name, 0);
    Statement(connection_,
              "INSERT INTO groups (name, flags, position)"
              " VALUES (?, ?, (SELECT coalesce(max(position), 0) + 1 FROM groups))",
              name, flags)
        .run();
    return committed(transaction, connection_.lastInsertedId());
}

GroupChange GroupTable::remove(long id)
{
    if (!rights_.toGroup(id).remove)
        throw refusal(Code::mayNotDeleteGroup);
    if (isBuiltInGroup(id))
        throw refusal(Code::builtInGroup);

    Transaction transaction(connection_);
    requireExisting(id);
    if (isLast(id))
        throw refusal(Code::lastGroup);
    Statement(connection_, "DELETE FROM groups WHERE id = ?", id).run();
    return committed(transaction, 0);
}

GroupChange GroupTable::update(long id, std::wstring_view name, long flags)
{
    if (!rights_.toGroup(id).change || isBuiltInGroup(id))
        throw refusal(Code::mayNotChangeGroup);
    requireName(name);

    Transaction transaction(connection_);
    requireExisting(id);
    requireFreeName(name, id);
    Statement(connection_, "UPDATE groups SET name = ?, flags = ? WHERE id = ?", name, flags, id).run();
    return committed(transaction, id);
}

GroupChange GroupTable::setPosition(long id, long position)
{
    // Whoever arranges a database without groups of its own has nothing in his list but an empty entry.
    const bool isNothing = id == 0;
    if (!rights_.toGroup(0).change || isBuiltInGroup(id))
        throw refusal(Code::mayNotArrangeGroups);

    Transaction transaction(connection_);
    if (!isNothing)
        requireExisting(id);
    Statement(connection_, "UPDATE groups SET position = ?1 WHERE id = ?2 AND position <> ?1", position, id)
        .run();
    return committed(transaction, position);
}

void GroupTable::requireExisting(long id) const
{
    if (!find(id))
        throw refusal(Code::unknownGroup);
}

/// The built-in groups do not count: users cannot work with them.
bool GroupTable::isLast(long id) const
{
    Statement others(connection_, "SELECT 1 FROM groups WHERE id > ? AND id <> ?", lastBuiltInGroup, id);
    return !others.next();
}

/// The database knows the case of ASCII letters only, users know that of all.
void GroupTable::requireFreeName(std::wstring_view name, long exceptGroup) const
{
    for (const Group& group : all())
        if (group.id != exceptGroup && sameText(group.name, name))
            throw refusal(Code::groupNameTaken, group.name);
}

GroupChange GroupTable::committed(Transaction& transaction, long result) const
{
    // Read before the commit: whatever fails must not make a write that was done look undone.
    GroupChange change{result, all()};
    transaction.commit();
    return change;
}

} // namespace korvane::store
