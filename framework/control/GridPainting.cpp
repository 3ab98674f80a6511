#include "framework/control/DialogWindow.h"
#include "framework/control/Grid.h"

#include <algorithm>

namespace korvane
{

namespace
{

constexpr float paddingTwips = 45;

void fill(HDC context, const RECT& place, int color) noexcept
{
    FillRect(context, &place, GetSysColorBrush(color));
}

} // namespace

int Grid::padding() const noexcept
{
    return toPixels(paddingTwips, dialog_.dpi());
}

void Grid::paint(HDC context, const RECT& stale)
{
    const int saved = SaveDC(context);
    SelectObject(context, font_);
    SetBkMode(context, TRANSPARENT);
    const auto paintRow = [&](int row) {
        for (int column = 0; column < Cols(); ++column)
            if (const RECT place = layout_.place({row, column});
                place.right > stale.left && place.left < stale.right)
                paintCell(context, {row, column}, place);
    };
    for (int row = 0; row < FixedRows(); ++row)
        if (layout_.top(row) + layout_.height(row) > stale.top)
            paintRow(row);

    // Rows that have scrolled are cut off by the headings.
    const int upper = std::max<int>(layout_.fixedHeight(), stale.top);
    IntersectClipRect(context, stale.left, upper, stale.right, stale.bottom);
    const Cell first = layout_.at({0, upper});
    for (int row = first.row; row != GridLayout::none && row < Rows() && layout_.top(row) < stale.bottom;
         ++row)
        paintRow(row);
    const int end = std::max(upper, layout_.top(Rows()));
    if (end < stale.bottom)
        fill(context, {stale.left, end, stale.right, stale.bottom}, COLOR_WINDOW);
    RestoreDC(context, saved);
}

void Grid::paintCell(HDC context, Cell cell, const RECT& place) const
{
    const bool isCurrent = cell == current_;
    const bool isSelected = isCurrent && GetFocus() == window();
    const bool isFixed = layout_.isFixed(cell);
    fill(context, place, isSelected ? COLOR_HIGHLIGHT : isFixed || isCurrent ? COLOR_BTNFACE : COLOR_WINDOW);
    fill(context, {place.left, place.bottom - 1, place.right, place.bottom}, COLOR_BTNSHADOW);
    fill(context, {place.right - 1, place.top, place.right, place.bottom}, COLOR_BTNSHADOW);
    if (isCurrent && !isSelected)
    {
        // In high contrast a face may have the colour of a window.
        const RECT edge{place.left, place.top, place.right - 1, place.bottom - 1};
        FrameRect(context, &edge, GetSysColorBrush(COLOR_BTNSHADOW));
    }
    if (cell.column < FixedCols() && cell.row == current_.row)
        paintMarker(context, place);

    SetTextColor(context, GetSysColor(!IsWindowEnabled(window()) ? COLOR_GRAYTEXT
                                      : isSelected               ? COLOR_HIGHLIGHTTEXT
                                      : isFixed || isCurrent     ? COLOR_BTNTEXT
                                                                 : COLOR_WINDOWTEXT));
    const std::wstring_view text = textOf(cell);
    RECT inner = place;
    InflateRect(&inner, -padding(), -(heightOf(1) - lineHeight_) / 2);
    if (!text.empty() && inner.left < inner.right)
        DrawTextW(context, text.data(), static_cast<int>(text.size()), &inner, textFormat);
}

/// An arrow head towards the current row.
void Grid::paintMarker(HDC context, const RECT& place) const noexcept
{
    const int size = std::max(2, lineHeight_ / 4);
    const LONG middle = place.top + heightOf(1) / 2;
    const LONG left = (place.left + place.right - size) / 2;
    const POINT corners[] = {{left, middle - size}, {left + size, middle}, {left, middle + size}};
    const HGDIOBJ brush = SelectObject(context, GetSysColorBrush(COLOR_BTNTEXT));
    const HGDIOBJ pen = SelectObject(context, GetStockObject(NULL_PEN));
    Polygon(context, corners, 3);
    SelectObject(context, pen);
    SelectObject(context, brush);
}

} // namespace korvane
