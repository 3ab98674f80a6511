#include "demo/host/tour/ScheduleSights.h"

#include "demo/host/tour/Screen.h"
#include "framework/com/Boundary.h"

#include <algorithm>
#include <optional>

namespace korvane::host
{

namespace
{

/// The row of a resource; empty while the schedule does not show it.
std::optional<std::size_t> rowOf(const Schedule& schedule, const std::wstring& resource)
{
    const auto& rows = schedule.rows();
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.resource.name == resource; });
    if (found == rows.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - rows.begin());
}

/// Looks at the schedule on its own thread; what goes wrong there is thrown here.
template <class Body> void look(Visitor& visitor, Body&& body)
{
    std::optional<Failure> failure;
    visitor.window().invoke([&] { failure = attempt([&] { body(visitor.window().schedule()); }); });
    if (failure)
        throw *failure;
}

POINT onScreen(Visitor& visitor, const RECT& place)
{
    return middleOf(visitor.schedule(), place);
}

} // namespace

OleDate tourMonday() noexcept
{
    return later(startOfWeek(now()), 7 * minutesPerDay);
}

OleDate tourTime(long day, long hour) noexcept
{
    return later(tourMonday(), day * minutesPerDay + hour * 60);
}

POINT pointOfName(Visitor& visitor, const std::wstring& resource)
{
    RECT place{};
    waitFor(L"the schedule shows the name " + resource, [&] {
        std::optional<std::size_t> row;
        look(visitor, [&](const ScheduleWindow& schedule) {
            row = rowOf(schedule.content(), resource);
            const ScheduleLayout layout = schedule.layout();
            if (row)
                place = layout.placeOfName(*row);
        });
        return row.has_value();
    });
    return onScreen(visitor, place);
}

POINT pointOfTime(Visitor& visitor, const std::wstring& resource, OleDate time)
{
    RECT place{};
    waitFor(L"the schedule shows a row for " + resource, [&] {
        bool found = false;
        look(visitor, [&](const ScheduleWindow& schedule) {
            const auto row = rowOf(schedule.content(), resource);
            found = row.has_value();
            if (row)
                place = schedule.layout().placeOf(Slot{*row, time, later(time, 60)});
        });
        return found;
    });
    return onScreen(visitor, place);
}

std::vector<std::wstring> rowsOfSchedule(Visitor& visitor)
{
    std::vector<std::wstring> names;
    look(visitor, [&](const ScheduleWindow& schedule) {
        for (const Row& row : schedule.content().rows())
            names.push_back(row.resource.name);
    });
    return names;
}

COLORREF colorOfBar(Visitor& visitor, const std::wstring& resource, OleDate start)
{
    pointOfBar(visitor, resource, start); // it is there
    COLORREF color = CLR_INVALID;
    look(visitor, [&](const ScheduleWindow& schedule) {
        const auto row = rowOf(schedule.content(), resource);
        for (const Bar& bar : schedule.content().bars())
            if (bar.row == row && minutesBetween(bar.start, start) == 0)
                color = schedule.content().colorOf(bar.type).value_or(CLR_INVALID);
    });
    return color;
}

POINT pointOfBar(Visitor& visitor, const std::wstring& resource, OleDate start)
{
    RECT place{};
    waitFor(L"the schedule shows a bar for " + resource + L" on " + shownDay(start, L"ddd d MMM") + L", " +
                shownTime(start),
            [&] {
                bool found = false;
                look(visitor, [&](const ScheduleWindow& schedule) {
                    const auto row = rowOf(schedule.content(), resource);
                    for (const Bar& bar : schedule.content().bars())
                        if (bar.row == row && minutesBetween(bar.start, start) == 0)
                        {
                            found = true;
                            place = schedule.layout().placeOf(bar);
                        }
                });
                return found;
            });
    return onScreen(visitor, place);
}

void goTo(Visitor& visitor, const std::wstring& resource, OleDate time)
{
    const auto cursor = [&] {
        OleDate start;
        look(visitor, [&](const ScheduleWindow& schedule) {
            if (const auto slot = schedule.selectedSlot())
                start = slot->start;
        });
        return start;
    };
    // A click into the row brings the keyboard there.
    OleDate edge;
    look(visitor, [&](const ScheduleWindow& schedule) { edge = schedule.firstSlot(); });
    visitor.clickAt(visitor.schedule(), pointOfTime(visitor, resource, edge), L"the row of " + resource);
    visitor.waitForFocus(visitor.schedule(), L"the schedule");
    const auto pressUntil = [&](const wchar_t* key, const std::function<bool()>& isThere) {
        for (int presses = 0; !isThere(); ++presses)
        {
            expect(presses < 100, std::wstring(L"a cursor that follows the key ") + key);
            visitor.press(key);
        }
    };
    const auto days = [&] { return startOfDay(time).days - startOfDay(cursor()).days; };
    const auto minutes = [&] { return minutesBetween(cursor(), time); };
    pressUntil(L"Page Down", [&] { return days() <= 0; });
    pressUntil(L"Page Up", [&] { return days() >= 0; });
    pressUntil(L"Right", [&] { return minutes() <= 0; });
    pressUntil(L"Left", [&] { return minutes() >= 0; });
}

} // namespace korvane::host
