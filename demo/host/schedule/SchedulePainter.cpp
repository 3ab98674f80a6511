#include "demo/host/schedule/SchedulePainter.h"

#include "demo/host/schedule/Colors.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

/// All on one line.
std::wstring joinedLines(std::wstring text)
{
    const auto controls = [](wchar_t each) { return each < L' '; };
    std::replace_if(text.begin(), text.end(), controls, L' ');
    return text;
}

} // namespace

SchedulePainter::SchedulePainter(HDC context, const ScheduleView& view, const RECT& area) noexcept
    : context_(context), view_(view), area_(area), saved_(SaveDC(context))
{
    SetBkMode(context_, TRANSPARENT);
}

SchedulePainter::~SchedulePainter()
{
    RestoreDC(context_, saved_);
}

void SchedulePainter::draw(HFONT font) const
{
    SelectObject(context_, font);
    fill(area_, paper());
    clipTo(timeArea());
    drawDays();
    drawRows();
    drawBars();
    drawMarks();
    clipTo(area_);
    drawNames();
    drawHeader();
}

/// The shading of weekends, and the lines of hours and days.
void SchedulePainter::drawDays() const
{
    const RECT area = timeArea();
    const OleDate end = view_.layout.timeAt(area.right);
    const int hours = view_.scale.hoursPerLabel();
    for (OleDate day = startOfDay(view_.layout.timeAt(area.left)); day.days < end.days;
         day = later(day, minutesPerDay))
    {
        const int left = view_.layout.pixelOf(day);
        const int right = view_.layout.pixelOf(later(day, minutesPerDay));
        if (isWeekend(day))
            fill({left, area.top, right, area.bottom}, blend(paper(), GetSysColor(COLOR_BTNSHADOW), 92));
        for (int hour = hours; hours > 0 && hour < 24; hour += hours)
        {
            const int x = view_.layout.pixelOf(later(day, hour * 60L));
            fill({x, area.top, x + 1, area.bottom}, faintLineColor());
        }
        fill({left, area.top, left + 1, area.bottom}, lineColor());
    }
}

void SchedulePainter::drawRows() const
{
    const RowRange rows = seenRows();
    for (std::size_t row = rows.first; row < rows.end; ++row)
    {
        const int bottom = view_.layout.rowTop(row) + view_.layout.rowHeight(row);
        fill({area_.left, bottom - 1, area_.right, bottom}, faintLineColor());
    }
}

void SchedulePainter::drawBars() const
{
    const RECT area = timeArea();
    const RowRange rows = seenRows();
    for (std::size_t row = rows.first; row < rows.end; ++row)
        for (const Bar& bar : view_.schedule.barsOf(row))
        {
            const RECT place = view_.layout.placeOf(bar);
            RECT seen{};
            if (IntersectRect(&seen, &place, &area))
                drawBar(bar);
        }
}

void SchedulePainter::drawBar(const Bar& bar) const
{
    const RECT place = view_.layout.placeOf(bar);
    const COLORREF color = view_.schedule.colorOf(bar.type).value_or(GetSysColor(COLOR_BTNFACE));
    fill(place, color);
    frame(place, blend(color, RGB(0, 0, 0), 70));

    // A bar that began before the window's edge keeps its text in sight.
    RECT label = place;
    label.left = std::max(label.left, timeArea().left) + view_.metrics.padding;
    label.right -= view_.metrics.padding;
    // A few dots say nothing.
    if (label.right - label.left > view_.metrics.laneHeight)
        text(label, joinedLines(bar.text), textColorOn(color), DT_LEFT | DT_END_ELLIPSIS);

    if (&bar != view_.selected)
        return;
    RECT outer = place;
    InflateRect(&outer, 1, 1);
    frame(outer, accent());
    frame(place, accent());
    RECT inner = place;
    InflateRect(&inner, -2, -2);
    if (view_.focused)
        DrawFocusRect(context_, &inner);
}

/// The present moment, the slot of the keyboard, and what is moved.
void SchedulePainter::drawMarks() const
{
    const RECT area = timeArea();
    const int present = view_.layout.pixelOf(view_.now);
    fill({present, area.top, present + std::max(1, view_.metrics.padding / 2), area.bottom},
         blend(accent(), paper(), 70));

    if (view_.slot && !view_.selected)
    {
        RECT place = view_.layout.placeOf(*view_.slot);
        frame(place, view_.focused ? accent() : lineColor());
        InflateRect(&place, -2, -2);
        if (view_.focused)
            DrawFocusRect(context_, &place);
    }
    if (view_.outline)
        drawOutline();
}

/// Where what is moved would land; with a plus where it is a copy.
void SchedulePainter::drawOutline() const
{
    RECT place = view_.layout.placeOf(*view_.outline);
    const int width = std::max(2, view_.metrics.padding / 2);
    for (int line = 0; line < width; ++line)
    {
        frame(place, accent());
        InflateRect(&place, -1, -1);
    }
    if (!view_.copies)
        return;
    const int arm = 2 * width;
    const int x = place.left + view_.metrics.padding + arm;
    const int y = place.top + view_.metrics.padding + arm;
    fill({x - arm, y, x + width + arm, y + width}, accent());
    fill({x, y - arm, x + width, y + width + arm}, accent());
}

void SchedulePainter::drawNames() const
{
    const int top = view_.metrics.headerHeight();
    const int right = area_.left + view_.metrics.nameWidth;
    fill({area_.left, top, right, area_.bottom}, headerColor());
    fill({right - 1, area_.top, right, area_.bottom}, lineColor());
    const RowRange rows = seenRows();
    for (std::size_t row = rows.first; row < rows.end; ++row)
    {
        const int rowTop = view_.layout.rowTop(row);
        const int bottom = rowTop + view_.layout.rowHeight(row);
        fill({area_.left, bottom - 1, right, bottom}, lineColor());
        const Resource& resource = view_.schedule.rows()[row].resource;
        if (resource.color > 0)
            fill({area_.left, rowTop, area_.left + view_.metrics.padding, bottom - 1},
                 static_cast<COLORREF>(resource.color));
        text({area_.left + 2 * view_.metrics.padding, rowTop, right - view_.metrics.padding, bottom},
             resource.name, GetSysColor(COLOR_BTNTEXT), DT_LEFT | DT_END_ELLIPSIS);
    }
}

void SchedulePainter::fill(const RECT& place, COLORREF color) const noexcept
{
    SetDCBrushColor(context_, color);
    FillRect(context_, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void SchedulePainter::frame(const RECT& place, COLORREF color) const noexcept
{
    SetDCBrushColor(context_, color);
    FrameRect(context_, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void SchedulePainter::text(RECT place, const std::wstring& text, COLORREF color, UINT format) const
{
    SetTextColor(context_, color);
    DrawTextW(context_, text.c_str(), static_cast<int>(text.size()), &place,
              format | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

void SchedulePainter::clipTo(const RECT& place) const noexcept
{
    SelectClipRgn(context_, nullptr);
    IntersectClipRect(context_, place.left, place.top, place.right, place.bottom);
}

RECT SchedulePainter::timeArea() const noexcept
{
    return {area_.left + view_.metrics.nameWidth, area_.top + view_.metrics.headerHeight(), area_.right,
            area_.bottom};
}

RowRange SchedulePainter::seenRows() const noexcept
{
    const RECT area = timeArea();
    return view_.layout.rowsBetween(static_cast<int>(area.top), static_cast<int>(area.bottom));
}

} // namespace korvane::host
