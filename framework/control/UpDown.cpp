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
    return static_cast<int>(send(UDM_GETPOS32));
}

void UpDown::setValue(int value) const noexcept
{
    send(UDM_SETPOS32, 0, std::clamp(value, minimum_, maximum_));
}

} // namespace korvane
