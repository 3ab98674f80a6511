#include "demo/datalayer/LinkRows.h"

namespace korvane::store
{

std::optional<long> LinkRows::linkOf(long event) const
{
    Statement row(connection_, "SELECT link FROM events WHERE id = ?", event);
    return row.next() ? row.numberOrNull(0) : std::nullopt;
}

std::vector<Member> LinkRows::members(long link) const
{
    std::vector<Member> result;
    Statement row(connection_, "SELECT id, name_id FROM events WHERE link = ? ORDER BY id", link);
    while (row.next())
        result.push_back({row.number(0), row.number(1)});
    return result;
}

void LinkRows::begin(long event)
{
    Statement(connection_, "UPDATE events SET link = id WHERE id = ?", event).run();
}

void LinkRows::leave(long event)
{
    const auto link = linkOf(event);
    if (!link)
        return;
    Statement(connection_, "UPDATE events SET link = NULL WHERE id = ?", event).run();
    const auto left = members(*link);
    if (*link == event && !left.empty())
        Statement(connection_, "UPDATE events SET link = ? WHERE link = ?", left.front().event, *link).run();
}

void LinkRows::copy(long event, long name)
{
    Statement(
        connection_,
        "INSERT INTO events (name_id, type_id, t0, t1, text, link, kind, interval, count, anchor)"
        " SELECT ?, type_id, t0, t1, text, link, kind, interval, count, anchor FROM events WHERE id = ?",
        name, event)
        .run();
    Statement(connection_,
              "INSERT INTO exceptions (event_id, instance, removed, name_id, type_id, t0, t1, text)"
              " SELECT ?1, instance, removed, iif(removed, NULL, ?2), type_id, t0, t1, text FROM exceptions"
              "  WHERE event_id = ?3",
              connection_.lastInsertedId(), name, event)
        .run();
}

} // namespace korvane::store
