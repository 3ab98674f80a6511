#include "framework/control/ColorField.h"

namespace korvane
{

namespace
{

void fill(HDC context, const RECT& place, COLORREF color) noexcept
{
    SetDCBrushColor(context, color);
    FillRect(context, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

} // namespace

void drawColorField(HDC context, RECT place, long color, FieldEdge edge, bool focused) noexcept
{
    fill(context, place, color < 1 ? GetSysColor(COLOR_WINDOW) : static_cast<COLORREF>(color));
    if (edge == FieldEdge::flat)
        FrameRect(context, &place, GetSysColorBrush(COLOR_3DSHADOW));
    else
        DrawEdge(context, &place, edge == FieldEdge::raised ? EDGE_RAISED : EDGE_SUNKEN, BF_RECT);
    if (!focused)
        return;
    InflateRect(&place, -3, -3);
    SetDCBrushColor(context, textColorOn(color));
    FrameRect(context, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

COLORREF textColorOn(long color) noexcept
{
    const COLORREF shown = color < 1 ? GetSysColor(COLOR_WINDOW) : static_cast<COLORREF>(color);
    // How light the eye takes the three parts for, in thousandths.
    const int lightness = GetRValue(shown) * 299 + GetGValue(shown) * 587 + GetBValue(shown) * 114;
    return lightness < 128 * 1000 ? RGB(255, 255, 255) : RGB(0, 0, 0);
}

} // namespace korvane
