// The information rows in their grid, by mouse and keys.
#include "tests/messages/InfoDialog.h"

#include <imm.h>

namespace korvane::test
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

class InfoGridTests : public InfoDialogTest
{
protected:
    void SetUp() override { showInfo(); }

    std::pair<int, int> current() const { return grid().current(); }

    /// Edits a cell and lets the user type into the editor.
    void edit(int row, int column, const wchar_t* text)
    {
        grid().click(row, column);
        container.pump();
        ASSERT_EQ(GetFocus(), editor());
        SendMessageW(editor(), EM_SETSEL, 0, -1);
        container.type(text);
    }

    void caret(int position) const
    {
        SendMessageW(editor(), EM_SETSEL, static_cast<WPARAM>(position), position);
    }

    /// Makes a cell the current one, without editing.
    void go(int row, int column)
    {
        grid().click(row, 0);
        container.press(column == 1 ? VK_LEFT : VK_RIGHT);
        ASSERT_EQ(current(), std::pair(row, column));
    }

    HWND orderButton(int index) const
    {
        constexpr const wchar_t* captions[] = {L"Move to the top (Alt+Home)", L"Move up (Alt+Up)",
                                               L"Move down (Alt+Down)", L"Move to the bottom (Alt+End)"};
        return container.button(captions[index]);
    }

    int heightOf(int row) const
    {
        const RECT place = grid().place(row, 2);
        return static_cast<int>(place.bottom - place.top);
    }
};

TEST_F(InfoGridTests, TheGridShowsTheRowsUnderItsHeadingsAndABlankOne)
{
    EXPECT_EQ(grid().cell(0, 1).name(), L"Name");
    EXPECT_EQ(grid().cell(0, 2).name(), L"Value");
    EXPECT_THAT(grid().texts(),
                ElementsAre(Pair(L"Home", L"555 0102"), Pair(L"Fax", L"555 0103\r\nafter six"),
                            Pair(L"Car", L"555 0104"), Pair(L"", L"")));
    EXPECT_EQ(current(), std::pair(1, 1));
    EXPECT_FALSE(isEditing());
    EXPECT_NEAR(heightOf(2), 2 * heightOf(1), 1); // a value of two lines shows whole
}

TEST_F(InfoGridTests, TheEditorCoversTheCellThatIsClicked)
{
    for (const auto& [row, column] : {std::pair(1, 1), std::pair(2, 2), std::pair(4, 1)})
    {
        const RECT cell = grid().cell(row, column).place();
        grid().click(row, column);
        container.pump();
        RECT box{};
        GetWindowRect(editor(), &box);
        EXPECT_TRUE(isEditing());
        EXPECT_EQ(GetFocus(), editor());
        EXPECT_TRUE(EqualRect(&cell, &box)) << row << ' ' << column;
        EXPECT_EQ(WindowFromPoint({box.left + 5, box.top + 5}), editor());
        container.press(VK_ESCAPE);
    }
}

