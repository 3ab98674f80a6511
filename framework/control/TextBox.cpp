#include "framework/control/TextBox.h"

#include <commctrl.h>

namespace korvane
{

namespace
{

/// Keys that are none of a number's are discarded before the box sees them.
LRESULT CALLBACK digitsOnly(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                            DWORD_PTR) noexcept
{
    if (message == WM_CHAR && first != VK_BACK && (first < L'0' || first > L'9'))
        return 0;
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &digitsOnly, id);
    return DefSubclassProc(window, message, first, second);
}

} // namespace

HWND TextBox::createWindow(HWND parent, int id)
{
    const DWORD kind = kind_ == Kind::lines ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL : ES_AUTOHSCROLL;
    const HWND box = makeWindow(parent, id, L"Edit", WS_TABSTOP | kind, WS_EX_CLIENTEDGE);
    SendMessageW(box, EM_SETLIMITTEXT, limit_, 0);
    if (kind_ == Kind::digits)
        SetWindowSubclass(box, &digitsOnly, 0, 0);
    return box;
}

void TextBox::notify(WORD code)
{
    if (code == EN_CHANGE && !isSettingText())
        raise(onChange);
    else if (code == EN_SETFOCUS)
        focusNotified(true);
    else if (code == EN_KILLFOCUS)
    {
        focusNotified(false);
        raise(onLostFocus);
    }
}

/// The box keeps the focus, but to its owner it is as if the user had left it.
void TextBox::completeEdit()
{
    if (hasFocus() && onLostFocus)
        onLostFocus();
}

} // namespace korvane
