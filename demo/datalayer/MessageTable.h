// The messages that were left for resources, as the database holds them, and the rules for leaving and reading them.
#pragma once

#include "demo/datalayer/AccountTable.h"

#include <string>
#include <tuple>
#include <vector>

namespace korvane::store
{

/// What a message says.
struct Message
{
    std::wstring writer; ///< who wrote it down
    OleDate time;
    std::wstring phone;
    std::wstring contact; ///< who phoned
    std::wstring about;
    long kind; ///< 1 has phoned, 2 wants to be phoned back, 3 will phone again, 4 any other
    bool wasRead;
};

struct ListedMessage
{
    long id = 0;
    Message message;

    auto announced() const
    {
        return std::tie(id, message.writer, message.time, message.phone, message.contact, message.about,
                        message.wasRead);
    }
};

/// Messages are read and removed by whom they are for, and by administrators.
class MessageTable
{
public:
    explicit MessageTable(Store& store) : connection_(store.connection()), rights_(store), accounts_(store) {}

    /// The messages for a resource in the order of their arrival, as far as they came after another one.
    std::vector<ListedMessage> list(long name, long after = 0) const;

    /// The message as it was until now: from now on it counts as read.
    Message fetch(long id);

    /// Leaves a message that the account has written down.
    long add(long name, const Message& message);
    void remove(long id);

    /// How many messages for the account's own resource have not been read.
    long unread() const;

private:
    void requireMayRead(long name) const;
    std::wstring writer() const;

    Connection& connection_;
    Rights rights_;
    AccountTable accounts_;
};

} // namespace korvane::store
