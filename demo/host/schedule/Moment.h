// Reckoning with moments: OLE dates in local time.
#pragma once

#include "framework/com/Variant.h"

#include <string>

namespace korvane::host
{

constexpr long minutesPerDay = 24 * 60;

/// A number of minutes later, or earlier. To the second: what a sum of fractions loses does not add up.
OleDate later(OleDate moment, long minutes) noexcept;

/// From one moment to another, rounded.
long minutesBetween(OleDate from, OleDate to) noexcept;

OleDate startOfDay(OleDate moment) noexcept;
/// The Monday that the week starts with.
OleDate startOfWeek(OleDate moment) noexcept;
bool isWeekend(OleDate moment) noexcept;
/// Where the view of a day begins: the hours before are not where work is.
OleDate morningOf(OleDate day) noexcept;
/// When work begins on a day, as a first guess.
OleDate startOfWork(OleDate day) noexcept;

OleDate now() noexcept;

// As the user's locale writes it.
std::wstring shownDay(OleDate moment, const wchar_t* picture);
std::wstring shownTime(OleDate moment);

} // namespace korvane::host
