#include "demo/datalayer/Schedule.h"

#include "demo/datalayer/EventRows.h"
#include "demo/datalayer/Occurrences.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace korvane::store
{

namespace
{

using Schedule = std::vector<Occurrence>;

void addSingle(Schedule& schedule, OleDate from, OleDate to, const Connection& connection)
{
    Statement row(connection,
                  "SELECT id, name_id, type_id, t0, t1, text FROM events"
                  " WHERE t0 < ?2 AND (t1 > ?1 OR t0 >= ?1) AND kind IS NULL",
                  from, to);
    while (row.next())
        schedule.push_back({row.number(0), 0, activityOf(row, 1)});
}

void addEdited(Schedule& schedule, OleDate from, OleDate to, const Connection& connection)
{
    // Without a rule the count is null, and nothing is found.
    Statement row(connection,
                  "SELECT event_id, instance, exceptions.name_id, exceptions.type_id, exceptions.t0,"
                  "       exceptions.t1, exceptions.text"
                  "  FROM exceptions JOIN events ON events.id = event_id"
                  " WHERE exceptions.t0 < ?2 AND (exceptions.t1 > ?1 OR exceptions.t0 >= ?1)"
                  "   AND removed = 0 AND instance <= events.count",
                  from, to);
    while (row.next())
        schedule.push_back({row.number(0), row.number(1), activityOf(row, 2)});
}

/// The occurrences that do not follow their series: activity and instance.
std::set<std::pair<long, long>> exceptions(const Connection& connection)
{
    std::set<std::pair<long, long>> result;
    Statement row(connection, "SELECT event_id, instance FROM exceptions");
    while (row.next())
        result.emplace(row.number(0), row.number(1));
    return result;
}

void addRepeated(Schedule& schedule, OleDate from, OleDate to, const Connection& connection)
{
    const auto except = exceptions(connection);
    Statement row(connection,
                  "SELECT id, name_id, type_id, t0, t1, text, kind, interval, count, anchor FROM events"
                  " WHERE t0 < ? AND kind IS NOT NULL",
                  to);
    while (row.next())
    {
        const long event = row.number(0);
        const Activity series = activityOf(row, 1);
        const auto rule = ruleOf(row, 1 + activityColumns);
        if (!rule)
            continue;
        const auto [first, last] = numbersBetween(series, *rule, from, to);
        for (long number = first; number <= last; ++number)
        {
            const auto found = occurrenceOf(series, *rule, number);
            if (found && touches(found->t0, found->t1, from, to) && !except.contains({event, number}))
                schedule.push_back({event, number, *found});
        }
    }
}

} // namespace

std::vector<Occurrence> scheduleBetween(OleDate from, OleDate to, Connection& connection)
{
    Schedule schedule;
    if (!(from.days < to.days)) // nor is there anything in what is no time
        return schedule;
    const Reading reading(connection);
    addSingle(schedule, from, to, connection);
    addEdited(schedule, from, to, connection);
    addRepeated(schedule, from, to, connection);
    std::sort(schedule.begin(), schedule.end(), [](const Occurrence& left, const Occurrence& right) {
        return std::tuple(left.activity.t0.days, left.event, left.instance) <
               std::tuple(right.activity.t0.days, right.event, right.instance);
    });
    return schedule;
}

} // namespace korvane::store
