#include "demo/host/schedule/ScheduleCursor.h"

#include <algorithm>
#include <tuple>

namespace korvane::host
{

const Bar* ScheduleCursor::bar() const noexcept
{
    return bar_ ? schedule_.find(*bar_) : nullptr;
}

std::optional<Slot> ScheduleCursor::slot() const noexcept
{
    if (schedule_.rows().empty())
        return std::nullopt;
    if (const Bar* selected = bar())
        return Slot{selected->row, selected->start, selected->end};
    const OleDate start = scale_.slotOf(time_);
    return Slot{row(), start, later(start, scale_.slotMinutes())};
}

/// There may be fewer rows than there were.
std::size_t ScheduleCursor::row() const noexcept
{
    return std::min(row_, schedule_.rows().size() - 1);
}

void ScheduleCursor::putOn(const Bar& bar) noexcept
{
    putInto(bar.row, bar.start);
    bar_ = bar.id;
}

void ScheduleCursor::putInto(std::size_t row, OleDate time) noexcept
{
    row_ = row;
    time_ = time;
    bar_.reset();
}

void ScheduleCursor::move(int slots, int rows) noexcept
{
    const auto current = slot();
    if (!current)
        return;
    const auto last = static_cast<int>(schedule_.rows().size()) - 1;
    const int wanted = std::clamp(static_cast<int>(current->row) + rows, 0, last);
    putInto(static_cast<std::size_t>(wanted),
            later(scale_.slotOf(current->start), slots * scale_.slotMinutes()));
}

bool ScheduleCursor::toBar(bool backwards) noexcept
{
    const auto& bars = schedule_.bars();
    const auto current = slot();
    if (!current || bars.empty())
        return false;
    const Bar* selected = bar();
    const auto place = std::tuple(current->row, current->start.days, selected ? selected->id : BarId());
    const auto placeOf = [](const Bar& bar) { return std::tuple(bar.row, bar.start.days, bar.id); };
    // Bars stand in this order already.
    auto next = std::find_if(bars.begin(), bars.end(), [&](const Bar& bar) {
        return backwards ? placeOf(bar) >= place : placeOf(bar) > place;
    });
    if (backwards)
        next = next == bars.begin() ? bars.end() - 1 : next - 1;
    else if (next == bars.end())
        next = bars.begin();
    putOn(*next);
    return true;
}

} // namespace korvane::host
