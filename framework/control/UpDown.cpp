#include "framework/control/UpDown.h"

#include <commctrl.h>

#include <algorithm>

namespace korvane
{

HWND UpDown::createWindow(HWND parent, int id)
{
    const HWND arrows = makeWindow(parent, id, UPDOWN_CLASSW, UDS_ARROWKEYS, 0);
    SendMessageW(arrows, UDM_SETBUDDY, reinterpret_cast<WPARAM>(buddy_.window()), 0);
    SendMessageW(arrows, UDM_SETRANGE32, static_cast<WPARAM>(minimum_), maximum_);
    return arrows;
}

int UpDown::Value() const noexcept
{
    return std::max(position(), minimum_);
}

int UpDown::position() const noexcept
{
    return static_cast<int>(send(UDM_GETPOS32));
}

void UpDown::setValue(int value) const noexcept
{
    setLimits(value < minimum_ ? minimum_ - 1 : minimum_);
    send(UDM_SETPOS32, 0, std::clamp(value, minimum_ - 1, maximum_));
}

void UpDown::setLimits(int minimum) const noexcept
{
    send(UDM_SETRANGE32, static_cast<WPARAM>(minimum), maximum_);
}

void UpDown::scrolled()
{
    if (position() < minimum_)
        return; // Down from below the limits
    setLimits(minimum_);
    raise(onChange);
}

} // namespace korvane