TEST_F(InfoGridTests, TheEditorBeginsWithTheTextOfTheCellSelected)
{
    grid().click(3, 2);
    container.pump();
    EXPECT_EQ(Container::text(editor()), L"555 0104");
    DWORD start = 9;
    DWORD end = 9;
    SendMessageW(editor(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0U);
    EXPECT_EQ(end, 8U);
}

TEST_F(InfoGridTests, F2EditsTheCurrentCellWithOrWithoutAlt)
{
    go(2, 1);
    for (const bool alt : {false, true})
    {
        container.press(VK_F2, false, alt);
        EXPECT_EQ(Container::text(editor()), L"Fax");
        EXPECT_EQ(GetFocus(), editor());
        container.press(VK_ESCAPE);
    }
}

TEST_F(InfoGridTests, ATypedCharacterReplacesTheTextAndWhatIsTypedNextFollows)
{
    container.type(L"N");
    EXPECT_EQ(Container::text(editor()), L"N");
    container.type(L"ight");
    EXPECT_EQ(Container::text(editor()), L"Night");
    EXPECT_EQ(grid().text(1, 1), L"Home"); // not yet
    container.press(VK_RIGHT);
    EXPECT_EQ(grid().text(1, 1), L"Night");
}

TEST_F(InfoGridTests, WhatAnInputMethodSendsAtOnceIsOneText)
{
    // All of it goes to the window that had the focus when it was composed.
    for (const wchar_t character : {L'\x65E5', L'\x672C', L'\xD83D', L'\xDE00'})
        SendMessageW(gridWindow(), WM_CHAR, character, 1);
    EXPECT_EQ(Container::text(editor()), L"\x65E5\x672C\xD83D\xDE00");
}

TEST_F(InfoGridTests, ControlCharactersTypeNothing)
{
    for (const wchar_t character : {L'\b', L'\x01', L'\x7F'})
        SendMessageW(gridWindow(), WM_CHAR, character, 1);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(grid().text(1, 1), L"Home");
}

TEST_F(InfoGridTests, ALetterIsTypedAndIsNoAccessKey)
{
    container.type(L"m"); // that of the other page
    EXPECT_TRUE(isOnInfo());
    EXPECT_EQ(Container::text(editor()), L"m");
}

TEST_F(InfoGridTests, LeavingTheCellCommits)
{
    edit(1, 2, L"555 9999");
    grid().click(3, 1);
    container.pump();
    EXPECT_EQ(grid().text(1, 2), L"555 9999");
    EXPECT_EQ(Container::text(editor()), L"Car");
}

TEST_F(InfoGridTests, AClickMeansTheCellThatIsSeenThoughTheEditTakenOverMovesIt)
{
    grid().click(1, 2);
    container.pump();
    SendMessageW(editor(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"one\r\ntwo"));
    const RECT seen = grid().place(3, 1);
    Container::clickAt(gridWindow(), seen.left + 4, seen.top + 4);
    container.pump();
    EXPECT_GT(grid().place(3, 1).top, seen.top + 4);
    EXPECT_EQ(current(), std::pair(3, 1));
    EXPECT_EQ(Container::text(editor()), L"Car");
}

TEST_F(InfoGridTests, TypingIntoTheBlankRowAndLeavingItAddsAnother)
{
    edit(4, 1, L"Boat");
    EXPECT_EQ(grid().rows(), 5);
    grid().click(1, 0);
    EXPECT_THAT(labels(), ElementsAre(L"Home", L"Fax", L"Car", L"Boat", L""));
    edit(5, 2, L"only a value");
    grid().click(1, 0);
    EXPECT_EQ(grid().rows(), 7);
}

TEST_F(InfoGridTests, EscPutsTheTextBackAndTheNextOneCancels)
{
    edit(1, 2, L"nonsense");
    container.press(VK_ESCAPE);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(grid().text(1, 2), L"555 0102");
    EXPECT_EQ(GetFocus(), gridWindow());
    EXPECT_THAT(container.done, IsEmpty());
    container.press(VK_ESCAPE);
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_F(InfoGridTests, EscInTheBlankRowAddsNone)
{
    edit(4, 1, L"Boat");
    container.press(VK_ESCAPE);
    EXPECT_EQ(grid().rows(), 5);
    EXPECT_EQ(grid().text(4, 1), L"");
}

TEST_F(InfoGridTests, TabCommitsAndGoesOnToWhatFollowsTheGrid)
{
    edit(1, 2, L"555 9999");
    container.press(VK_TAB);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(grid().text(1, 2), L"555 9999");
    EXPECT_EQ(GetFocus(), orderButton(0));
    container.press(VK_TAB, true);
    EXPECT_EQ(GetFocus(), gridWindow());
    edit(1, 2, L"555 8888");
    container.press(VK_TAB, true);
    EXPECT_EQ(grid().text(1, 2), L"555 8888");
    EXPECT_EQ(GetFocus(), tabs());
}

TEST_F(InfoGridTests, EnterInTheEditorConfirmsTheDialogWithItsText)
{
    edit(1, 2, L"555 9999");
    container.press(VK_RETURN);
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(data.takeCalls(), testing::Contains("Names.SetInfo(7, \"Home\", 0, \"555 9999\")"));
}

TEST_F(InfoGridTests, TheEditorGrowsWithItsLines)
{
    grid().click(1, 2);
    container.pump();
    const auto height = [&] {
        RECT box{};
        GetWindowRect(editor(), &box);
        return static_cast<int>(box.bottom - box.top);
    };
    const int line = height();
    SendMessageW(editor(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"one\r\ntwo\r\nthree"));
    container.pump();
    EXPECT_NEAR(height(), 3 * line, 2);
    container.press(VK_TAB);
    EXPECT_NEAR(heightOf(1), 3 * line, 2); // and so does the row
    EXPECT_EQ(grid().text(1, 2), L"one\r\ntwo\r\nthree");
}

TEST_F(InfoGridTests, TheEditorStaysOnItsPageHoweverManyLinesThereAre)
{
    grid().click(3, 2);
    container.pump();
    std::wstring lines;
    for (int line = 0; line < 60; ++line)
        lines += L"line\r\n";
    SendMessageW(editor(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(lines.c_str()));
    container.pump();
    EXPECT_LE(container.place(editor()).bottom, container.place(gridWindow()).bottom);
    container.press(VK_TAB); // the row is as high now
    SetFocus(gridWindow());
    container.press(VK_F2);
    ASSERT_TRUE(isEditing());
    EXPECT_LE(container.place(editor()).bottom, container.place(gridWindow()).bottom);
}

TEST_F(InfoGridTests, ArrowsLeaveTheEditorWhereTheCaretCannotGoFurther)
{
    struct
    {
        int key;
        bool atStart;
        std::pair<int, int> to;
    } const moves[] = {{VK_LEFT, true, {2, 1}}, {VK_UP, true, {1, 2}}, {VK_DOWN, false, {3, 2}}};
    for (const auto& [key, atStart, to] : moves)
    {
        edit(2, 2, L"new");
        caret(atStart ? 0 : 3);
        container.press(static_cast<WORD>(key));
        EXPECT_FALSE(isEditing()) << key;
        EXPECT_EQ(current(), to) << key;
        EXPECT_EQ(grid().text(2, 2), L"new");
        EXPECT_EQ(GetFocus(), gridWindow());
    }
    edit(2, 1, L"Telefax");
    caret(7);
    container.press(VK_RIGHT);
    EXPECT_EQ(current(), std::pair(2, 2));
    EXPECT_FALSE(isEditing()); // it does not begin again by itself
}

TEST_F(InfoGridTests, FromRightToLeftTheArrowsLeaveTheEditorWhereTheyPoint)
{
    edit(2, 1, L"new");
    SetWindowLongW(gridWindow(), GWL_EXSTYLE, GetWindowLongW(gridWindow(), GWL_EXSTYLE) | WS_EX_LAYOUTRTL);
    caret(0);
    container.press(VK_LEFT);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(current(), std::pair(2, 2));
}

TEST_F(InfoGridTests, ArrowsWithinTheTextAreTheEditors)
{
    edit(2, 1, L"new");
    caret(1);
    for (const int key : {VK_LEFT, VK_RIGHT, VK_RIGHT})
        container.press(static_cast<WORD>(key));
    EXPECT_TRUE(isEditing());
    caret(1);
    container.press(VK_UP);
    container.press(VK_DOWN);
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(current(), std::pair(2, 1));
}

TEST_F(InfoGridTests, ArrowsThatSelectAreTheEditors)
{
    edit(2, 2, L"new");
    caret(0);
    for (const int key : {VK_LEFT, VK_UP})
        container.press(static_cast<WORD>(key), true);
    caret(3);
    for (const int key : {VK_DOWN, VK_RIGHT})
        container.press(static_cast<WORD>(key), true);
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(current(), std::pair(2, 2));
}

// What an input method composes it shows in the editor, whose box is the platform's own and deals with it. That it is
// left alone meanwhile is proved here; what the user sees of it only Windows with such an input method can show.
TEST_F(InfoGridTests, TheKeysOfACompositionAreTheInputMethods)
{
    edit(1, 2, L"new");
    SendMessageW(editor(), WM_IME_STARTCOMPOSITION, 0, 0);
    for (const int key : {VK_TAB, VK_RETURN, VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_SPACE})
    {
        const auto scan = static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC)) << 16;
        PostMessageW(editor(), WM_KEYDOWN, VK_PROCESSKEY, 1 | scan);
        container.pump();
        SendMessageW(editor(), WM_IME_COMPOSITION, 0, GCS_COMPSTR);
    }
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(GetFocus(), editor());
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_EQ(grid().text(1, 2), L"555 0102"); // nothing is taken over meanwhile
    SendMessageW(editor(), WM_IME_ENDCOMPOSITION, 0, 0);
    container.type(L"\x65E5\x672C");
    container.press(VK_TAB);
    EXPECT_EQ(grid().text(1, 2), L"new\x65E5\x672C");
}

TEST_F(InfoGridTests, AKeyThatAnInputMethodTakesFromTheGridIsNoneOfTheGrids)
{
    const auto scan = static_cast<LPARAM>(MapVirtualKeyW(VK_F2, MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(gridWindow(), WM_KEYDOWN, VK_PROCESSKEY, 1 | scan);
    container.pump();
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(current(), std::pair(1, 1));
    SendMessageW(gridWindow(), WM_IME_CHAR, L'\x65E5', 1); // which the platform makes a character of
    container.pump();
    EXPECT_EQ(Container::text(editor()), L"\x65E5");
}

TEST_F(InfoGridTests, ArrowsDoNotLeadOutOfTheCells)
{
    edit(1, 1, L"a");
    caret(0);
    container.press(VK_LEFT);
    container.press(VK_UP);
    EXPECT_TRUE(isEditing());
    container.press(VK_ESCAPE);
    edit(4, 2, L"a");
    caret(1);
    container.press(VK_RIGHT);
    container.press(VK_DOWN); // the row beneath comes when the cell is left
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(current(), std::pair(4, 2));
}

TEST_F(InfoGridTests, HomeUpDownAndEndWithoutAltDoNothing)
{
    go(2, 2);
    for (const int key : {VK_HOME, VK_UP, VK_DOWN, VK_END})
    {
        container.press(static_cast<WORD>(key));
        container.press(static_cast<WORD>(key), true);
        container.press(static_cast<WORD>(key), false, false, true);
        EXPECT_EQ(current(), std::pair(2, 2)) << key;
    }
    EXPECT_THAT(labels(), ElementsAre(L"Home", L"Fax", L"Car", L""));
    container.press(VK_LEFT); // other keys are the grid's
    EXPECT_EQ(current(), std::pair(2, 1));
    container.press(VK_NEXT);
    EXPECT_EQ(current(), std::pair(4, 1));
}

TEST_F(InfoGridTests, WithAltTheKeysMoveTheRow)
{
    go(1, 1);
    container.press(VK_DOWN, false, true);
    EXPECT_THAT(labels(), ElementsAre(L"Fax", L"Home", L"Car", L""));
    EXPECT_EQ(current(), std::pair(2, 1));
    container.press(VK_END, false, true);
    EXPECT_THAT(labels(), ElementsAre(L"Fax", L"Car", L"Home", L""));
    EXPECT_EQ(current(), std::pair(3, 1));
    container.press(VK_UP, false, true);
    EXPECT_THAT(labels(), ElementsAre(L"Fax", L"Home", L"Car", L""));
    EXPECT_EQ(current(), std::pair(2, 1));
    container.press(VK_HOME, false, true);
    EXPECT_THAT(labels(), ElementsAre(L"Home", L"Fax", L"Car", L""));
    EXPECT_EQ(current(), std::pair(1, 1));
}

TEST_F(InfoGridTests, ButtonsMoveTheCurrentRow)
{
    go(1, 2);
    Container::click(orderButton(2));
    EXPECT_THAT(labels(), ElementsAre(L"Fax", L"Home", L"Car", L""));
    EXPECT_EQ(current(), std::pair(2, 2));
    Container::click(orderButton(3));
    EXPECT_THAT(labels(), ElementsAre(L"Fax", L"Car", L"Home", L""));
    Container::click(orderButton(1));
    EXPECT_THAT(labels(), ElementsAre(L"Fax", L"Home", L"Car", L""));
    Container::click(orderButton(0));
    EXPECT_THAT(labels(), ElementsAre(L"Home", L"Fax", L"Car", L""));
    EXPECT_EQ(current(), std::pair(1, 2));
}

TEST_F(InfoGridTests, NoRowMovesAboveTheHeadingOrBelowTheBlankRow)
{
    go(1, 1);
    container.press(VK_UP, false, true);
    container.press(VK_HOME, false, true);
    Container::click(orderButton(1));
    EXPECT_THAT(labels(), ElementsAre(L"Home", L"Fax", L"Car", L""));
    EXPECT_EQ(current(), std::pair(1, 1));
    go(3, 1);
    container.press(VK_DOWN, false, true);
    container.press(VK_END, false, true);
    Container::click(orderButton(3));
    EXPECT_THAT(labels(), ElementsAre(L"Home", L"Fax", L"Car", L""));
    EXPECT_EQ(current(), std::pair(3, 1));
}

TEST_F(InfoGridTests, TheBlankRowDoesNotMove)
{
    go(4, 1);
    for (const int key : {VK_HOME, VK_UP, VK_DOWN, VK_END})
    {
        container.press(static_cast<WORD>(key), false, true);
        EXPECT_THAT(labels(), ElementsAre(L"Home", L"Fax", L"Car", L""));
        EXPECT_EQ(current(), std::pair(4, 1));
    }
}

TEST_F(InfoGridTests, AMoveTakesOverWhatIsBeingTyped)
{
    edit(1, 1, L"House");
    Container::click(orderButton(3));
    EXPECT_FALSE(isEditing());
    EXPECT_THAT(labels(), ElementsAre(L"Fax", L"Car", L"House", L""));
}

TEST_F(InfoGridTests, TheHeightsGoWithTheRows)
{
    const int one = heightOf(1);
    const int two = heightOf(2);
    go(2, 1);
    container.press(VK_UP, false, true);
    EXPECT_EQ(heightOf(1), two);
    EXPECT_EQ(heightOf(2), one);
}

TEST_F(InfoGridTests, ScrollingTakesOverWhatIsBeingTyped)
{
    edit(1, 1, L"House");
    SendMessageW(gridWindow(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(grid().text(1, 1), L"House");
}

TEST_F(InfoGridTests, AnotherProgramThatTakesTheFocusEndsNoEdit)
{
    edit(1, 1, L"House");
    SetFocus(nullptr);
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(grid().text(1, 1), L"Home");
    SetFocus(editor());
    container.press(VK_ESCAPE);
    EXPECT_EQ(grid().text(1, 1), L"Home");
}

TEST_F(InfoGridTests, ScreenReadersCallTheButtonsByWhatTheyDo)
{
    for (int index = 0; index < 4; ++index)
        EXPECT_THAT(accessibleName(orderButton(index)), HasSubstr(L"Move"));
    EXPECT_EQ(Element::ofWindow(gridWindow()).name(), L"Info");
}

TEST_F(InfoGridTests, ScreenReadersCallTheEditorByItsCell)
{
    edit(1, 1, L"Home & away");
    EXPECT_EQ(accessibleName(editor()), L"Name");
    edit(1, 2, L"555 9999");
    EXPECT_EQ(accessibleName(editor()), L"Value, Home & away");
}

} // namespace korvane::test
