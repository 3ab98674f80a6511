#include "demo/host/schedule/SchedulePainter.h"

#include "framework/com/Failure.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

COLORREF blend(COLORREF first, COLORREF second, int percentOfFirst) noexcept
{
    const auto mixed = [&](int one, int other) {
        return static_cast<BYTE>((one * percentOfFirst + other * (100 - percentOfFirst)) / 100);
    };
    return RGB(mixed(GetRValue(first), GetRValue(second)), mixed(GetGValue(first), GetGValue(second)),
               mixed(GetBValue(first), GetBValue(second)));
}

COLORREF paper() noexcept
{
    return GetSysColor(COLOR_WINDOW);
}
COLORREF accent() noexcept
{
    return GetSysColor(COLOR_HIGHLIGHT);
}
COLORREF lineColor() noexcept
{
    return blend(paper(), GetSysColor(COLOR_BTNSHADOW), 55);
}
COLORREF faintLineColor() noexcept
{
    return blend(paper(), GetSysColor(COLOR_BTNSHADOW), 85);
}
COLORREF headerColor() noexcept
{
    return GetSysColor(COLOR_BTNFACE);
}

/// All on one line.
std::wstring joinedLines(std::wstring text)
{
    std::replace_if(
        text.begin(), text.end(), [](wchar_t each) { return each < L' '; }, L' ');
    return text;
}

} // namespace

Font createMessageFont(int dpi)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    const HDC screen = GetDC(nullptr);
    metrics.lfMessageFont.lfHeight =
        MulDiv(metrics.lfMessageFont.lfHeight, dpi, GetDeviceCaps(screen, LOGPIXELSY));
    ReleaseDC(nullptr, screen);
    Font font(CreateFontIndirectW(&metrics.lfMessageFont));
    if (!font)
        throw Failure(E_OUTOFMEMORY);
    return font;
}

int textHeight(HFONT font) noexcept
{
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ former = SelectObject(screen, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(screen, &metrics);
    SelectObject(screen, former);
    ReleaseDC(nullptr, screen);
    return metrics.tmHeight;
}

COLORREF textColorOn(COLORREF background) noexcept
{
    // The eye takes green for the brightest and blue for the darkest.
    const int brightness =
        (299 * GetRValue(background) + 587 * GetGValue(background) + 114 * GetBValue(background)) / 1000;
    return brightness >= 140 ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

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
            fill({left, area.top, right, area.bottom}, blend(paper(), GetSysColor(COLOR_BTNFACE), 55));
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
    for (std::size_t row = 0; row < view_.schedule.rows().size(); ++row)
    {
        const int bottom = view_.layout.rowTop(row) + view_.layout.rowHeight(row);
        fill({area_.left, bottom - 1, area_.right, bottom}, faintLineColor());
    }
}

void SchedulePainter::drawBars() const
{
    for (const Bar& bar : view_.schedule.bars())
    {
        const RECT place = view_.layout.placeOf(bar);
        RECT seen{};
        const RECT area = timeArea();
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
    if (label.right > label.left)
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
    {
        RECT place = view_.layout.placeOf(*view_.outline);
        for (int line = 0; line < std::max(2, view_.metrics.padding / 2); ++line)
        {
            frame(place, accent());
            InflateRect(&place, -1, -1);
        }
    }
}

void SchedulePainter::drawNames() const
{
    const int top = view_.metrics.headerHeight();
    const int right = area_.left + view_.metrics.nameWidth;
    fill({area_.left, top, right, area_.bottom}, headerColor());
    fill({right - 1, area_.top, right, area_.bottom}, lineColor());
    for (std::size_t row = 0; row < view_.schedule.rows().size(); ++row)
    {
        const int rowTop = view_.layout.rowTop(row);
        const int bottom = rowTop + view_.layout.rowHeight(row);
        fill({area_.left, bottom - 1, right, bottom}, lineColor());
        text({area_.left + 2 * view_.metrics.padding, rowTop, right - view_.metrics.padding, bottom},
             view_.schedule.rows()[row].resource.name, GetSysColor(COLOR_BTNTEXT), DT_LEFT | DT_END_ELLIPSIS);
    }
}

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

} // namespace korvane::host
