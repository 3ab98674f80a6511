// The messages that a reader goes through: their ids, the place, and how many of them are unread.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <unordered_set>
#include <vector>

namespace korvane
{

class MessageList
{
public:
    void clear();

    /// Appends a message.
    void add(long id, bool read);
    /// The same for one that may be in the list already.
    void addIfNew(long id, bool read);

    bool empty() const noexcept { return ids_.empty(); }
    std::size_t all() const noexcept { return ids_.size(); }
    std::size_t unread() const noexcept { return unread_; }
    std::size_t read() const noexcept { return all() - unread(); }

    /// The message to begin with: the first unread one, or else the first. There has to be one, as of all of these.
    long first() const { return ids_.at(start_); }
    long current() const { return ids_.at(position_); }
    /// From a message that is not shown Next leads on too, and back to it where there is no other.
    bool hasNext() const noexcept { return shown_ ? position_ + 1 < all() : !empty(); }
    long next() const { return ids_.at(std::min(position_ + 1, all() - 1)); }
    bool hasPrevious() const noexcept { return position_ > 0; }
    long previous() const { return ids_.at(position_ - 1); }
    /// The place of the current message, counted from 1.
    std::size_t place() const noexcept { return position_ + 1; }

    /// Whether the current message is shown.
    bool isShown() const noexcept { return shown_; }
    /// Goes to a message, which is shown, and has been read by now. False when it is not in the list.
    bool show(long id, bool wasRead);
    /// Goes to a message that cannot be shown.
    void pass(long id);
    /// Takes a message out. The one that followed it, or else the one before it, becomes the current one.
    void remove(long id);

private:
    bool goTo(long id, bool shown) noexcept;
    std::size_t indexOf(long id) const noexcept;

    std::vector<long> ids_;
    std::optional<std::unordered_set<long>> known_; ///< the same, once it is asked for
    std::size_t unread_ = 0;
    std::size_t start_ = 0;
    bool startIsUnread_ = false;
    std::size_t position_ = 0;
    bool shown_ = false;
};

} // namespace korvane
