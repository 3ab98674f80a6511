#include "demo/host/schedule/ActivityMove.h"

#include <algorithm>

namespace korvane::host
{

ActivityMove::ActivityMove(Bar bar, OleDate grabbedAt)
    : bar_(std::move(bar)), grabbedAt_(grabbedAt), landing_{bar_.row, bar_.start, bar_.end}
{
}

bool ActivityMove::isElsewhere() const noexcept
{
    return landing_.row != bar_.row || minutesBetween(bar_.start, landing_.start) != 0;
}

/// By whole slots: an activity that starts at ten past keeps doing so.
void ActivityMove::follow(OleDate time, std::size_t row, const TimeScale& scale) noexcept
{
    const long minutes = scale.wholeSlots(minutesBetween(grabbedAt_, time));
    landing_ = {row, later(bar_.start, minutes), later(bar_.end, minutes)};
}

void ActivityMove::shift(long minutes) noexcept
{
    landing_.start = later(landing_.start, minutes);
    landing_.end = later(landing_.end, minutes);
}

void ActivityMove::changeRow(int by, std::size_t rowCount) noexcept
{
    const auto last = static_cast<int>(rowCount) - 1;
    landing_.row =
        static_cast<std::size_t>(std::clamp(static_cast<int>(landing_.row) + by, 0, std::max(last, 0)));
}

} // namespace korvane::host
