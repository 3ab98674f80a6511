// Where things are in the schedule, on the screen.
#pragma once

#include "demo/host/tour/Deeds.h"

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

/// The resources that the schedule shows, from top to bottom.
std::vector<std::wstring> rowsOfSchedule(Visitor& visitor);
/// The colour of a bar, once it is there.
COLORREF colorOfBar(Visitor& visitor, const std::wstring& resource, OleDate start);

/// Goes through days and hours with the keyboard until the cursor is at a time, which the schedule then shows.
void goTo(Visitor& visitor, const std::wstring& resource, OleDate time);

/// A place in the name of a resource.
POINT pointOfName(Visitor& visitor, const std::wstring& resource);

inline constexpr Word goesTo{&goTo};
inline constexpr Word clickName{[](Visitor& visitor, Text resource) {
    visitor.clickAt(visitor.schedule(), pointOfName(visitor, resource),
                    std::wstring(L"the name ") + resource);
}};
/// The menu of a resource.
inline constexpr Word rightClickName{[](Visitor& visitor, Text resource) {
    visitor.rightClickAt(visitor.schedule(), pointOfName(visitor, resource),
                         std::wstring(L"the name ") + resource);
    visitor.waitForMenu();
}};
inline constexpr Word openSlot{[](Visitor& visitor, Text resource, OleDate time) {
    visitor.doubleClickAt(visitor.schedule(), pointOfTime(visitor, resource, time),
                          L"the empty slot at " + shownTime(time));
}};

} // namespace korvane::host
