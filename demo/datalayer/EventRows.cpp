#include "demo/datalayer/EventRows.h"

#include "demo/datalayer/Occurrences.h"

namespace korvane::store
{

Activity activityOf(const Statement& row, int column)
{
    return {row.number(column), row.number(column + 1), row.date(column + 2), row.date(column + 3),
            row.text(column + 4)};
}

std::optional<Rule> ruleOf(const Statement& row, int column)
{
    const auto kind = row.numberOrNull(column);
    return kind ? std::optional(
                      Rule{*kind, row.number(column + 1), row.number(column + 2), row.number(column + 3)})
                : std::nullopt;
}

std::optional<Activity> EventRows::find(long event) const
{
    Statement row(connection_, "SELECT name_id, type_id, t0, t1, text FROM events WHERE id = ?", event);
    return row.next() ? std::optional(activityOf(row, 0)) : std::nullopt;
}

std::optional<Activity> EventRows::occurrence(long event, long instance) const
{
    auto series = find(event);
    if (!series || instance == 0)
        return series;
    const auto repeats = rule(event);
    if (!repeats || instance < 1 || instance > repeats->count)
        return std::nullopt;
    Statement own(connection_,
                  "SELECT name_id, type_id, t0, t1, text, removed FROM exceptions"
                  " WHERE event_id = ? AND instance = ?",
                  event, instance);
    if (own.next())
        return own.flag(activityColumns) ? std::nullopt : std::optional(activityOf(own, 0));
    return occurrenceOf(*series, *repeats, instance);
}

std::optional<Rule> EventRows::rule(long event) const
{
    Statement row(connection_, "SELECT kind, interval, count, anchor FROM events WHERE id = ?", event);
    return row.next() ? ruleOf(row, 0) : std::nullopt;
}

long EventRows::insert(const Activity& activity)
{
    Statement(connection_, "INSERT INTO events (name_id, type_id, t0, t1, text) VALUES (?, ?, ?, ?, ?)",
              activity.name, activity.type, activity.t0, activity.t1, activity.text)
        .run();
    return connection_.lastInsertedId();
}

void EventRows::write(long event, const Activity& activity)
{
    Statement(connection_,
              "UPDATE events SET name_id = ?, type_id = ?, t0 = ?, t1 = ?, text = ? WHERE id = ?",
              activity.name, activity.type, activity.t0, activity.t1, activity.text, event)
        .run();
}

void EventRows::writeRule(long event, const std::optional<Rule>& rule)
{
    using Value = std::optional<long>;
    Statement(connection_, "UPDATE events SET kind = ?, interval = ?, count = ?, anchor = ? WHERE id = ?",
              rule ? Value(rule->kind) : Value(), rule ? Value(rule->interval) : Value(),
              rule ? Value(rule->count) : Value(), rule ? Value(rule->anchor) : Value(), event)
        .run();
}

void EventRows::writeOccurrence(long event, long instance, const Activity& activity)
{
    Statement(
        connection_,
        "INSERT OR REPLACE INTO exceptions (event_id, instance, removed, name_id, type_id, t0, t1, text)"
        " VALUES (?, ?, 0, ?, ?, ?, ?, ?)",
        event, instance, activity.name, activity.type, activity.t0, activity.t1, activity.text)
        .run();
}

void EventRows::removeOccurrence(long event, long instance)
{
    Statement(connection_, "INSERT OR REPLACE INTO exceptions (event_id, instance, removed) VALUES (?, ?, 1)",
              event, instance)
        .run();
}

void EventRows::erase(long event)
{
    Statement(connection_, "DELETE FROM events WHERE id = ?", event).run();
}

} // namespace korvane::store
