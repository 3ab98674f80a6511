#include "demo/datalayer/GroupMembers.h"

#include "demo/datalayer/Text.h"

#include <utility>

namespace korvane::store
{

bool GroupMembers::mayPerform(long operation, long id) const
{
    const Reading reading(connection_);
    return permits(operation, id) && exists(id);
}

long GroupMembers::add(std::wstring_view text, long color, long flags)
{
    Transaction transaction(connection_);
    require(rights_.coversAnyGroup(), kind_.mayNotAdd);
    requireText(text, -1);
    statement("INSERT INTO {items} (name, color, flags) VALUES (?, ?, ?)", text, color, flags).run();
    const long id = connection_.lastInsertedId();
    transaction.commit();
    return id;
}

void GroupMembers::update(long id, std::wstring_view text, long color, long flags)
{
    Transaction transaction(connection_);
    require(permits(3, id), kind_.mayNotEdit);
    requireExisting(id);
    requireText(text, id);
    statement("UPDATE {items} SET name = ?, color = ?, flags = ? WHERE id = ?", text, color, flags, id).run();
    transaction.commit();
}

void GroupMembers::addToGroup(long id, long group, long position)
{
    Transaction transaction(connection_);
    require(rights_.coversGroup(group), position > 0 ? kind_.mayNotArrange : kind_.mayNotAdd);
    requireMayJoin(id, group);
    requireExisting(id);
    requireGroup(group);
    prepareGroup(group);
    if (position > 0) // an order is written as a whole: what keeps its place costs no write to the disk
        statement(
            "INSERT INTO {members} (group_id, {id}, position) VALUES (?, ?, ?)"
            " ON CONFLICT DO UPDATE SET position = excluded.position WHERE position <> excluded.position",
            group, id, position)
            .run();
    else
        statement("INSERT INTO {members} (group_id, {id}, position)"
                  " SELECT ?1, ?2, coalesce(max(position), 0) + 1 FROM {members} WHERE group_id = ?1"
                  " ON CONFLICT DO NOTHING",
                  group, id)
            .run();
    transaction.commit();
}

void GroupMembers::removeFromGroup(long id, long group)
{
    Transaction transaction(connection_);
    require(rights_.coversGroup(group) && permits(2, id), kind_.mayNotRemove);
    requireExisting(id);
    requireGroup(group);
    prepareGroup(group);
    statement("DELETE FROM {members} WHERE group_id = ? AND {id} = ?", group, id).run();
    transaction.commit();
}

void GroupMembers::requireExisting(long id) const
{
    require(exists(id), kind_.unknown);
}

bool GroupMembers::exists(long id) const
{
    return statement("SELECT 1 FROM {items} WHERE id = ?", id).next();
}

void GroupMembers::requireGroup(long group) const
{
    require(Statement(connection_, "SELECT 1 FROM groups WHERE id = ?", group).next(), Code::unknownGroup);
}

void GroupMembers::requireText(std::wstring_view text, long exceptItem) const
{
    require(!isBlank(text), kind_.needsText);
    requireFreeText(text, exceptItem);
}

/// The statement with the tables and the column of the kind in the places that have their name.
std::string GroupMembers::named(std::string sql) const
{
    const std::pair<std::string_view, const char*> names[] = {
        {"{items}", kind_.items}, {"{members}", kind_.members}, {"{id}", kind_.id}};
    for (const auto& [place, name] : names)
        for (auto found = sql.find(place); found != std::string::npos; found = sql.find(place))
            sql.replace(found, place.size(), name);
    return sql;
}

} // namespace korvane::store
