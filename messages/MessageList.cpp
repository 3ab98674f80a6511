#include "messages/MessageList.h"

namespace korvane
{

void MessageList::clear()
{
    *this = MessageList();
}

void MessageList::add(long id, bool read)
{
    ids_.push_back(id);
    if (known_)
        known_->insert(id);
    if (read)
        return;
    ++unread_;
    if (!startIsUnread_)
        start_ = all() - 1;
    startIsUnread_ = true;
}

void MessageList::addIfNew(long id, bool read)
{
    if (!known_)
        known_.emplace(ids_.begin(), ids_.end());
    if (!known_->contains(id))
        add(id, read);
}

bool MessageList::show(long id, bool wasRead)
{
    if (!goTo(id, true))
        return false;
    if (!wasRead && unread_ > 0) // the data layer may count otherwise
        --unread_;
    return true;
}

void MessageList::pass(long id)
{
    goTo(id, false);
}

bool MessageList::goTo(long id, bool shown) noexcept
{
    const std::size_t index = indexOf(id);
    if (index == all())
        return false;
    position_ = index;
    shown_ = shown;
    return true;
}

void MessageList::remove(long id)
{
    const std::size_t index = indexOf(id);
    if (index == all())
        return;
    ids_.erase(ids_.begin() + static_cast<std::ptrdiff_t>(index));
    known_.reset();
    unread_ = std::min(unread_, all());
    if (index == position_)
        shown_ = false;
    if (index < position_ || position_ == all())
        position_ -= position_ > 0 ? 1 : 0;
}

std::size_t MessageList::indexOf(long id) const noexcept
{
    return static_cast<std::size_t>(std::ranges::find(ids_, id) - ids_.begin());
}

} // namespace korvane
