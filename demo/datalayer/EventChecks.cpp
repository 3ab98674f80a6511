#include "demo/datalayer/EventChecks.h"

#include "demo/datalayer/Occurrences.h"
#include "demo/datalayer/Rights.h"

namespace korvane::store
{

void EventChecks::requireMayCreate(long name) const
{
    if (!Rights(store_).mayBook(name))
        throw refusal(Code::mayNotCreateForOthers);
}

void EventChecks::requireMayEdit(long name) const
{
    if (!Rights(store_).mayEditActivities(name))
        throw refusal(Code::mayNotEditForOthers);
}

Activity EventChecks::requireEditable(long event, long instance) const
{
    auto current = rows_.occurrence(event, instance);
    requireMayEdit(current ? current->name : 0);
    if (!current)
        throw missing(event, instance);
    return std::move(*current);
}

void EventChecks::requireEvent(long event) const
{
    if (!exists("SELECT 1 FROM events WHERE id = ?", event))
        throw refusal(Code::unknownEvent);
}

void EventChecks::requireName(long name) const
{
    if (!exists("SELECT 1 FROM names WHERE id = ?", name))
        throw refusal(Code::unknownName);
}

void EventChecks::requireValid(const Activity& activity) const
{
    requireName(activity.name);
    if (!exists("SELECT 1 FROM types WHERE id = ?", activity.type))
        throw refusal(Code::unknownType);
    if (!isPossible(activity.t0) || !isPossible(activity.t1))
        throw refusal(Code::impossibleTime);
    if (activity.t1.days < activity.t0.days)
        throw refusal(Code::endBeforeBegin);
}

void EventChecks::requireValid(const std::optional<Rule>& rule) const
{
    if (!rule)
        return;
    if (!rule->isKnown())
        throw refusal(Code::unknownRecurrence, std::to_wstring(rule->kind));
    if (rule->interval < 0)
        throw refusal(Code::intervalTooSmall);
    if (rule->count < 1)
        throw refusal(Code::countTooSmall);
}

Failure EventChecks::missing(long event, long instance) const
{
    return rows_.find(event) ? refusal(Code::unknownOccurrence, std::to_wstring(instance))
                             : refusal(Code::unknownEvent);
}

bool EventChecks::exists(const char* query, long id) const
{
    return Statement(store_.connection(), query, id).next();
}

} // namespace korvane::store
