// A grid of texts: rows as high as their texts, fixed rows and columns for headings, and a current cell. No control of
// the platform has rows of different heights.
//
// The texts stay with the owner, who tells of changes. The arrow keys, Page Up and Down, Home and End move the current
// cell, as far as the owner does not take them (onKeyDown); the wheel and the scroll bar scroll, and the edges of the
// headings are dragged. One source file per facet:
//
//   GridLayout.cpp      where the cells are, without a window
//   Grid.cpp            the owner's side, and the heights of the rows
//   GridWindow.cpp      the window and its user
//   GridPainting.cpp    what it looks like
//   GridAccessible.cpp  what assistive technology is told
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/control/Control.h"
#include "framework/control/GridLayout.h"

#include <oleacc.h>

#include <optional>

namespace korvane
{

class Grid : public Control
{
public:
    struct Shape
    {
        int fixedRows;
        int fixedColumns;
        float fixedWidth;          ///< of each fixed column, in twips
        std::vector<float> shares; ///< of the other columns in the width
        int tallColumn;            ///< its texts decide how high the rows are
    };

    Grid(Surface surface, const Design& design, Shape shape);
    ~Grid() override;

    /// What stands in a cell. To be bound before the control has its window.
    std::function<std::wstring_view(Cell)> textOf;

    int Rows() const noexcept { return layout_.rows(); }
    int FixedRows() const noexcept { return layout_.fixedRows(); }
    int FixedCols() const noexcept { return layout_.fixedColumns(); }
    int Cols() const noexcept { return layout_.columns(); }
    /// The fixed rows count.
    void setRows(int rows);
    /// The text of a cell is another one.
    void cellChanged(Cell cell);
    /// All texts of these rows are other ones.
    void rowsChanged(int first, int last);

    /// The cell that the keys go to: never a fixed one.
    Cell current() const noexcept { return current_; }
    /// Shows the cell too. Does not raise onLeaveCell.
    void setCurrent(Cell cell);
    /// The cell to which an arrow key leads from the current one: that one, where there is no further.
    Cell cellBeside(WORD arrowKey) const { return layout_.nearest(cellAfter(arrowKey).value_or(current_)); }

    /// Place of a cell in twips on the grid's own surface, whether in sight or not.
    Place cellPlace(Cell cell);

    std::function<void()>
        onLeaveCell; ///< the user is about to leave the current cell, or to move it on the screen
    std::function<void()> onClick; ///< a cell was clicked, and is the current one

    void closing() noexcept override;

    // For assistive technology.
    const GridLayout& settledLayout();
    /// Does what a click on a cell does.
    void click(Cell cell);
    /// Makes a cell the current one as the user does.
    void choose(Cell cell);

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    /// How texts are drawn, and therefore measured.
    static constexpr UINT textFormat = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS;

    // The heights of the rows
    void measureAnew(int first, int last);
    void measureAll();
    int heightOf(int lines) const noexcept;
    int padding() const noexcept; ///< between the edge of a cell and its text
    int widthOfText(int column) const;
    void settle();
    void showScrolling() const noexcept;
    void invalidate(const RECT& place) const noexcept;
    void invalidateFrom(int row) const;
    void invalidateRow(int row) const;

    // The user
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;
    std::optional<LRESULT> handle(UINT message, WPARAM first, LPARAM second);
    void sizeChanged();
    void setFont(HFONT font);
    void keyDown(WORD key);
    std::optional<Cell> cellAfter(WORD key) const;
    void pressed(POINT point);
    void dragged(int x);
    void released(POINT point);
    bool showsDivider() const;
    void scrollBarMoved(WORD code);
    std::optional<int> positionAfter(WORD scrollCode) const;
    void wheelTurned(short delta);
    void scroll(int position);

    // Its look
    void paint(HDC context, const RECT& stale);
    void paintCell(HDC context, Cell cell, const RECT& place) const;
    void paintMarker(HDC context, const RECT& place) const noexcept;

    // Assistive technology
    LRESULT answer(WPARAM request);
    void tell(DWORD event, Cell cell) const noexcept;
    void tellOfOrder() const noexcept;

    GridLayout layout_;
    float fixedWidth_;
    int tallColumn_;
    Cell current_;
    HFONT font_ = nullptr; ///< the dialog's
    int lineHeight_ = 1;
    std::vector<int> unmeasured_;    ///< rows whose heights are not known
    bool settled_ = false;           ///< the layout is what the texts make it
    RECT pressed_{};                 ///< the cell that the button went down on, where it was then
    int dragged_ = GridLayout::none; ///< the column whose edge is dragged
    int wheel_ = 0;                  ///< what is left of the wheel's turning
    ComPtr<IAccessible> accessible_; ///< the table, once it was asked for
};

} // namespace korvane
