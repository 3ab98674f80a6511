#include "framework/control/Swatch.h"

#include "framework/control/ColorField.h"

#include <utility>

namespace korvane
{

HWND Swatch::createWindow(HWND parent, int id)
{
    if (kind_ == Kind::shown)
        return makeWindow(parent, id, L"Static", SS_OWNERDRAW | WS_GROUP, 0); // the arrow keys end before it
    const DWORD group = kind_ == Kind::first ? WS_GROUP | WS_TABSTOP : 0;
    return makeWindow(parent, id, L"Button", group | BS_NOTIFY | BS_OWNERDRAW, 0);
}

void Swatch::setFillColor(long color)
{
    if (std::exchange(color_, color) != color && window())
        InvalidateRect(window(), nullptr, FALSE);
}

void Swatch::setRaised(bool raised)
{
    if (std::exchange(raised_, raised) != raised && window())
        InvalidateRect(window(), nullptr, FALSE);
}

void Swatch::notify(WORD code)
{
    if (kind_ == Kind::shown)
        return;
    if (code == BN_CLICKED || code == BN_DOUBLECLICKED) // the second of two quick clicks
        raise(onClick);
    else if (code == BN_SETFOCUS || code == BN_KILLFOCUS)
        focusNotified(code == BN_SETFOCUS);
}

void Swatch::draw(const DRAWITEMSTRUCT& item) const
{
    const bool pressed = (item.itemState & ODS_SELECTED) != 0;
    const bool focused = (item.itemState & (ODS_FOCUS | ODS_NOFOCUSRECT)) == ODS_FOCUS;
    const FieldEdge edge = pressed ? FieldEdge::sunken : raised_ ? FieldEdge::raised : FieldEdge::flat;
    drawColorField(item.hDC, item.rcItem, color_, edge, focused);
}

} // namespace korvane
