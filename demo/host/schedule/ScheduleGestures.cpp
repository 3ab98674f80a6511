// The schedule's window: what mouse and keys do.
#include "demo/host/schedule/ScheduleWindow.h"

#include <windowsx.h>

namespace korvane::host
{

namespace
{

POINT pointIn(LPARAM parameter) noexcept
{
    return {GET_X_LPARAM(parameter), GET_Y_LPARAM(parameter)};
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
    case WM_KEYUP:
        if (move_)
            moveChanged(); // to a copy, or back
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
    if (const auto named = layout().nameAt(point))
        return selectRow(*named);
    const auto hit = layout().at(point);
    if (!hit || !hit->row)
        return;
    selectAt(*hit);
    if (cursor_.bar())
    {
        pressedAt_ = point;
        SetCapture(handle());
    }
}

/// @param hit in a row.
void ScheduleWindow::selectAt(const Hit& hit)
{
    if (hit.bar)
        cursor_.putOn(*hit.bar);
    else
        cursor_.putInto(*hit.row, scale_.slotOf(hit.time));
    wanted_.reset(); // the user wants something else
    cursorMoved();
}

/// The resource of a row, at the time where the cursor is.
void ScheduleWindow::selectRow(std::size_t row)
{
    cursor_.putInto(row, cursor_.slot()->start);
    wanted_.reset();
    cursorMoved();
}

void ScheduleWindow::opened(POINT point)
{
    pressed(point);
    ReleaseCapture();
    if (const auto hit = layout().at(point); hit && hit->row && onOpen)
        onOpen();
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
        cursor_.toBar(isKeyDown(VK_SHIFT));
        break;
    case VK_HOME:
        if (const auto slot = cursor_.slot())
            cursor_.putInto(slot->row, startOfWork(slot->start));
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

} // namespace korvane::host
