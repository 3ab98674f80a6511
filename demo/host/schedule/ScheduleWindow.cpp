#include "demo/host/schedule/ScheduleWindow.h"

#include "demo/host/schedule/Canvas.h"
#include "framework/com/Boundary.h"

#include <utility>

namespace korvane::host
{

namespace
{

enum Message : UINT
{
    messageReload = WM_APP
};

constexpr UINT oneMinute = 60'000;

} // namespace

ScheduleWindow::ScheduleWindow(HWND parent, const ComPtr<IRoot>& root)
    : scale_(screenDpi(), morningOf(now())), font_(createMessageFont(screenDpi())),
      metrics_(ScheduleMetrics::forDpi(screenDpi(), textHeight(font_.get()))), cursor_(schedule_, scale_),
      data_(root)
{
    create({className, L"Schedule", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_HSCROLL | WS_VSCROLL,
            WS_EX_CLIENTEDGE, nullptr, CS_DBLCLKS},
           parent, nullptr, {});
    SetTimer(handle(), timerMinute, oneMinute, nullptr);
    cursor_.putInto(0, startOfWork(now()));
    schedule_.setShortestBar(scale_.minutesOf(narrowestBar));
}

void ScheduleWindow::place(const RECT& area) const noexcept
{
    MoveWindow(handle(), area.left, area.top, area.right - area.left, area.bottom - area.top, TRUE);
}

LRESULT ScheduleWindow::receive(UINT message, WPARAM first, LPARAM second)
{
    if (const auto result = receiveInput(message, first, second))
        return *result;
    switch (message)
    {
    case WM_PAINT:
        paint();
        return 0;
    case WM_PRINTCLIENT:
        draw(reinterpret_cast<HDC>(first));
        return 0;
    case WM_ERASEBKGND:
        return 1; // all of it is painted
    case WM_SIZE:
        updateScrollBars();
        scrollRows(scrolled_);
        loadWhatIsSeen();
        invalidate();
        return 0;
    case WM_SETFOCUS:
        invalidate();
        return 0;
    case WM_KILLFOCUS:
        endMove();
        invalidate();
        return 0;
    case WM_HSCROLL:
        scrolledBy(LOWORD(first), SB_HORZ);
        return 0;
    case WM_VSCROLL:
        scrolledBy(LOWORD(first), SB_VERT);
        return 0;
    case WM_TIMER:
        if (first == timerDrag)
        {
            scrollToPointer();
            return 0;
        }
        if (stale_)
            tryAgain();
        invalidate();
        return 0;
    case messageReload:
        reloadPosted_ = false;
        if (stale_ && std::exchange(tells_, false))
            reload();
        else if (stale_)
            attempt([this] { reload(); });
        return 0;
    default:
        return Window::receive(message, first, second);
    }
}

// --- what is shown

void ScheduleWindow::paint()
{
    const Painting painting(handle());
    const Canvas canvas(painting.context(), clientArea());
    draw(canvas.context());
}

void ScheduleWindow::draw(HDC context) const
{
    const ScheduleView view{.schedule = schedule_,
                            .scale = scale_,
                            .metrics = metrics_,
                            .layout = layout(),
                            .now = now(),
                            .selected = cursor_.bar(),
                            .slot = cursor_.slot(),
                            .outline = move_ ? std::optional(move_->landing()) : std::nullopt,
                            .copies = move_ && movesACopy(),
                            .focused = GetFocus() == handle()};
    SchedulePainter(context, view, clientArea()).draw(font_.get());
}

RECT ScheduleWindow::clientArea() const noexcept
{
    RECT area{};
    GetClientRect(handle(), &area);
    return area;
}

void ScheduleWindow::showGroup(long group)
{
    if (group == group_ && loadedTo_.days > 0)
        return;
    group_ = group;
    changed();
}

void ScheduleWindow::follow(const ComPtr<IRoot>& root)
{
    data_.follow(root);
    refresh(true);
}

void ScheduleWindow::refresh(bool tells)
{
    data_.outdate();
    stale_ = true;
    tells_ = tells_ || tells;
    tryAgain();
}

void ScheduleWindow::select(BarId bar)
{
    wanted_ = bar;
    if (!stale_)
        selectWhatIsWanted();
}

void ScheduleWindow::selectWhatIsWanted()
{
    const BarId bar = *std::exchange(wanted_, std::nullopt);
    const auto& bars = schedule_.bars();
    const Bar* found = schedule_.find(bar);
    if (const Bar* selected = cursor_.bar(); !found && selected && selected->id.event == bar.event)
        found = selected;
    for (auto each = bars.begin(); !found && each != bars.end(); ++each)
        if (each->id.event == bar.event)
            found = &*each;
    if (found)
        cursor_.putOn(*found);
    cursorMoved();
}

std::wstring ScheduleWindow::describeSelection() const
{
    const auto slot = cursor_.slot();
    if (!slot)
        return {};
    const Bar* bar = cursor_.bar();
    return schedule_.rows()[slot->row].resource.name + L", " + shownDay(slot->start, L"ddd d MMM yyyy") +
           L", " + shownTime(slot->start) + L" - " + shownTime(slot->end) +
           (bar && !bar->text.empty() ? L": " + bar->text : L"");
}

std::optional<ScheduleWindow::MenuPlace> ScheduleWindow::menuPlace(POINT asked)
{
    const auto slot = cursor_.slot();
    if (!slot)
        return std::nullopt;
    if (asked.x == -1 && asked.y == -1)
    {
        reveal(*slot);
        const RECT place = layout().placeOf(*slot);
        asked = {place.left, place.bottom};
        ClientToScreen(handle(), &asked);
        return MenuPlace{asked, false};
    }
    POINT point = asked;
    ScreenToClient(handle(), &point);
    const RECT area = clientArea();
    if (!PtInRect(&area, point))
        return std::nullopt;
    const auto named = layout().nameAt(point);
    const auto hit = layout().at(point);
    if (named)
        selectRow(*named);
    else if (hit && hit->row)
        selectAt(*hit);
    else
        return std::nullopt;
    return MenuPlace{asked, named.has_value()};
}

/// Whoever cannot see the window is told where the cursor is by the window's name.
void ScheduleWindow::cursorMoved()
{
    const std::wstring where = describeSelection();
    SetWindowTextW(handle(), (where.empty() ? L"Schedule" : L"Schedule: " + where).c_str());
    invalidate();
    if (onSelect)
        onSelect();
}

/// Something else is to be seen, which the user has asked for.
void ScheduleWindow::changed()
{
    stale_ = true;
    tells_ = true;
    tryAgain();
}

/// Changes come in numbers: they are shown once, when the call that made them is over. Where nothing else is asked for,
/// that something was refused has been told already.
void ScheduleWindow::tryAgain()
{
    if (!reloadPosted_)
        reloadPosted_ = PostMessageW(handle(), messageReload, 0, 0) != FALSE;
}

void ScheduleWindow::reload()
{
    // A screen more at either side, so that scrolling does not load each time.
    const long minutes = visibleMinutes();
    const OleDate from = later(scale_.start(), -minutes);
    const OleDate to = later(scale_.start(), 2 * minutes);
    data_.load(schedule_, group_, from, to);
    loadedFrom_ = from;
    loadedTo_ = to;
    stale_ = false;
    if (move_ && move_->landing().row >= schedule_.rows().size())
        endMove(); // there is nothing any more where it would land
    updateScrollBars();
    scrollRows(scrolled_);
    if (wanted_)
        selectWhatIsWanted();
    else
        cursorMoved();
}

void ScheduleWindow::loadWhatIsSeen()
{
    if (scale_.start().days < loadedFrom_.days ||
        later(scale_.start(), visibleMinutes()).days > loadedTo_.days)
        changed();
    else if (stale_)
        tryAgain();
}

} // namespace korvane::host
