// The date of Easter.
#pragma once

#include <chrono>

namespace korvane::store
{

/// Easter Sunday of a year in the Gregorian calendar.
std::chrono::sys_days easterSunday(std::chrono::year year) noexcept;

} // namespace korvane::store
