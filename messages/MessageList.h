// The messages that a reader goes through: their ids, the place, and how many of them are unread.
#pragma once

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace korvane
{

class MessageList
{
public:
    void clear();

    /// Appends a message, unless it is in the list.
    void add(long id, bool read);

    bool empty() const noexcept { return ids_.empty(); }
    std::size_t all() const noexcept { return ids_.size(); }
    std::size_t unread() const noexcept { return unread_; }
    std::size_t read() const noexcept { return all() - unread(); }

    /// The message to begin with: the first unread one, or else the first. There has to be one, as of all of these.
    long first() const { return ids_.at(start_); }
    bool hasNext() const noexcept { return nextIndex() < all(); }
    long next() const { return ids_.at(nextIndex()); }
    bool hasPrevious() const noexcept { return position_ > 0; }
    long previous() const { return ids_.at(position_ - 1); }
    long shown() const { return ids_.at(position_); }

    /// False between the removal of the message shown and the next that is: the reader then stands before the one that
    /// followed it.
    bool isShown() const noexcept { return shown_; }
    /// The place of the message shown, counted from 1.
    std::size_t place() const noexcept { return position_ + 1; }

    /// Goes to a message, which has been read by now. False when it is not in the list.
    bool show(long id, bool wasRead);
    /// Takes a message out. Nothing happens when it is not in the list.
    void remove(long id);

private:
    std::size_t nextIndex() const noexcept { return shown_ ? position_ + 1 : position_; }
    std::size_t indexOf(long id) const noexcept;

    std::vector<long> ids_;
    std::unordered_set<long> known_; ///< the same: 100,000 messages are announced one by one
    std::size_t unread_ = 0;
    std::size_t start_ = 0;
    bool startIsUnread_ = false;
    std::size_t position_ = 0;
    bool shown_ = false;
};

} // namespace korvane
