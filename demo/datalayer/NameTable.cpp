#include "demo/datalayer/NameTable.h"

#include "demo/datalayer/BuiltIn.h"

namespace korvane::store
{

namespace
{

constexpr MemberKind kind{.className = L"Names",
                          .items = "names",
                          .members = "group_names",
                          .id = "name_id",
                          .mayNotAdd = Code::mayNotAddNames,
                          .mayNotEdit = Code::mayNotEditName,
                          .mayNotRemove = Code::mayNotRemoveName,
                          .mayNotArrange = Code::mayNotArrangeNames,
                          .unknown = Code::unknownName,
                          .needsText = Code::nameNeedsText};

} // namespace

NameTable::NameTable(Store& store) : GroupMembers(store, kind) {}

std::vector<Name> NameTable::list(long group) const
{
    std::vector<Name> names;
    Statement row(connection_,
                  "SELECT names.id, names.name, groups.id, names.color"
                  "  FROM (SELECT group_id, name_id, position FROM group_names"
                  "        UNION ALL"
                  "        SELECT ?2, id, id FROM names"
                  "         WHERE id <> ?3 AND id NOT IN (SELECT name_id FROM group_names)) AS members"
                  "  JOIN groups ON groups.id = members.group_id"
                  "  JOIN names ON names.id = members.name_id"
                  " WHERE ?1 IN (0, groups.id)"
                  " ORDER BY groups.position, groups.id, members.position, names.id",
                  group, unassignedGroup, builtInName);
    while (row.next())
        names.push_back({row.number(0), row.text(1), row.number(2), row.number(3)});
    return names;
}

NameDetails NameTable::fetch(long id) const
{
    Statement row(connection_,
                  "SELECT name, color, coalesce(accounts.id, 0), accounts.login, flags,"
                  "       coalesce(accounts.role, names.role, ?2), sync_login"
                  "  FROM names LEFT JOIN accounts ON accounts.id = names.account"
                  " WHERE names.id = ?1",
                  id, noUser);
    if (!row.next())
        throw refusal(Code::unknownName);
    return {row.text(0),   row.number(1), row.number(2), row.text(3),
            row.number(4), row.number(5), row.text(6)};
}

long NameTable::role(long id) const
{
    return id == 0 ? noUser : fetch(id).role;
}

std::wstring NameTable::mailbox(long id) const
{
    return id == 0 ? std::wstring() : fetch(id).mailbox;
}

bool NameTable::mayPerform(long operation, long id) const
{
    if (id != 0)
        return GroupMembers::mayPerform(operation, id);
    const Reading reading(connection_);
    return operation == 3 ? rights_.mayEditAnyName() : permits(operation, id);
}

void NameTable::addToGroup(long id, long group, long position)
{
    // Whoever arranges a group without members has nothing in his list but an empty entry.
    if (id != 0 || position < 1)
        GroupMembers::addToGroup(id, group, position);
}

void NameTable::setSyncLogin(long id, std::wstring_view login)
{
    Transaction transaction(connection_);
    require(permits(3, id), Code::mayNotEditName);
    requireExisting(id);
    Statement(connection_, "UPDATE names SET sync_login = ? WHERE id = ?", login, id).run();
    transaction.commit();
}

void NameTable::setRole(long id, long role)
{
    Transaction transaction(connection_);
    require(permits(3, id), Code::mayNotEditName);
    const long former = fetch(id).role;
    if (role == former) // which is written with everything else, whatever was changed
        return;
    if (!rights_.isRole(role))
        throw refusal(Code::unknownRole, std::to_wstring(role));
    require(rights_.coversName(id) && rights_.coversRole(role) && rights_.coversRole(former),
            Code::mayNotGiveRole);
    Statement(connection_, "UPDATE names SET role = ? WHERE id = ?", role, id).run();
    Statement(connection_, "UPDATE accounts SET role = ? WHERE id = (SELECT account FROM names WHERE id = ?)",
              role, id)
        .run();
    transaction.commit();
}

bool NameTable::permits(long operation, long id) const
{
    switch (operation)
    {
    case 1:
    case 2:
        return rights_.coversName(id);
    case 3:
        return rights_.mayEditName(id);
    default:
        return false;
    }
}

/// Whoever could take a resource of others' groups into his own would have the rights to it that he lacks.
void NameTable::requireMayJoin(long id, long) const
{
    require(id != builtInName, Code::superUserInGroup);
    require(rights_.coversName(id), Code::mayNotAddNames);
}

} // namespace korvane::store
