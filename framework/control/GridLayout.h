// Where the cells of a grid are, in pixels of its window: rows of any height, columns that share the width, and the rows
// in sight.
#pragma once

#include "framework/com/Platform.h"

#include <cstddef>
#include <vector>

namespace korvane
{

/// A place in a grid; the fixed rows and columns count.
struct Cell
{
    int row = 0;
    int column = 0;

    friend bool operator==(Cell, Cell) = default;
};

class GridLayout
{
public:
    static constexpr int none = -1;

    /// @param shares of the columns behind the fixed ones, in the width that those leave.
    GridLayout(int fixedRows, int fixedColumns, std::vector<float> shares);

    int rows() const noexcept { return static_cast<int>(heights_.size()); }
    int columns() const noexcept { return fixedColumns_ + static_cast<int>(shares_.size()); }
    int fixedRows() const noexcept { return fixedRows_; }
    int fixedColumns() const noexcept { return fixedColumns_; }
    bool isFixed(Cell cell) const noexcept { return cell.row < fixedRows_ || cell.column < fixedColumns_; }
    /// The cell nearest to a place that may be outside, and is none of the fixed ones.
    Cell nearest(Cell cell) const noexcept;

    void setSize(SIZE size, int fixedWidth);
    /// Further rows come at the end, all of one height. The fixed rows are always there.
    void setRows(int rows, int height);
    void setHeight(int row, int height);
    int height(int row) const { return heights_.at(static_cast<std::size_t>(row)); }

    // On the window, whether in sight or not.
    int top(int row) const;     ///< also of the row behind the last
    int left(int column) const; ///< also of the column behind the last
    RECT place(Cell cell) const;
    /// The cell at a point; `none` for a row or column where none is.
    Cell at(POINT point) const;

    // The rows below the fixed ones scroll.
    int fixedHeight() const { return topUnscrolled(fixedRows_); }
    int position() const noexcept { return position_; }
    int page() const;  ///< what of them is in sight
    int range() const; ///< all of them
    /// Goes to the nearest position there is.
    void scrollTo(int position);
    /// The position at which a row is in sight, or its upper part where it is higher than the page.
    int positionFor(int row) const;
    /// A page from a row on or back: at least the next row.
    int pageFrom(int row, bool back) const;

    /// The column whose right edge is near a place, and can be dragged.
    int dividerAt(int x, int reach) const;
    /// Moves the right edge of a column: it and the next one share anew what they had.
    void dragDivider(int column, int x, int minimum);

private:
    int topUnscrolled(int row) const;
    const std::vector<int>& tops(int row) const;

    int fixedRows_;
    int fixedColumns_;
    std::vector<float> shares_;
    std::vector<int> heights_;
    SIZE size_{};
    int fixedWidth_ = 0;
    int position_ = 0;
    mutable std::vector<int> tops_{0}; ///< as far as they are known
};

} // namespace korvane
