// Where things are in the schedule, on the screen.
#pragma once

#include "demo/host/tour/Visitor.h"

namespace korvane::host
{

/// The Monday after this week: no step depends on the day on which the tour is taken.
OleDate tourMonday() noexcept;
/// An hour of a day of the tour; 0 is that Monday.
OleDate tourTime(long day, long hour) noexcept;

/// The middle of the slot at a time, in the row of a resource.
POINT pointOfTime(Visitor& visitor, const std::wstring& resource, OleDate time);
/// The middle of a bar, once it is seen there.
POINT pointOfBar(Visitor& visitor, const std::wstring& resource, OleDate start);

/// Goes through days and hours with the keyboard until the cursor is at a time, which the schedule then shows.
void goTo(Visitor& visitor, const std::wstring& resource, OleDate time);

} // namespace korvane::host
