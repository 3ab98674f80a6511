// An activity on its way to another time or resource, by mouse or keyboard, until it is dropped.
#pragma once

#include "demo/host/schedule/ScheduleLayout.h"

namespace korvane::host
{

class ActivityMove
{
public:
    /// @param grabbedAt the time that the pointer took hold of the bar at.
    ActivityMove(Bar bar, OleDate grabbedAt);

    /// What moves, as it was when it was taken.
    const Bar& bar() const noexcept { return bar_; }
    /// Where it would land now.
    const Slot& landing() const noexcept { return landing_; }
    bool isElsewhere() const noexcept;

    /// The pointer is at a time and in a row now.
    void follow(OleDate time, std::size_t row, const TimeScale& scale) noexcept;
    void shift(long minutes) noexcept;
    void changeRow(int by, std::size_t rowCount) noexcept;

private:
    Bar bar_;
    OleDate grabbedAt_;
    Slot landing_;
};

} // namespace korvane::host
