#include "framework/control/Button.h"

namespace korvane
{

HWND Button::createWindow(HWND parent, int id)
{
    const DWORD kind = id == IDOK ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    return makeWindow(parent, id, L"Button", WS_TABSTOP | BS_NOTIFY | kind, 0);
}

void Button::notify(WORD code)
{
    if (code == BN_CLICKED)
        raise(onClick);
    else if (code == BN_SETFOCUS || code == BN_KILLFOCUS)
        focusNotified(code == BN_SETFOCUS);
}

} // namespace korvane
