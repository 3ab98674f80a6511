#include "framework/control/Swatch.h"

namespace korvane
{

HWND Swatch::createWindow(HWND parent, int id)
{
    return makeWindow(parent, id, L"Static", SS_OWNERDRAW, 0);
}

void Swatch::setFillColor(long color)
{
    color_ = color;
    if (window())
        InvalidateRect(window(), nullptr, TRUE);
}

void Swatch::draw(const DRAWITEMSTRUCT& item) const
{
    const COLORREF fill = color_ < 1 ? GetSysColor(COLOR_WINDOW) : static_cast<COLORREF>(color_);
    SetDCBrushColor(item.hDC, fill);
    FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    FrameRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_3DSHADOW));
}

} // namespace korvane
