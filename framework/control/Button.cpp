#include "framework/control/Button.h"

#include "framework/control/ColorField.h"
#include "framework/control/DialogWindow.h"

#include <commctrl.h>

namespace korvane
{

namespace
{

constexpr float pictureSize = 240; // twips: 16 pixels at 96 to the inch

} // namespace

HWND Button::createWindow(HWND parent, int id)
{
    const DWORD kind = id == IDOK ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    const DWORD content = picture_ != 0 ? BS_ICON : BS_TEXT;
    iconSize_ = 0;
    return makeWindow(parent, id, L"Button", WS_TABSTOP | BS_NOTIFY | kind | content, 0);
}

/// At each resolution the picture is another one of the icon's.
void Button::placed()
{
    const int size = toPixels(pictureSize, dialog_.dpi());
    if (picture_ == 0 || !window() || std::exchange(iconSize_, size) == size)
        return;
    decltype(icon_) icon(dialog_.loadIcon(picture_, size));
    send(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon.get()));
    icon_ = std::move(icon);
}

void Button::setFillColor(std::optional<long> color)
{
    if (std::exchange(fillColor_, color) != color && window())
        InvalidateRect(window(), nullptr, TRUE);
}

void Button::notify(WORD code)
{
    // A button that tells of its focus tells of a double click in place of the second click.
    const bool isFurther = code == BN_DOUBLECLICKED || dialog_.isKeyRepeated();
    if ((code == BN_CLICKED || code == BN_DOUBLECLICKED) && (secondClickCounts_ || !isFurther))
        raise(onClick);
    else if (code == BN_SETFOCUS || code == BN_KILLFOCUS)
        focusNotified(code == BN_SETFOCUS);
}

LRESULT Button::notified(const NMHDR& notification)
{
    if (notification.code != NM_CUSTOMDRAW || !fillColor_)
        return Control::notified(notification);
    const auto& item = reinterpret_cast<const NMCUSTOMDRAW&>(notification);
    if (item.dwDrawStage != CDDS_PREPAINT)
        return CDRF_DODEFAULT;
    drawFilled(item.hdc, item.rc, item.uItemState);
    return CDRF_SKIPDEFAULT;
}

void Button::drawFilled(HDC context, RECT place, UINT state) const
{
    const auto hidden = static_cast<UINT>(send(WM_QUERYUISTATE));
    const bool pressed = (state & CDIS_SELECTED) != 0;
    const bool focused = (state & CDIS_FOCUS) != 0 && (hidden & UISF_HIDEFOCUS) == 0;
    drawColorField(context, place, *fillColor_, pressed ? FieldEdge::sunken : FieldEdge::raised, focused);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, textColorOn(*fillColor_));
    const UINT prefix = (hidden & UISF_HIDEACCEL) != 0 ? DT_HIDEPREFIX : 0;
    DrawTextW(context, Caption().c_str(), -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE | prefix);
}

} // namespace korvane
