#include "framework/control/Grid.h"

#include "framework/control/DialogWindow.h"
#include "framework/control/TextContext.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace korvane
{

namespace
{

/// A text's lines, broken where they are wider than a width.
int linesIn(HDC context, std::wstring_view text, int width, int lineHeight, UINT format) noexcept
{
    int lines = 0;
    for (;;)
    {
        const std::size_t end = text.find(L'\n');
        std::wstring_view line(text.data(), std::min(end, text.size()));
        if (line.ends_with(L'\r'))
            line.remove_suffix(1);
        SIZE extent{};
        GetTextExtentPoint32W(context, line.data(), static_cast<int>(line.size()), &extent);
        // Breaking takes its time, and most texts are short.
        if (extent.cx <= width && line.find_first_of(L"\t\r") == std::wstring_view::npos)
            ++lines;
        else
        {
            RECT place{0, 0, width, 0};
            DrawTextW(context, line.data(), static_cast<int>(line.size()), &place, format | DT_CALCRECT);
            lines += std::max(1, static_cast<int>(place.bottom) / lineHeight);
        }
        if (end == std::wstring_view::npos)
            return lines;
        text.remove_prefix(end + 1);
    }
}

} // namespace

Grid::Grid(Surface surface, const Design& design, Shape shape)
    : Control(surface, design), layout_(shape.fixedRows, shape.fixedColumns, std::move(shape.shares)),
      fixedWidth_(shape.fixedWidth), tallColumn_(shape.tallColumn), current_(layout_.nearest({}))
{
}

void Grid::setRows(int rows)
{
    const int before = Rows();
    if (rows == before)
        return;
    layout_.setRows(rows, heightOf(1));
    if (rows > before)
        measureAnew(before, rows - 1);
    settled_ = false;
    current_ = layout_.nearest(current_);
    invalidateFrom(std::min(before, rows));
    tellOfOrder();
}

void Grid::cellChanged(Cell cell)
{
    if (cell.column == tallColumn_)
        measureAnew(cell.row, cell.row);
    if (window())
        invalidate(layout_.place(cell));
    tell(EVENT_OBJECT_VALUECHANGE, cell);
}

void Grid::rowsChanged(int first, int last)
{
    measureAnew(first, last);
    for (int row = first; row <= last; ++row)
        invalidateRow(row);
    tellOfOrder();
}

void Grid::setCurrent(Cell cell)
{
    const Cell former = std::exchange(current_, layout_.nearest(cell));
    settle();
    if (former != current_)
    {
        invalidateRow(former.row);
        invalidateRow(current_.row);
    }
    scroll(layout_.positionFor(current_.row));
    if (former == current_)
        return;
    if (hasFocus())
        tell(EVENT_OBJECT_FOCUS, current_);
    tell(EVENT_OBJECT_SELECTION, current_); // also while a button of the owner's has the focus
}

Place Grid::cellPlace(Cell cell)
{
    settle();
    RECT pixels = layout_.place(cell);
    MapWindowPoints(window(), dialog_.window(), reinterpret_cast<POINT*>(&pixels), 2);
    const int dpi = dialog_.dpi();
    const auto twips = [dpi](LONG length) { return toTwips(static_cast<float>(length), dpi); };
    const Place onDialog = placeOnDialog();
    return {twips(pixels.left) - (onDialog.left - Left()), twips(pixels.top) - (onDialog.top - Top()),
            twips(pixels.right - pixels.left), twips(pixels.bottom - pixels.top)};
}

const GridLayout& Grid::settledLayout()
{
    settle();
    return layout_;
}

/// Measuring waits until the heights are needed, and then takes all rows at once.
void Grid::measureAnew(int first, int last)
{
    for (int row = first; row <= last; ++row)
        unmeasured_.push_back(row);
    settled_ = false;
}

void Grid::measureAll()
{
    unmeasured_.resize(static_cast<std::size_t>(Rows()));
    std::iota(unmeasured_.begin(), unmeasured_.end(), 0);
    settled_ = false;
}

/// A row is one and a fifth times as high as its text.
int Grid::heightOf(int lines) const noexcept
{
    return (lines * lineHeight_ * 6 + 2) / 5;
}

int Grid::widthOfText(int column) const
{
    return layout_.left(column + 1) - layout_.left(column) - 2 * padding();
}

/// Afterwards the layout is what the texts make it.
void Grid::settle()
{
    if (settled_ || !window())
        return;
    const TextContext context(font_);
    const int width = std::max(1, widthOfText(tallColumn_));
    int changed = Rows();
    for (const int row : unmeasured_)
    {
        if (row >= Rows())
            continue;
        const int height =
            heightOf(linesIn(context, textOf({row, tallColumn_}), width, lineHeight_, textFormat));
        if (height == layout_.height(row))
            continue;
        layout_.setHeight(row, height);
        changed = std::min(changed, row);
    }
    unmeasured_.clear();
    settled_ = true;
    if (changed < Rows())
        invalidateFrom(changed);
    const int position = layout_.position();
    layout_.scrollTo(position);
    if (layout_.position() != position)
        invalidateFrom(FixedRows());
    showScrolling();
}

void Grid::invalidate(const RECT& place) const noexcept
{
    if (window())
        InvalidateRect(window(), &place, FALSE);
}

void Grid::invalidateFrom(int row) const
{
    RECT client{};
    if (!window() || !GetClientRect(window(), &client))
        return;
    client.top = std::max(layout_.top(row), row < FixedRows() ? 0 : layout_.fixedHeight());
    if (client.top < client.bottom)
        invalidate(client);
}

void Grid::invalidateRow(int row) const
{
    if (!window() || row >= Rows())
        return;
    RECT place = layout_.place({row, 0});
    place.right = layout_.left(Cols());
    invalidate(place);
}

} // namespace korvane
