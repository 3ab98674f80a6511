#include "demo/datalayer/LinkTable.h"

#include "demo/datalayer/Rights.h"

#include <algorithm>

namespace korvane::store
{

namespace
{

bool holds(const std::vector<long>& names, long name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

LinkTable::Group LinkTable::groupOf(long event) const
{
    const Reading reading(connection_);
    const auto activity = rows_.find(event);
    if (!activity)
        throw checks_.missing(event, 0);
    const auto link = links_.linkOf(event);
    auto members = link ? links_.members(*link) : std::vector<Member>();
    return members.size() > 1 ? Group{link, std::move(members)}
                              : Group{std::nullopt, {{event, activity->name}}};
}

bool LinkTable::mayPerform(long level, long event) const
{
    const Reading reading(connection_);
    const Rights rights(store_);
    if (level == 1)
        return rights.mayBookForAll() || rights.coversAnyGroup();
    if (level != 3)
        return false;
    if (event == 0)
        return rights.mayEditForAll() || rights.coversAnyGroup();
    const auto activity = rows_.find(event);
    return activity && rights.mayEditActivities(activity->name);
}

long LinkTable::create(long event)
{
    Transaction transaction(connection_);
    checks_.requireEditable(event, 0);
    if (!links_.linkOf(event))
        links_.begin(event);
    const long link = *links_.linkOf(event);
    transaction.commit();
    return link;
}

void LinkTable::addNames(long link, const std::vector<long>& names)
{
    Transaction transaction(connection_);
    for (const long name : names)
        checks_.requireMayCreate(name);
    std::vector<long> booked;
    for (const Member& member : requireMembers(link))
        booked.push_back(member.name);
    for (const long name : names)
    {
        checks_.requireName(name);
        if (holds(booked, name))
            continue;
        links_.copy(link, name);
        booked.push_back(name);
    }
    transaction.commit();
}

std::optional<long> LinkTable::removeNames(long link, const std::vector<long>& names)
{
    Transaction transaction(connection_);
    for (const long name : names)
        checks_.requireMayEdit(name);
    const auto members = requireMembers(link);
    for (const long name : names)
        checks_.requireName(name);
    std::optional<long> left;
    for (const Member& member : members)
        if (!holds(names, member.name))
            left = member.event;
    for (const Member& member : members)
    {
        if (!holds(names, member.name))
            continue;
        links_.leave(member.event);
        rows_.erase(member.event);
    }
    if (!left)
        throw checks_.refusal(Code::nobodyLeft); // with the transaction, everything is as it was
    const auto result = links_.linkOf(*left);
    transaction.commit();
    return result;
}

void LinkTable::update(long link, long instance, const Activity& activity)
{
    Transaction transaction(connection_);
    for (const Member& member : requireEditable(link, instance))
    {
        Activity own = activity;
        own.name = member.name;
        checks_.requireValid(own);
        if (instance == 0)
            rows_.write(member.event, own);
        else
            rows_.writeOccurrence(member.event, instance, own);
    }
    transaction.commit();
}

void LinkTable::removeOccurrence(long link, long instance)
{
    Transaction transaction(connection_);
    for (const Member& member : requireEditable(link, instance))
        rows_.removeOccurrence(member.event, instance);
    transaction.commit();
}

void LinkTable::removeAll(long link)
{
    Transaction transaction(connection_);
    for (const Member& member : requireEditable(link, 0))
    {
        links_.leave(member.event);
        rows_.erase(member.event);
    }
    transaction.commit();
}

void LinkTable::detach(long link, long name)
{
    Transaction transaction(connection_);
    checks_.requireMayEdit(name);
    const auto members = requireMembers(link);
    const auto member = std::find_if(members.begin(), members.end(),
                                     [&](const Member& candidate) { return candidate.name == name; });
    if (member == members.end())
        throw checks_.refusal(Code::notBookedForName);
    links_.leave(member->event);
    transaction.commit();
}

void LinkTable::setRule(long link, const std::optional<Rule>& rule)
{
    Transaction transaction(connection_);
    const auto members = requireEditable(link, 0);
    checks_.requireValid(rule);
    for (const Member& member : members)
        rows_.writeRule(member.event, rule);
    transaction.commit();
}

std::vector<Member> LinkTable::requireMembers(long link) const
{
    auto members = links_.members(link);
    if (members.empty())
        throw checks_.refusal(Code::unknownLink);
    return members;
}

/// The activities that have the occurrence, each with the resource that it is booked for at that time.
std::vector<Member> LinkTable::requireEditable(long link, long instance) const
{
    const auto members = links_.members(link);
    if (members.empty())
        checks_.requireMayEdit(0);
    std::vector<Member> result;
    for (const Member& member : requireMembers(link))
        if (const auto current = rows_.occurrence(member.event, instance))
        {
            checks_.requireMayEdit(current->name);
            result.push_back({member.event, current->name});
        }
    if (result.empty())
        throw checks_.missing(link, instance);
    return result;
}

} // namespace korvane::store
