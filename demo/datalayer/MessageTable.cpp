#include "demo/datalayer/MessageTable.h"

namespace korvane::store
{

namespace
{

constexpr long lastKind = 4;

Failure refusal(Code code, std::wstring_view detail = {})
{
    return error(code, L"Messages", detail);
}

Message messageOf(const Statement& row, int column)
{
    return {row.text(column),     row.date(column + 1),   row.text(column + 2), row.text(column + 3),
            row.text(column + 4), row.number(column + 5), row.flag(column + 6)};
}

} // namespace

std::vector<ListedMessage> MessageTable::list(long name, long after) const
{
    const Reading reading(connection_);
    requireMayRead(name);
    std::vector<ListedMessage> messages;
    Statement row(connection_,
                  "SELECT id, writer, time, phone, contact, about, kind, was_read FROM messages"
                  " WHERE name_id = ? AND id > ? ORDER BY id",
                  name, after);
    while (row.next())
        messages.push_back({row.number(0), messageOf(row, 1)});
    return messages;
}

Message MessageTable::fetch(long id)
{
    auto found = [&] {
        const Reading reading(connection_);
        Statement row(connection_,
                      "SELECT name_id, writer, time, phone, contact, about, kind, was_read FROM messages"
                      " WHERE id = ?",
                      id);
        if (!row.next())
            throw refusal(Code::unknownMessage);
        requireMayRead(row.number(0));
        return messageOf(row, 1);
    }();
    if (found.wasRead)
        return found;
    Transaction transaction(connection_);
    Statement(connection_, "UPDATE messages SET was_read = 1 WHERE id = ?", id).run();
    transaction.commit();
    return found;
}

long MessageTable::add(long name, const Message& message)
{
    Transaction transaction(connection_);
    if (!rights_.mayWrite())
        throw refusal(Code::mayNotLeaveMessages);
    if (message.kind < 1 || message.kind > lastKind)
        throw refusal(Code::unknownMessageKind, std::to_wstring(message.kind));
    Statement recipient(connection_, "SELECT account FROM names WHERE id = ?", name);
    if (!recipient.next())
        throw refusal(Code::unknownName);
    if (!recipient.numberOrNull(0))
        throw refusal(Code::nobodyReads);
    Statement(connection_,
              "INSERT INTO messages (name_id, writer, time, phone, contact, about, kind)"
              " VALUES (?, ?, ?, ?, ?, ?, ?)",
              name, writer(), message.time, message.phone, message.contact, message.about, message.kind)
        .run();
    const long id = connection_.lastInsertedId();
    transaction.commit();
    return id;
}

void MessageTable::remove(long id)
{
    Transaction transaction(connection_);
    Statement row(connection_, "SELECT name_id FROM messages WHERE id = ?", id);
    if (!row.next())
        throw refusal(Code::unknownMessage);
    requireMayRead(row.number(0));
    Statement(connection_, "DELETE FROM messages WHERE id = ?", id).run();
    transaction.commit();
}

long MessageTable::unread() const
{
    const auto reader = accounts_.current();
    Statement row(connection_, "SELECT count(*) FROM messages WHERE name_id = ? AND was_read = 0",
                  reader ? reader->name : 0);
    row.next();
    return row.number(0);
}

void MessageTable::requireMayRead(long name) const
{
    const auto reader = accounts_.current();
    if (!rights_.isAdministrator() && (!reader || reader->name != name || !rights_.mayWrite()))
        throw refusal(Code::mayNotReadMessages);
    if (!Statement(connection_, "SELECT 1 FROM names WHERE id = ?", name).next())
        throw refusal(Code::unknownName);
}

/// The name of the account's resource; its login where it has none.
std::wstring MessageTable::writer() const
{
    const auto account = accounts_.current();
    Statement row(connection_, "SELECT name FROM names WHERE account = ?", account->id);
    return row.next() ? row.text(0) : account->login;
}

} // namespace korvane::store
