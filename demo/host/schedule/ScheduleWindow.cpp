#include "demo/host/schedule/ScheduleWindow.h"

#include "framework/com/Boundary.h"

#include <algorithm>
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

/// A picture in memory that is shown at once when it is complete.
class Canvas
{
public:
    Canvas(HDC target, const RECT& area)
        : target_(target), area_(area), context_(CreateCompatibleDC(target)),
          bitmap_(CreateCompatibleBitmap(target, std::max(area.right, 1L), std::max(area.bottom, 1L))),
          former_(SelectObject(context_, bitmap_))
    {
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas()
    {
        BitBlt(target_, 0, 0, area_.right, area_.bottom, context_, 0, 0, SRCCOPY);
        SelectObject(context_, former_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }

    HDC context() const noexcept { return context_; }

private:
    HDC target_;
    RECT area_;
    HDC context_;
    HBITMAP bitmap_;
    HGDIOBJ former_;
};

/// The early morning of a day is not where work begins.
OleDate morningOf(OleDate day) noexcept
{
    return later(startOfDay(day), 7 * 60);
}

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
    cursor_.putInto(0, later(startOfDay(now()), 9 * 60));
    data_.onChange = [this] { changed(); };
}

ScheduleWindow::~ScheduleWindow()
{
    data_.onChange = nullptr;
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
        if (stale_) // reading was refused, which the user has been told
            attempt([this] { reload(); });
        invalidate();
        return 0;
    case messageReload:
        reloadPosted_ = false;
        if (stale_)
            reload();
        return 0;
    default:
        return Window::receive(message, first, second);
    }
}

// --- what is shown

void ScheduleWindow::paint()
{
    PAINTSTRUCT state;
    const HDC context = BeginPaint(handle(), &state);
    {
        const Canvas canvas(context, clientArea());
        draw(canvas.context());
    }
    EndPaint(handle(), &state);
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

void ScheduleWindow::hold(bool held)
{
    held_ = held;
    if (!held_ && stale_)
        changed();
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

/// Whoever cannot see the window is told where the cursor is by the window's name.
void ScheduleWindow::cursorMoved()
{
    const std::wstring where = describeSelection();
    SetWindowTextW(handle(), (where.empty() ? L"Schedule" : L"Schedule: " + where).c_str());
    invalidate();
    if (onSelect)
        onSelect();
}

/// Changes come in numbers: they are shown once, when the call that made them is over.
void ScheduleWindow::changed()
{
    stale_ = true;
    if (!reloadPosted_)
        reloadPosted_ = PostMessageW(handle(), messageReload, 0, 0) != FALSE;
}

void ScheduleWindow::reload()
{
    if (held_)
        return;
    // A screen more at either side, so that scrolling does not load each time.
    const long minutes = visibleMinutes();
    const OleDate from = later(scale_.start(), -minutes);
    const OleDate to = later(scale_.start(), 2 * minutes);
    data_.load(schedule_, group_, from, to);
    loadedFrom_ = from;
    loadedTo_ = to;
    stale_ = false;
    updateScrollBars();
    scrollRows(scrolled_);
    if (wanted_)
        selectWhatIsWanted();
    else
        cursorMoved();
}

void ScheduleWindow::loadWhatIsSeen()
{
    if (stale_ || scale_.start().days < loadedFrom_.days ||
        later(scale_.start(), visibleMinutes()).days > loadedTo_.days)
        changed();
}

} // namespace korvane::host
