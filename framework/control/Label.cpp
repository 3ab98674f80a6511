#include "framework/control/Label.h"

#include "framework/control/DialogWindow.h"

namespace korvane
{

HWND Label::createWindow(HWND parent, int id)
{
    // A label starts a group, so that the arrow keys do not lead out of the option buttons before it. With a tooltip
    // it gets the pointer itself, which otherwise goes to what is behind it.
    const DWORD pointing = ToolTipText().empty() ? 0 : SS_NOTIFY;
    const DWORD cutting = kind_ == Kind::data ? SS_ENDELLIPSIS : 0;
    return makeWindow(parent, id, L"Static", SS_LEFT | WS_GROUP | pointing | cutting, 0);
}

void Label::setCaption(std::wstring_view caption)
{
    std::wstring text(caption);
    // Else it would mark an access key, on the screen and for screen readers.
    if (kind_ == Kind::data)
        for (std::size_t at = text.find(L'&'); at != std::wstring::npos; at = text.find(L'&', at + 2))
            text.insert(at, 1, L'&');
    setTextValue(text);
}

void Label::labels(const Control& control) const noexcept
{
    // The dialog manager and the accessibility support both read the order of the windows.
    if (!window() || !control.window())
        return;
    const HWND before = GetWindow(control.window(), GW_HWNDPREV);
    if (before != window())
        SetWindowPos(window(), before ? before : HWND_TOP, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

/// Where its control is disabled, the dialog manager would lead on to the next one.
bool Label::isWithinReach() const noexcept
{
    return Control::isWithinReach() && IsWindowEnabled(GetWindow(window(), GW_HWNDNEXT));
}

} // namespace korvane
