#include "framework/control/OptionButton.h"

namespace korvane
{

HWND OptionButton::createWindow(HWND parent, int id)
{
    const DWORD group = position_ == Position::first ? WS_GROUP | WS_TABSTOP : 0;
    return makeWindow(parent, id, L"Button", group | BS_NOTIFY | BS_AUTORADIOBUTTON, 0);
}

} // namespace korvane
