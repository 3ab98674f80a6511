#include "framework/control/GridLayout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace korvane
{

GridLayout::GridLayout(int fixedRows, int fixedColumns, std::vector<float> shares)
    : fixedRows_(fixedRows), fixedColumns_(fixedColumns), shares_(std::move(shares)),
      heights_(static_cast<std::size_t>(fixedRows))
{
}

Cell GridLayout::nearest(Cell cell) const noexcept
{
    return {std::clamp(cell.row, fixedRows_, std::max(fixedRows_, rows() - 1)),
            std::clamp(cell.column, fixedColumns_, columns() - 1)};
}

void GridLayout::setSize(SIZE size, int fixedWidth)
{
    size_ = size;
    fixedWidth_ = fixedWidth;
}

void GridLayout::setRows(int rows, int height)
{
    heights_.resize(static_cast<std::size_t>(std::max(rows, fixedRows_)), height);
    tops_.resize(std::min(tops_.size(), heights_.size() + 1));
}

void GridLayout::setHeight(int row, int height)
{
    const auto index = static_cast<std::size_t>(row);
    heights_.at(index) = height;
    tops_.resize(std::min(tops_.size(), index + 1));
}

/// The tops of the rows, up to this one at least: they are added up once, and as far as they are asked for.
const std::vector<int>& GridLayout::tops(int row) const
{
    tops_.reserve(heights_.size() + 1);
    while (tops_.size() <= static_cast<std::size_t>(row))
        tops_.push_back(tops_.back() + heights_[tops_.size() - 1]);
    return tops_;
}

int GridLayout::top(int row) const
{
    return topUnscrolled(row) - (row < fixedRows_ ? 0 : position_);
}

int GridLayout::left(int column) const
{
    if (column <= fixedColumns_)
        return column * fixedWidth_;
    const int rest = size_.cx - fixedColumns_ * fixedWidth_;
    const auto upTo = shares_.begin() + (column - fixedColumns_);
    // Edges are rounded, not widths: together the columns are exactly as wide as the grid.
    const float part =
        std::accumulate(shares_.begin(), upTo, 0.0F) / std::accumulate(shares_.begin(), shares_.end(), 0.0F);
    return fixedColumns_ * fixedWidth_ + static_cast<int>(std::lround(static_cast<float>(rest) * part));
}

RECT GridLayout::place(Cell cell) const
{
    const int upper = top(cell.row);
    return {left(cell.column), upper, left(cell.column + 1), upper + height(cell.row)};
}

Cell GridLayout::at(POINT point) const
{
    Cell cell{none, none};
    for (int column = 0; column < columns() && cell.column == none; ++column)
        if (point.x >= left(column) && point.x < left(column + 1))
            cell.column = column;
    const auto& all = tops(rows());
    const int y = point.y + (point.y < fixedHeight() ? 0 : position_);
    const auto row = static_cast<int>(std::upper_bound(all.begin(), all.end(), y) - all.begin()) - 1;
    if (row < rows())
        cell.row = row;
    return cell;
}

int GridLayout::topUnscrolled(int row) const
{
    return tops(row)[static_cast<std::size_t>(row)];
}

int GridLayout::page() const
{
    return std::max(0, static_cast<int>(size_.cy) - fixedHeight());
}

int GridLayout::range() const
{
    return topUnscrolled(rows()) - fixedHeight();
}

void GridLayout::scrollTo(int position)
{
    position_ = std::clamp(position, 0, std::max(0, range() - page()));
}

int GridLayout::positionFor(int row) const
{
    const int upper = topUnscrolled(row) - fixedHeight();
    return std::min(std::max(position_, upper + height(row) - page()), upper);
}

int GridLayout::pageFrom(int row, bool back) const
{
    const auto& all = tops(rows());
    const int wanted = topUnscrolled(row) + (back ? -page() : page());
    const auto found = static_cast<int>(std::upper_bound(all.begin(), all.end(), wanted) - all.begin()) - 1;
    return back ? std::min(found + 1, row - 1) : std::max(found, row + 1);
}

int GridLayout::dividerAt(int x, int reach) const
{
    for (int column = fixedColumns_; column + 1 < columns(); ++column)
        if (std::abs(x - left(column + 1)) <= reach)
            return column;
    return none;
}

void GridLayout::dragDivider(int column, int x, int minimum)
{
    const int from = left(column);
    const int width = left(column + 2) - from;
    if (width < 2 * minimum)
        return;
    float& share = shares_.at(static_cast<std::size_t>(column - fixedColumns_));
    float& next = shares_.at(static_cast<std::size_t>(column - fixedColumns_ + 1));
    const auto part =
        static_cast<float>(std::clamp(x - from, minimum, width - minimum)) / static_cast<float>(width);
    const float both = share + next;
    share = both * part;
    next = both - share;
}

} // namespace korvane
