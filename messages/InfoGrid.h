// The page on which the information rows of a resource are edited: a grid, a box over the cell that is edited, and
// buttons for the order of the rows.
#pragma once

#include "framework/control/Frame.h"
#include "framework/control/Grid.h"
#include "framework/control/Label.h"
#include "framework/control/OrderButtons.h"
#include "framework/control/TextBox.h"
#include "messages/InfoRows.h"

namespace korvane
{

class InfoGrid
{
public:
    InfoGrid(DialogWindow& dialog, const Place& place);

    bool Visible() const noexcept { return fraEditInfo.Visible(); }
    void setVisible(bool visible);
    void fill(const Variant& info);
    /// Takes over what is being typed.
    void commit();
    Variant toArray() const { return rows_.toArray(); }

private:
    std::wstring_view textOf(Cell cell) const;
    int rowOf(Cell cell) const noexcept { return cell.row - grdEditInfo.FixedRows(); }
    std::size_t columnOf(Cell cell) const noexcept
    {
        return static_cast<std::size_t>(cell.column - grdEditInfo.FixedCols());
    }

    std::wstring nameOf(Cell cell) const;
    void edit(std::wstring_view typed = {});
    void coverCell();
    void hideEditor();
    void cancelEdit();
    bool editorKey(WORD key, DWORD modifiers);
    bool editorDialogKey(WORD key);
    bool gridKey(WORD key, DWORD modifiers);
    bool gridCharacter(wchar_t character);
    void moveRow(OrderButtons::Move move);

    DialogWindow& dialog_;
    InfoRows rows_;
    Bstr headings_[2];
    std::optional<Cell> editing_;

    Frame fraEditInfo;
    Label lblEdit;   ///< unseen: by it screen readers call what follows
    TextBox txtEdit; // before the grid, and therefore in front of it
    Grid grdEditInfo;
    Frame fraArrangeInfo;
    OrderButtons cmdMove;
};

} // namespace korvane
