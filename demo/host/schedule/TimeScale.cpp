#include "demo/host/schedule/TimeScale.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace korvane::host
{

namespace
{

struct Design
{
    int pixelsPerDay; ///< at 96 dpi
    long slotMinutes;
    int hoursPerLabel;
};

constexpr Design designs[] = {
    {48, 60, 0},   // weeks
    {168, 60, 6},  // days
    {480, 60, 3},  // hours
    {720, 30, 1},  // halfHours
    {1440, 15, 1}, // quarterHours
};

/// What is further away is out of sight in any case. The number is far from where sums of pixels would overflow.
constexpr double farAway = 30'000;

} // namespace

double TimeScale::pixelsPerDay() const noexcept
{
    return designs[level_].pixelsPerDay * dpi_ / 96.0;
}

long TimeScale::slotMinutes() const noexcept
{
    return designs[level_].slotMinutes;
}

int TimeScale::hoursPerLabel() const noexcept
{
    return designs[level_].hoursPerLabel;
}

int TimeScale::pixelOf(OleDate moment) const noexcept
{
    return static_cast<int>(
        std::lround(std::clamp((moment.days - start_.days) * pixelsPerDay(), -farAway, farAway)));
}

long TimeScale::minutesOf(int pixels) const noexcept
{
    return static_cast<long>(std::ceil(pixels * minutesPerDay / pixelsPerDay()));
}

OleDate TimeScale::timeAt(int pixel) const noexcept
{
    return {start_.days + pixel / pixelsPerDay()};
}

OleDate TimeScale::slotOf(OleDate moment) const noexcept
{
    const OleDate day = startOfDay(moment);
    const long seconds = std::lround((moment.days - day.days) * 86400);
    return later(day, seconds / 60 / slotMinutes() * slotMinutes());
}

long TimeScale::wholeSlots(long minutes) const noexcept
{
    return std::lround(static_cast<double>(minutes) / static_cast<double>(slotMinutes())) * slotMinutes();
}

bool TimeScale::zoom(int steps, int fixedPixel) noexcept
{
    const int wanted = std::clamp(level_ + steps, 0, static_cast<int>(std::size(designs)) - 1);
    if (wanted == level_)
        return false;
    const OleDate fixed = timeAt(fixedPixel);
    level_ = static_cast<Level>(wanted);
    start_.days = fixed.days - fixedPixel / pixelsPerDay();
    return true;
}

} // namespace korvane::host
