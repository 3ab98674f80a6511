#include "framework/control/CheckBox.h"

namespace korvane
{

void CheckableButton::setValue(bool checked) const noexcept
{
    send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
}

HWND CheckBox::createWindow(HWND parent, int id)
{
    return makeWindow(parent, id, L"Button", WS_TABSTOP | WS_GROUP | BS_NOTIFY | BS_AUTOCHECKBOX, 0);
}

} // namespace korvane
