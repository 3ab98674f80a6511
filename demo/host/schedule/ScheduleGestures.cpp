// The schedule's window: what mouse and keys do.
#include "demo/host/schedule/ScheduleWindow.h"

#include <windowsx.h>

#include <cstdlib>
#include <utility>

namespace korvane::host
{

namespace
{

POINT pointIn(LPARAM parameter) noexcept
{
    return {GET_X_LPARAM(parameter), GET_Y_LPARAM(parameter)};
}

bool isDown(int key) noexcept
{
    return GetKeyState(key) < 0;
}

} // namespace

std::optional<LRESULT> ScheduleWindow::receiveInput(UINT message, WPARAM first, LPARAM second)
{
    switch (message)
    {
    case WM_LBUTTONDOWN:
        pressed(pointIn(second));
        return 0;
    case WM_RBUTTONDOWN:
        pressed(pointIn(second));
        if (GetCapture() == handle())
            ReleaseCapture(); // it selects, and moves nothing
        return 0;
    case WM_LBUTTONDBLCLK:
        opened(pointIn(second));
        return 0;
    case WM_MOUSEMOVE:
        dragged(pointIn(second));
        return 0;
    case WM_LBUTTONUP:
        released();
        return 0;
    case WM_CAPTURECHANGED:
        pressedAt_.reset();
        endMove();
        return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
    {
        POINT point = pointIn(second);
        ScreenToClient(handle(), &point);
        const int delta = GET_WHEEL_DELTA_WPARAM(first);
        if (message == WM_MOUSEWHEEL)
            wheel(delta, GET_KEYSTATE_WPARAM(first), static_cast<int>(point.x));
        else
            wheelSideways(delta);
        return 0;
    }
    case WM_GETDLGCODE:
        return DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (move_ ? keyPressedInMove(first) : keyPressed(first))
            return 0;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

// --- the mouse

void ScheduleWindow::pressed(POINT point)
{
    SetFocus(handle());
    endMove();
    const auto hit = layout().at(point);
    if (!hit || !hit->row)
        return;
    if (hit->bar)
    {
        cursor_.putOn(*hit->bar);
        pressedAt_ = point;
        SetCapture(handle());
    }
    else
        cursor_.putInto(*hit->row, scale_.slotOf(hit->time));
    wanted_.reset(); // the user wants something else
    cursorMoved();
}

void ScheduleWindow::opened(POINT point)
{
    pressed(point);
    ReleaseCapture();
    if (const auto hit = layout().at(point); hit && hit->row && onOpen)
        onOpen();
}

void ScheduleWindow::dragged(POINT point)
{
    if (!pressedAt_)
        return;
    if (!move_)
    {
        if (std::abs(point.x - pressedAt_->x) < GetSystemMetrics(SM_CXDRAG) &&
            std::abs(point.y - pressedAt_->y) < GetSystemMetrics(SM_CYDRAG))
            return;
        const Bar* bar = cursor_.bar();
        if (!bar) // it is gone meanwhile
            return;
        move_.emplace(*bar, layout().timeAt(static_cast<int>(pressedAt_->x)));
        SetCursor(LoadCursorW(nullptr, IDC_SIZEALL));
    }
    const RECT area = clientArea();
    if (point.x < metrics_.nameWidth)
        scrollTime(-scale_.slotMinutes());
    else if (point.x >= area.right)
        scrollTime(scale_.slotMinutes());
    const auto places = layout();
    if (const auto row = places.rowNear(static_cast<int>(point.y)))
        move_->follow(places.timeAt(static_cast<int>(point.x)), *row, scale_);
    invalidate();
}

void ScheduleWindow::released()
{
    if (!pressedAt_)
        return;
    if (move_)
        drop(isDown(VK_CONTROL));
    else
        ReleaseCapture();
}

// --- the keyboard

bool ScheduleWindow::keyPressed(WPARAM key)
{
    switch (key)
    {
    case VK_LEFT:
        cursor_.move(-1, 0);
        break;
    case VK_RIGHT:
        cursor_.move(1, 0);
        break;
    case VK_UP:
        cursor_.move(0, -1);
        break;
    case VK_DOWN:
        cursor_.move(0, 1);
        break;
    case VK_TAB:
        cursor_.toBar(isDown(VK_SHIFT));
        break;
    case VK_HOME:
        if (const auto slot = cursor_.slot())
            cursor_.putInto(slot->row, later(startOfDay(slot->start), 9 * 60));
        break;
    case VK_PRIOR:
    case VK_NEXT:
        if (const auto slot = cursor_.slot())
            cursor_.putInto(slot->row, later(slot->start, (key == VK_PRIOR ? -1 : 1) * minutesPerDay));
        break;
    default:
        return false;
    }
    wanted_.reset();
    if (const auto slot = cursor_.slot())
        reveal(*slot);
    cursorMoved();
    return true;
}

void ScheduleWindow::beginMove(bool copies)
{
    const Bar* bar = cursor_.bar();
    if (!bar || move_)
        return;
    move_.emplace(*bar, bar->start);
    moveCopies_ = copies;
    moveChanged();
}

bool ScheduleWindow::keyPressedInMove(WPARAM key)
{
    switch (key)
    {
    case VK_LEFT:
        move_->shift(-scale_.slotMinutes());
        break;
    case VK_RIGHT:
        move_->shift(scale_.slotMinutes());
        break;
    case VK_UP:
        move_->changeRow(-1, schedule_.rows().size());
        break;
    case VK_DOWN:
        move_->changeRow(1, schedule_.rows().size());
        break;
    case VK_ESCAPE:
        endMove();
        return true;
    case VK_RETURN:
        drop(moveCopies_ || isDown(VK_CONTROL));
        return true;
    default:
        return true; // nothing else happens meanwhile
    }
    moveChanged();
    return true;
}

void ScheduleWindow::moveChanged()
{
    reveal(move_->landing());
    invalidate();
}

/// A copy may lie where its original does.
void ScheduleWindow::drop(bool copies)
{
    const auto move = std::exchange(move_, std::nullopt);
    endMove();
    if (move && (copies || move->isElsewhere()) && onDrop)
        onDrop(move->bar(), move->landing(), copies);
}

void ScheduleWindow::endMove()
{
    move_.reset();
    moveCopies_ = false;
    pressedAt_.reset();
    if (GetCapture() == handle())
        ReleaseCapture();
    invalidate();
}

} // namespace korvane::host
