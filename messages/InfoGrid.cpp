#include "messages/InfoGrid.h"

#include "framework/control/DialogWindow.h"
#include "framework/control/Keys.h"
#include "framework/modKorvaneDlg.h"

#include <algorithm>
#include <utility>

namespace korvane
{

namespace
{

enum TextId : long
{
    textName = 22517,
    textValue = 22518
};

constexpr float buttonSize = 405;
constexpr float gap = 75;
constexpr float margins = 120; ///< of the editor, beside its text
constexpr float selectorWidth = 240;

} // namespace

InfoGrid::InfoGrid(DialogWindow& dialog, const Place& place)
    : dialog_(dialog),
      fraEditInfo(dialog, {.name = L"fraEditInfo",
                           .place = {place.left, place.top, place.width - buttonSize - gap, place.height}}),
      lblEdit(fraEditInfo, {.name = L"lblEdit", .place = {}}, Label::Kind::data),
      txtEdit(fraEditInfo, {.name = L"txtEdit", .place = {}}, TextBox::Kind::cell),
      grdEditInfo(fraEditInfo,
                  {.name = L"grdEditInfo",
                   .place = {0, 0, place.width - buttonSize - gap, place.height},
                   .text = L"22600"},
                  {.fixedRows = 1,
                   .fixedColumns = 1,
                   .fixedWidth = selectorWidth,
                   .shares = {2, 3},
                   .tallColumn = 1 + static_cast<int>(InfoRows::values)}),
      fraArrangeInfo(dialog,
                     {.name = L"fraArrangeInfo",
                      .place = {place.left + place.width - buttonSize, place.top, buttonSize, place.height}}),
      cmdMove(fraArrangeInfo, {0, 0, buttonSize, buttonSize}, gap)
{
    grdEditInfo.textOf = [this](Cell cell) { return textOf(cell); };
    grdEditInfo.onLeaveCell = [this] { commit(); };
    grdEditInfo.onClick = [this] { edit(); };
    grdEditInfo.onKeyDown = [this](WORD key, DWORD modifiers) { return gridKey(key, modifiers); };
    grdEditInfo.onKeyPress = [this](wchar_t character) { return gridCharacter(character); };
    txtEdit.onChange = [this] { coverCell(); };
    txtEdit.onLostFocus = [this] {
        // To another program it goes for a moment only.
        if (dialog_.hasFocus())
            commit();
    };
    txtEdit.onKeyDown = [this](WORD key, DWORD modifiers) { return editorKey(key, modifiers); };
    txtEdit.onDialogKey = [this](WORD key) { return editorDialogKey(key); };
    cmdMove.onMove = [this](OrderButtons::Move move) { moveRow(move); };
    txtEdit.setVisible(false);
    txtEdit.setEnabled(false);
}

void InfoGrid::setVisible(bool visible)
{
    fraEditInfo.setVisible(visible);
    fraArrangeInfo.setVisible(visible);
}

void InfoGrid::fill(const Variant& info)
{
    cancelEdit();
    headings_[InfoRows::labels] = resourceText(textName);
    headings_[InfoRows::values] = resourceText(textValue);
    rows_.assign(info);
    grdEditInfo.setRows(0);
    grdEditInfo.setRows(grdEditInfo.FixedRows() + rows_.count());
    grdEditInfo.setCurrent({});
}

std::wstring_view InfoGrid::textOf(Cell cell) const
{
    if (cell.column < grdEditInfo.FixedCols())
        return {};
    const std::size_t column = columnOf(cell);
    const int row = rowOf(cell);
    return row < 0 ? headings_[column].view() : rows_.text(row, column);
}

/// What a screen reader calls a cell: by its column, and a value by the label of its row too.
std::wstring InfoGrid::nameOf(Cell cell) const
{
    std::wstring name(headings_[columnOf(cell)].view());
    if (columnOf(cell) == InfoRows::values)
        name.append(L", ").append(rows_.text(rowOf(cell), InfoRows::labels));
    return name;
}

/// @param typed replaces the text of the cell.
void InfoGrid::edit(std::wstring_view typed)
{
    commit();
    editing_ = grdEditInfo.current();
    grdEditInfo.setCurrent(*editing_); // it may have been scrolled out of sight
    lblEdit.setCaption(nameOf(*editing_));
    txtEdit.setText(typed.empty() ? textOf(*editing_) : typed);
    if (typed.empty())
        txtEdit.selectAll();
    else
        txtEdit.select(static_cast<int>(typed.size()), 0); // what is typed next follows
    coverCell();
    txtEdit.setEnabled(true);
    txtEdit.setVisible(true);
    txtEdit.setFocus();
}

/// The editor grows with its lines, and covers a tall cell, as far as there is room on the page.
void InfoGrid::coverCell()
{
    if (!editing_)
        return;
    Place place = grdEditInfo.cellPlace(*editing_);
    const float wanted = 1.2F * txtEdit.textHeight(txtEdit.Text(), place.width - margins);
    place.height = std::min(std::max(place.height, wanted), fraEditInfo.Height() - place.top);
    txtEdit.setPlace(place);
}

void InfoGrid::commit()
{
    if (!editing_)
        return;
    const Cell cell = *editing_;
    rows_.setText(rowOf(cell), columnOf(cell), txtEdit.Text());
    hideEditor();
    grdEditInfo.setRows(grdEditInfo.FixedRows() + rows_.count());
    grdEditInfo.cellChanged(cell);
}

void InfoGrid::hideEditor()
{
    editing_.reset(); // the focus that goes commits nothing more
    if (txtEdit.hasFocus())
        grdEditInfo.setFocus();
    txtEdit.setVisible(false);
    txtEdit.setEnabled(false);
}

void InfoGrid::cancelEdit()
{
    if (editing_)
        hideEditor();
}

/// Where the caret cannot go further, the arrow keys lead on to the next cell, without editing it. With Shift they
/// select, and the like.
bool InfoGrid::editorKey(WORD key, DWORD modifiers)
{
    if (!editing_ || modifiers != 0)
        return false;
    const bool isAtStart = txtEdit.SelStart() == 0;
    const bool isAtEnd = txtEdit.SelStart() == static_cast<int>(txtEdit.Text().size());
    const bool leads =
        ((key == VK_LEFT || key == VK_UP) && isAtStart) || ((key == VK_RIGHT || key == VK_DOWN) && isAtEnd);
    const Cell to = leads ? grdEditInfo.cellBeside(key) : *editing_;
    if (to == *editing_)
        return false;
    commit();
    grdEditInfo.setCurrent(to);
    return true;
}

/// Esc leaves the cell as it was, and the dialog's own Esc comes next. Tab leads on from the grid.
bool InfoGrid::editorDialogKey(WORD key)
{
    if (key == VK_TAB)
        commit();
    if (key != VK_ESCAPE || !editing_)
        return false;
    cancelEdit();
    return true;
}

/// Home, End, Up and Down move the row with Alt and do nothing without: the grid's own way with these keys is switched
/// off on purpose.
bool InfoGrid::gridKey(WORD key, DWORD modifiers)
{
    if (key == VK_F2)
    {
        edit();
        return true;
    }
    const auto move = OrderButtons::moveOf(key);
    if (move && (modifiers & altKey) != 0)
        moveRow(*move);
    return move.has_value();
}

/// Typing replaces the text of the cell. What comes in one go, from an input method, is one text.
bool InfoGrid::gridCharacter(wchar_t character)
{
    if (character < L' ' || character == 0x7F)
        return false;
    const std::wstring typed(1, character);
    if (editing_)
        txtEdit.insert(typed);
    else
        edit(typed);
    return true;
}

void InfoGrid::moveRow(OrderButtons::Move move)
{
    commit();
    const int from = rowOf(grdEditInfo.current());
    const int to = rows_.move(from, OrderButtons::target(move, from, rows_.count()));
    const auto [first, last] = std::minmax(from, to);
    if (first != last)
        grdEditInfo.rowsChanged(first + grdEditInfo.FixedRows(), last + grdEditInfo.FixedRows());
    grdEditInfo.setCurrent({to + grdEditInfo.FixedRows(), grdEditInfo.current().column});
}

} // namespace korvane
