// The schedule's window: scrolling and zooming.
#include "demo/host/schedule/ScheduleWindow.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

// The scroll bar covers ten years, in minutes. Elsewhere its thumb stays at the end; keys and arrows go on.
constexpr long daysOnEitherSide = 5 * 365;
constexpr long rangeOfTime = 2 * daysOnEitherSide * minutesPerDay;

OleDate beginOfTime() noexcept
{
    return later(startOfDay(now()), -daysOnEitherSide * minutesPerDay);
}

} // namespace

int ScheduleWindow::visibleHeight() const noexcept
{
    return std::max(0, static_cast<int>(clientArea().bottom) - metrics_.headerHeight());
}

long ScheduleWindow::visibleMinutes() const noexcept
{
    const auto time = layout();
    return std::max(scale_.slotMinutes(),
                    minutesBetween(scale_.start(), time.timeAt(static_cast<int>(clientArea().right))));
}

void ScheduleWindow::updateScrollBars() const noexcept
{
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    bar.nMax = static_cast<int>(rangeOfTime);
    bar.nPage = static_cast<UINT>(visibleMinutes());
    bar.nPos = static_cast<int>(minutesBetween(beginOfTime(), scale_.start()));
    SetScrollInfo(handle(), SB_HORZ, &bar, TRUE);
    bar.nMax = std::max(0, layout().heightOfRows() - 1);
    bar.nPage = static_cast<UINT>(visibleHeight());
    bar.nPos = scrolled_;
    SetScrollInfo(handle(), SB_VERT, &bar, TRUE);
}

void ScheduleWindow::scrolledBy(WORD request, int bar)
{
    const bool time = bar == SB_HORZ;
    const int line = time ? static_cast<int>(scale_.slotMinutes()) : metrics_.laneHeight;
    const int page = time ? static_cast<int>(visibleMinutes()) : visibleHeight();
    SCROLLINFO state{};
    state.cbSize = sizeof state;
    state.fMask = SIF_TRACKPOS;
    GetScrollInfo(handle(), bar, &state);
    const int present = time ? static_cast<int>(minutesBetween(beginOfTime(), scale_.start())) : scrolled_;
    int to = present;
    switch (request)
    {
    case SB_LINELEFT:
        to -= line;
        break;
    case SB_LINERIGHT:
        to += line;
        break;
    case SB_PAGELEFT:
        to -= page;
        break;
    case SB_PAGERIGHT:
        to += page;
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        to = state.nTrackPos;
        break;
    default:
        return;
    }
    if (time)
        scrollTime(to - present);
    else
        scrollRows(to);
}

void ScheduleWindow::scrollRows(int to)
{
    scrolled_ = std::clamp(to, 0, std::max(0, layout().heightOfRows() - visibleHeight()));
    updateScrollBars();
    invalidate();
}

void ScheduleWindow::scrollTime(long minutes)
{
    scrollTo(later(scale_.start(), minutes));
}

void ScheduleWindow::scrollTo(OleDate start)
{
    scale_.scrollTo(start);
    updateScrollBars();
    loadWhatIsSeen();
    invalidate();
}

void ScheduleWindow::showToday()
{
    scrollTo(scale_.hoursPerLabel() == 0 ? startOfWeek(now()) : morningOf(now()));
}

void ScheduleWindow::zoom(int steps)
{
    // Around the cursor where it is in sight, else around the middle.
    const int width = static_cast<int>(clientArea().right) - metrics_.nameWidth;
    const auto slot = cursor_.slot();
    const int cursor = slot ? scale_.pixelOf(slot->start) : -1;
    zoomAround(cursor >= 0 && cursor < width ? cursor : width / 2, steps);
}

/// @param pixel counted from the left end of the time.
void ScheduleWindow::zoomAround(int pixel, int steps)
{
    if (!scale_.zoom(steps, pixel))
        return;
    schedule_.setShortestBar(scale_.minutesOf(narrowestBar));
    scrollTo(scale_.start());
    scrollRows(scrolled_); // the rows may have other heights now
    cursorMoved();
}

/// Scrolls as far as it takes.
void ScheduleWindow::reveal(const Slot& slot)
{
    const auto places = layout();
    const RECT area = clientArea();
    const long minutes = visibleMinutes();
    if (slot.start.days < scale_.start().days)
        scrollTo(later(scale_.slotOf(slot.start), -scale_.slotMinutes()));
    else if (places.pixelOf(slot.end) > area.right)
        scrollTo(later(scale_.slotOf(slot.start), -minutes / 2));

    const int top = places.rowTop(slot.row);
    const int bottom = top + places.rowHeight(slot.row);
    if (top < metrics_.headerHeight())
        scrollRows(scrolled_ - (metrics_.headerHeight() - top));
    else if (bottom > area.bottom)
        scrollRows(scrolled_ + bottom - static_cast<int>(area.bottom));
}

void ScheduleWindow::wheel(int delta, WORD keys, int x)
{
    if (keys & MK_CONTROL)
        zoomAround(std::max(0, x - metrics_.nameWidth), wheelZoom_.add(delta, 1));
    else if (keys & MK_SHIFT)
        wheelSideways(-delta);
    else
    {
        const int page = visibleHeight() / metrics_.laneHeight;
        scrollRows(scrolled_ - wheelRows_.add(delta, wheelLines(page)) * metrics_.laneHeight);
    }
}

void ScheduleWindow::wheelSideways(int delta)
{
    scrollTime(wheelTime_.add(delta, wheelColumns()) * scale_.slotMinutes());
}

} // namespace korvane::host
