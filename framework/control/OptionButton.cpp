#include "framework/control/OptionButton.h"

namespace korvane
{

HWND OptionButton::createWindow(HWND parent, int id)
{
    const DWORD group = position_ == Position::first ? WS_GROUP : 0;
    return makeWindow(parent, id, L"Button", group | BS_NOTIFY | BS_AUTORADIOBUTTON, 0);
}

/// The platform moves the tab stop along when the user chooses; that it does so here too is not documented.
void OptionButton::setValue(bool checked) const noexcept
{
    CheckableButton::setValue(checked);
    if (!window())
        return;
    const LONG_PTR style = GetWindowLongPtrW(window(), GWL_STYLE);
    const LONG_PTR stop = checked ? WS_TABSTOP : 0;
    if ((style & WS_TABSTOP) != stop)
        SetWindowLongPtrW(window(), GWL_STYLE, style ^ WS_TABSTOP);
}

} // namespace korvane
