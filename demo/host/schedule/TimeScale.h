// How the time runs across the schedule: which moment stands at which pixel, and how long a slot is.
#pragma once

#include "demo/host/schedule/Moment.h"

namespace korvane::host
{

class TimeScale
{
public:
    enum Level
    {
        weeks, ///< as much as possible at a glance
        days,
        hours,
        halfHours,
        quarterHours
    };

    /// @param start the moment at the left edge, pixel 0.
    TimeScale(int dpi, OleDate start) noexcept : dpi_(dpi), start_(start) {}

    Level level() const noexcept { return level_; }
    /// The length that new activities have, and the steps in which activities move.
    long slotMinutes() const noexcept;
    /// Hours from one hour that the header names to the next; 0 where there is no room for any.
    int hoursPerLabel() const noexcept;

    OleDate start() const noexcept { return start_; }
    void scrollTo(OleDate start) noexcept { start_ = start; }

    int pixelOf(OleDate moment) const noexcept;
    OleDate timeAt(int pixel) const noexcept;
    /// How long it is, at least, that so many pixels show.
    long minutesOf(int pixels) const noexcept;
    /// The start of the slot that a moment lies in. Slots are counted from midnight.
    OleDate slotOf(OleDate moment) const noexcept;
    /// A number of minutes as a whole number of slots, in minutes.
    long wholeSlots(long minutes) const noexcept;

    /// Goes nearer, or away where steps is negative, with the moment at a pixel kept in its place. False when
    /// there is no such level.
    bool zoom(int steps, int fixedPixel) noexcept;

private:
    double pixelsPerDay() const noexcept;

    int dpi_;
    OleDate start_;
    Level level_ = hours;
};

} // namespace korvane::host
