#include "messages/MessageList.h"

#include <algorithm>

namespace korvane
{

void MessageList::clear()
{
    *this = MessageList();
}

void MessageList::add(long id, bool read)
{
    if (!known_.insert(id).second)
        return;
    ids_.push_back(id);
    if (read)
        return;
    ++unread_;
    if (!startIsUnread_)
        start_ = all() - 1;
    startIsUnread_ = true;
}

bool MessageList::show(long id, bool wasRead)
{
    const std::size_t index = indexOf(id);
    if (index == all())
        return false;
    position_ = index;
    shown_ = true;
    if (!wasRead && unread_ > 0) // the data layer may count otherwise
        --unread_;
    return true;
}

void MessageList::remove(long id)
{
    const std::size_t index = indexOf(id);
    if (index == all())
        return;
    ids_.erase(ids_.begin() + static_cast<std::ptrdiff_t>(index));
    known_.erase(id);
    unread_ = std::min(unread_, all());
    if (index < position_)
        --position_;
    else if (index == position_)
        shown_ = false;
}

std::size_t MessageList::indexOf(long id) const noexcept
{
    return static_cast<std::size_t>(std::ranges::find(ids_, id) - ids_.begin());
}

} // namespace korvane
