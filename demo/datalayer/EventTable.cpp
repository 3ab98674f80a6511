#include "demo/datalayer/EventTable.h"

namespace korvane::store
{

Activity EventTable::fetch(long event, long instance) const
{
    const Reading reading(connection_);
    auto found = rows_.occurrence(event, instance);
    if (!found)
        throw checks_.missing(event, instance);
    return std::move(*found);
}

std::optional<Rule> EventTable::rule(long event) const
{
    const Reading reading(connection_);
    checks_.requireEvent(event);
    return rows_.rule(event);
}

bool EventTable::isException(long event) const
{
    checks_.requireEvent(event);
    return false;
}

long EventTable::add(const Activity& activity)
{
    Transaction transaction(connection_);
    checks_.requireMayCreate(activity.name);
    checks_.requireValid(activity);
    const long event = rows_.insert(activity);
    transaction.commit();
    return event;
}

void EventTable::update(long event, long instance, const Activity& activity)
{
    Transaction transaction(connection_);
    checks_.requireEditable(event, instance);
    checks_.requireMayEdit(activity.name);
    checks_.requireValid(activity);
    if (instance == 0)
        rows_.write(event, activity);
    else
        rows_.writeOccurrence(event, instance, activity);
    transaction.commit();
}

void EventTable::remove(long event, long instance)
{
    Transaction transaction(connection_);
    checks_.requireEditable(event, instance);
    if (instance == 0)
    {
        links_.leave(event);
        rows_.erase(event);
    }
    else
        rows_.removeOccurrence(event, instance);
    transaction.commit();
}

void EventTable::setRule(long event, const std::optional<Rule>& rule)
{
    Transaction transaction(connection_);
    checks_.requireEditable(event, 0);
    checks_.requireValid(rule);
    rows_.writeRule(event, rule);
    transaction.commit();
}

} // namespace korvane::store
