// Where the keyboard is in the schedule: at a slot, or on a bar.
#pragma once

#include "demo/host/schedule/ScheduleLayout.h"

namespace korvane::host
{

class ScheduleCursor
{
public:
    ScheduleCursor(const Schedule& schedule, const TimeScale& scale) noexcept
        : schedule_(schedule), scale_(scale)
    {
    }

    /// Null on an empty slot.
    const Bar* bar() const noexcept;
    /// The slot, or the time of the bar; empty when there are no rows.
    std::optional<Slot> slot() const noexcept;

    void putOn(const Bar& bar) noexcept;
    void putInto(std::size_t row, OleDate time) noexcept;

    /// By slots and rows. Leaves the bar for the slots.
    void move(int slots, int rows) noexcept;
    /// To the next bar or the one before it, row by row. False when there is none.
    bool toBar(bool backwards) noexcept;

private:
    std::size_t row() const noexcept;

    const Schedule& schedule_;
    const TimeScale& scale_;
    std::size_t row_ = 0;
    OleDate time_;
    std::optional<BarId> bar_; ///< it may be gone by now
};

} // namespace korvane::host
