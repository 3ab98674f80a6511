// The upper part of the schedule: days and hours, or weeks and days.
#include "demo/host/schedule/Colors.h"
#include "demo/host/schedule/SchedulePainter.h"

#include <algorithm>

namespace korvane::host
{

void SchedulePainter::drawHeader() const
{
    const RECT header{area_.left, area_.top, area_.right, area_.top + view_.metrics.headerHeight()};
    fill(header, headerColor());
    const RECT time{area_.left + view_.metrics.nameWidth, header.top, header.right, header.bottom};
    clipTo(time);
    const bool weeks = view_.scale.hoursPerLabel() == 0;
    const OleDate end = view_.layout.timeAt(area_.right);
    const OleDate first = view_.layout.timeAt(time.left);
    const long period = (weeks ? 7 : 1) * minutesPerDay;
    for (OleDate from = weeks ? startOfWeek(first) : startOfDay(first); from.days < end.days;
         from = later(from, period))
        drawHeading(from, later(from, period), weeks ? L"d MMMM yyyy" : L"ddd d MMM yyyy");
    drawLowerLine();
    clipTo(area_);
    fill({header.left, header.bottom - 1, header.right, header.bottom}, lineColor());
    fill({time.left - 1, header.top, time.left, header.bottom}, lineColor());
}

/// The upper line: days, or weeks by their Monday. A heading stays in sight as long as its days do.
void SchedulePainter::drawHeading(OleDate from, OleDate to, const wchar_t* picture) const
{
    const int left = view_.layout.pixelOf(from);
    const int bottom = area_.top + view_.metrics.headerLine;
    const RECT place{left, area_.top, view_.layout.pixelOf(to), bottom};
    const bool current = from.days <= view_.now.days && view_.now.days < to.days;
    if (current)
        fill(place, blend(accent(), headerColor(), 25));
    fill({left, area_.top, left + 1, area_.top + view_.metrics.headerHeight()}, lineColor());
    RECT label = place;
    label.left = std::max(label.left, area_.left + view_.metrics.nameWidth) + view_.metrics.padding;
    label.right -= view_.metrics.padding;
    if (label.right > label.left)
        text(label, shownDay(from, picture), GetSysColor(COLOR_BTNTEXT), DT_LEFT | DT_END_ELLIPSIS);
}

/// The lower line: hours, or the days of the weeks.
void SchedulePainter::drawLowerLine() const
{
    const int top = area_.top + view_.metrics.headerLine;
    const int bottom = area_.top + view_.metrics.headerHeight();
    const int hours = view_.scale.hoursPerLabel();
    const long step = hours == 0 ? minutesPerDay : hours * 60L;
    const OleDate end = view_.layout.timeAt(area_.right);
    for (OleDate at = startOfDay(view_.layout.timeAt(area_.left + view_.metrics.nameWidth));
         at.days < end.days; at = later(at, step))
    {
        const RECT place{view_.layout.pixelOf(at), top, view_.layout.pixelOf(later(at, step)), bottom};
        const bool today = hours == 0 && startOfDay(at) == startOfDay(view_.now);
        if (today)
            fill(place, blend(accent(), headerColor(), 25));
        fill({place.left, top, place.left + 1, bottom}, lineColor());
        const long hour = minutesBetween(startOfDay(at), at) / 60;
        text({place.left + view_.metrics.padding, top, place.right, bottom},
             hours == 0 ? shownDay(at, L"ddd d") : std::to_wstring(hour),
             blend(GetSysColor(COLOR_BTNTEXT), headerColor(), 80), DT_LEFT);
    }
}

} // namespace korvane::host
