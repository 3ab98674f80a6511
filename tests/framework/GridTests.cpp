// The grid, as its user and assistive technology know it.
#include "framework/control/Dpi.h"
#include "framework/control/Grid.h"
#include "tests/framework/ControlDialog.h"
#include "tests/support/GridView.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

struct GridLayoutOfTest
{
    explicit GridLayoutOfTest(DialogWindow& dialog)
        : txtBefore{dialog, {.name = L"txtBefore", .place = {3000, 120, 1200, 315}}},
          grdThings{
              dialog,
              {.name = L"grdThings", .place = {120, 120, 2700, 1500}, .text = L"&Things"},
              {.fixedRows = 1, .fixedColumns = 1, .fixedWidth = 240, .shares = {1, 2}, .tallColumn = 2}},
          txtAfter{dialog, {.name = L"txtAfter", .place = {3000, 600, 1200, 315}}}
    {
        grdThings.textOf = [this](Cell cell) -> std::wstring_view {
            ++asked[{cell.row, cell.column}];
            const auto row = static_cast<std::size_t>(cell.row);
            if (row >= texts.size())
                return {};
            return texts[row].at(static_cast<std::size_t>(cell.column));
        };
    }

    std::vector<std::array<std::wstring, 3>> texts;
    std::map<std::pair<int, int>, int> asked; ///< how often the text of a cell was
    TextBox txtBefore;
    Grid grdThings;
    TextBox txtAfter;
};

class GridTests : public ControlTest<GridLayoutOfTest>
{
protected:
    void SetUp() override
    {
        ControlTest::SetUp();
        layout().texts = {
            {L"", L"Name", L"Value"},        {L"", L"ash", L"one"},     {L"", L"birch", L"two\r\nlines"},
            {L"", L"cedar", L"three"},       {L"", L"elm", L"four"},    {L"", L"fir", L""},
            {L"", L"hazel", L"six\r\n\r\n"}, {L"", L"larch", L"seven"}, {L"", L"maple", L"eight"}};
        grid().setRows(9);
        grid().onClick = [this] { told += "click "; };
        grid().onLeaveCell = [this] { told += "leave "; };
        grid().setFocus();
        container.pump();
        view = GridView(grid().window());
    }

    Grid& grid() const { return layout().grdThings; }
    std::pair<int, int> current() const { return {grid().current().row, grid().current().column}; }

    int heightOf(int row) const
    {
        const RECT place = view.place(row, 0);
        return static_cast<int>(place.bottom - place.top);
    }

    /// The cells whose texts were asked for since the last time.
    std::vector<std::pair<int, int>> takeAsked() const
    {
        std::vector<std::pair<int, int>> cells;
        for (const auto& [cell, times] : layout().asked)
            cells.push_back(cell);
        layout().asked.clear();
        return cells;
    }

    /// What is drawn now, besides what was drawn before.
    std::vector<std::pair<int, int>> drawn() const
    {
        grid().settledLayout();
        takeAsked();
        grid().showNow();
        return takeAsked();
    }

    /// How often a colour stands in a cell.
    int pixelsOf(int row, int column, COLORREF color) const
    {
        grid().showNow();
        const RECT place = view.place(row, column);
        const HDC context = GetDC(grid().window());
        int count = 0;
        for (LONG y = place.top; y < place.bottom; ++y)
            for (LONG x = place.left; x < place.right; ++x)
                count += GetPixel(context, x, y) == color ? 1 : 0;
        ReleaseDC(grid().window(), context);
        return count;
    }

    void scrollBar(WORD code) const { SendMessageW(grid().window(), WM_VSCROLL, code, 0); }
    int position() const { return GetScrollPos(grid().window(), SB_VERT); }

    void drag(int fromX, int toX) const
    {
        const HWND window = grid().window();
        SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(fromX, 3));
        SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(toX, 3));
        SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(toX, 3));
    }

    GridView view{nullptr};
    std::string told;
};

} // namespace

TEST_F(GridTests, RowsAreAsHighAsTheLinesOfTheirTexts)
{
    const int line = heightOf(1);
    EXPECT_EQ(heightOf(0), line);
    EXPECT_EQ(heightOf(5), line); // also without a text
    EXPECT_NEAR(heightOf(2), 2 * line, 1);
    EXPECT_NEAR(heightOf(6), 3 * line, 2);
    layout().texts[1][2] = L"a\r\nb\r\nc\r\nd";
    grid().cellChanged({1, 2});
    EXPECT_NEAR(heightOf(1), 4 * line, 3);
}

TEST_F(GridTests, ARowIsOneAndAFifthTimesAsHighAsItsText)
{
    const float text = grid().textHeight(L"two\r\nlines", 100000);
    EXPECT_NEAR(heightOf(2), toPixels(1.2F * text, windowDpi(grid().window())), 1);
}

TEST_F(GridTests, ALongTextIsBrokenWhereItsColumnEnds)
{
    const int line = heightOf(1);
    layout().texts[1][2] =
        L"a text of many words that do not all fit into one line of the column that they are in";
    grid().cellChanged({1, 2});
    const int broken = heightOf(1);
    EXPECT_GT(broken, line);
    const RECT heading = view.place(0, 2);
    drag(heading.left, heading.left + 60); // the column becomes narrower
    EXPECT_GT(heightOf(1), broken);
}

TEST_F(GridTests, OnlyTheTallColumnDecidesHowHighARowIs)
{
    const int line = heightOf(1);
    layout().texts[1][1] = L"a\r\nb\r\nc";
    grid().cellChanged({1, 1});
    EXPECT_EQ(heightOf(1), line);
}

TEST_F(GridTests, AChangedTextIsDrawnAndNothingElse)
{
    grid().showNow();
    layout().texts[1][1] = L"alder";
    grid().cellChanged({1, 1});
    EXPECT_THAT(drawn(), ElementsAre(std::pair(1, 1)));
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(GridTests, WhatARowGrowsByMovesTheRowsBelow)
{
    grid().showNow();
    layout().texts[3][2] = L"three\r\nlines";
    grid().cellChanged({3, 2});
    const auto cells = drawn();
    EXPECT_THAT(cells, Each(testing::Field(&std::pair<int, int>::first, testing::Ge(3))));
    EXPECT_THAT(cells, testing::Contains(std::pair(4, 1)));
}

TEST_F(GridTests, MovedRowsAreDrawnAndNoOthers)
{
    grid().showNow();
    std::swap(layout().texts[3], layout().texts[4]);
    grid().rowsChanged(3, 4);
    EXPECT_THAT(drawn(),
                Each(testing::Field(&std::pair<int, int>::first, AllOf(testing::Ge(3), testing::Le(4)))));
}

TEST_F(GridTests, ALongGridIsMeasuredOnceAndDrawnInSightOnly)
{
    layout().texts.resize(5000, {L"", L"more", L"of it"});
    takeAsked();
    grid().setRows(5000);
    grid().settledLayout();
    EXPECT_THAT((layout().asked[{4000, 2}]), 1);
    EXPECT_LT(drawn().size(), 60U);
}

TEST_F(GridTests, ArrowKeysMoveTheCurrentCellWithinTheCellsThatAreNotFixed)
{
    EXPECT_EQ(current(), std::pair(1, 1));
    container.press(VK_RIGHT);
    container.press(VK_DOWN);
    EXPECT_EQ(current(), std::pair(2, 2));
    container.press(VK_RIGHT);
    EXPECT_EQ(current(), std::pair(2, 2));
    container.press(VK_LEFT);
    container.press(VK_LEFT);
    container.press(VK_UP);
    EXPECT_EQ(current(), std::pair(1, 1));
    container.press(VK_UP);
    EXPECT_EQ(current(), std::pair(1, 1));
    EXPECT_EQ(told, "leave leave leave leave ");
    EXPECT_EQ(view.current(), std::pair(1, 1));
}

TEST_F(GridTests, HomeAndEndLeadThroughTheRowAndWithControlThroughTheGrid)
{
    container.press(VK_END);
    EXPECT_EQ(current(), std::pair(1, 2));
    container.press(VK_END, false, false, true);
    EXPECT_EQ(current(), std::pair(8, 2));
    container.press(VK_HOME);
    EXPECT_EQ(current(), std::pair(8, 1));
    container.press(VK_HOME, false, false, true);
    EXPECT_EQ(current(), std::pair(1, 1));
}

TEST_F(GridTests, PageKeysLeadOnByAPageAndTheCurrentCellStaysInSight)
{
    container.press(VK_NEXT);
    const int down = current().first;
    EXPECT_GT(down, 1);
    container.press(VK_NEXT);
    container.press(VK_NEXT);
    EXPECT_EQ(current().first, 8);
    RECT client{};
    GetClientRect(grid().window(), &client);
    EXPECT_LE(view.place(8, 1).bottom, client.bottom);
    container.press(VK_PRIOR);
    container.press(VK_PRIOR);
    container.press(VK_PRIOR);
    EXPECT_EQ(current().first, 1);
    EXPECT_EQ(position(), 0);
}

TEST_F(GridTests, AKeyThatTheOwnerTakesDoesNotMoveTheCell)
{
    // The hook is asked for when the window is made; here as anybody else would be.
    container.press(VK_DOWN, false, true);
    EXPECT_EQ(current(), std::pair(1, 1)); // with Alt it is none of the grid's
}

TEST_F(GridTests, TabLeadsOnFromTheGrid)
{
    container.press(VK_TAB);
    EXPECT_EQ(GetFocus(), layout().txtAfter.window());
    container.press(VK_TAB, true);
    EXPECT_EQ(GetFocus(), grid().window());
    container.press(VK_TAB, true);
    EXPECT_EQ(GetFocus(), layout().txtBefore.window());
}

TEST_F(GridTests, AClickMakesACellTheCurrentOne)
{
    layout().txtAfter.setFocus();
    view.click(3, 2);
    EXPECT_EQ(current(), std::pair(3, 2));
    EXPECT_EQ(GetFocus(), grid().window());
    EXPECT_EQ(told, "leave click ");
    view.click(3, 2);
    EXPECT_EQ(told, "leave click click ");
}

TEST_F(GridTests, AClickBeforeARowMakesItTheCurrentOneAndIsNoClickOnACell)
{
    container.press(VK_RIGHT);
    told.clear();
    view.click(3, 0);
    EXPECT_EQ(current(), std::pair(3, 2));
    EXPECT_EQ(told, "leave ");
    view.click(0, 1);
    EXPECT_EQ(current(), std::pair(3, 2));
    EXPECT_EQ(told, "leave ");
}

TEST_F(GridTests, AButtonReleasedElsewhereIsNoClick)
{
    const RECT from = view.place(3, 1);
    const RECT to = view.place(4, 1);
    SendMessageW(grid().window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.left + 3, from.top + 3));
    SendMessageW(grid().window(), WM_LBUTTONUP, 0, MAKELPARAM(to.left + 3, to.top + 3));
    EXPECT_EQ(told, "leave ");
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(GridTests, AClickMeansTheCellThatWasSeenThoughTheRowsMove)
{
    const RECT seen = view.place(3, 1);
    layout().txtAfter.onLostFocus = [this] { // it was an edit of the first row
        layout().texts[1][2] = L"one\r\nand\r\nmore";
        grid().cellChanged({1, 2});
    };
    layout().txtAfter.setFocus();
    Container::clickAt(grid().window(), seen.left + 4, seen.top + 4);
    EXPECT_GT(view.place(3, 1).top, seen.bottom);
    EXPECT_EQ(current(), std::pair(3, 1));
    EXPECT_EQ(told, "leave click ");
}

TEST_F(GridTests, TheEdgeOfAHeadingIsDragged)
{
    const RECT before = view.place(0, 1);
    drag(before.right + 1, before.right + 20);
    const RECT after = view.place(0, 1);
    EXPECT_NEAR(after.right, before.right + 20, 1);
    EXPECT_EQ(view.place(0, 2).left, after.right);
    EXPECT_EQ(told, "leave "); // the cells move: who edits one is told
    EXPECT_EQ(current(), std::pair(1, 1));
    drag(after.right, 10000);
    RECT client{};
    GetClientRect(grid().window(), &client);
    EXPECT_LT(view.place(0, 1).right, client.right - 5);
    EXPECT_EQ(view.place(0, 2).right, client.right);
}

TEST_F(GridTests, AnEdgeIsLetGoOfWithTheMouse)
{
    const RECT before = view.place(0, 1);
    SendMessageW(grid().window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(before.right, 3));
    ReleaseCapture(); // as when a message box of the host's comes
    SendMessageW(grid().window(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(before.right + 20, 3));
    EXPECT_EQ(view.place(0, 1).right, before.right);
}

TEST_F(GridTests, TheWheelScrollsAlsoByPartsOfANotch)
{
    UINT lines = 0;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const auto turn = [&](int delta) {
        SendMessageW(grid().window(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    };
    const RECT heading = view.place(0, 1);
    turn(-60);
    turn(-60);
    EXPECT_EQ(position(), static_cast<int>(lines) * heightOf(1));
    EXPECT_EQ(view.place(0, 1).top, heading.top); // headings stay
    EXPECT_EQ(current(), std::pair(1, 1));
    turn(120);
    EXPECT_EQ(position(), 0);
    EXPECT_EQ(told, "leave leave leave ");
}

TEST_F(GridTests, TheScrollBarScrolls)
{
    scrollBar(SB_LINEDOWN);
    EXPECT_EQ(position(), heightOf(1));
    scrollBar(SB_BOTTOM);
    const int bottom = position();
    RECT client{};
    GetClientRect(grid().window(), &client);
    EXPECT_EQ(view.place(8, 1).bottom, client.bottom);
    scrollBar(SB_PAGEDOWN);
    EXPECT_EQ(position(), bottom);
    scrollBar(SB_PAGEUP);
    EXPECT_LT(position(), bottom);
    scrollBar(SB_TOP);
    EXPECT_EQ(position(), 0);
    scrollBar(SB_ENDSCROLL);
    EXPECT_EQ(position(), 0);
}

TEST_F(GridTests, ScrollingDrawsWhatComesIntoSight)
{
    grid().showNow();
    scrollBar(SB_LINEDOWN);
    EXPECT_THAT(drawn(),
                Each(testing::Field(&std::pair<int, int>::first, testing::AnyOf(0, testing::Ge(4)))));
}

TEST_F(GridTests, FewerRowsScrollBack)
{
    scrollBar(SB_BOTTOM);
    grid().setCurrent({8, 2});
    grid().setRows(3);
    EXPECT_EQ(current(), std::pair(2, 2));
    EXPECT_EQ(grid().settledLayout().position(), 0);
    EXPECT_EQ(view.rows(), 3);
}

TEST_F(GridTests, AsManyRowsAsBeforeAreNothingNew)
{
    grid().setRows(3);
    grid().showNow();
    grid().setRows(3);
    EXPECT_FALSE(GetUpdateRect(grid().window(), nullptr, FALSE));
}

TEST_F(GridTests, TheCurrentCellIsInTheSystemsColours)
{
    EXPECT_GT(pixelsOf(1, 1, GetSysColor(COLOR_HIGHLIGHT)), 100);
    EXPECT_EQ(pixelsOf(2, 1, GetSysColor(COLOR_HIGHLIGHT)), 0);
    EXPECT_GT(pixelsOf(2, 1, GetSysColor(COLOR_WINDOW)), 100);
    EXPECT_GT(pixelsOf(0, 1, GetSysColor(COLOR_BTNFACE)), 100);
    layout().txtAfter.setFocus();
    EXPECT_EQ(pixelsOf(1, 1, GetSysColor(COLOR_HIGHLIGHT)), 0);
    EXPECT_GT(pixelsOf(1, 1, GetSysColor(COLOR_BTNFACE)), 100);
    // Its edge tells it from the others where the face is like the window.
    EXPECT_GT(pixelsOf(1, 1, GetSysColor(COLOR_BTNSHADOW)), pixelsOf(3, 1, GetSysColor(COLOR_BTNSHADOW)));
}

TEST_F(GridTests, ThePlaceOfACellIsWhereItIsSeen)
{
    const Place place = grid().cellPlace({3, 2});
    RECT seen = view.cell(3, 2).place();
    MapWindowPoints(nullptr, dialog->window(), reinterpret_cast<POINT*>(&seen), 2);
    const int dpi = windowDpi(grid().window());
    EXPECT_EQ(toPixels(place.left, dpi), seen.left);
    EXPECT_EQ(toPixels(place.top, dpi), seen.top);
    EXPECT_EQ(toPixels(place.left + place.width, dpi), seen.right);
    EXPECT_EQ(toPixels(place.bottom(), dpi), seen.bottom);
}

TEST_F(GridTests, AScreenReaderWalksTheTable)
{
    const Element table = Element::ofWindow(grid().window());
    EXPECT_EQ(table.name(), L"Things");
    EXPECT_EQ(table.role(), ROLE_SYSTEM_TABLE);
    const auto rows = table.children();
    ASSERT_EQ(rows.size(), 9U);
    for (std::size_t row = 0; row < rows.size(); ++row)
    {
        EXPECT_EQ(rows[row].role(), ROLE_SYSTEM_ROW);
        const auto cells = rows[row].children();
        ASSERT_EQ(cells.size(), 3U);
        for (std::size_t column = 0; column < cells.size(); ++column)
        {
            const Element& cell = cells[column];
            EXPECT_EQ(cell.role(), row == 0      ? ROLE_SYSTEM_COLUMNHEADER
                                   : column == 0 ? ROLE_SYSTEM_ROWHEADER
                                                 : ROLE_SYSTEM_CELL);
            EXPECT_EQ(cell.value(), layout().texts[row][column]);
            const bool isCurrent = row == 1 && column == 1;
            EXPECT_EQ((cell.state() & STATE_SYSTEM_FOCUSED) != 0, isCurrent);
        }
    }
    EXPECT_EQ(rows[2].name(), L"birch");
    EXPECT_EQ(view.cell(0, 2).name(), L"Value");
    EXPECT_EQ(view.cell(3, 2).name(), L"Value"); // a cell is called by its heading
    EXPECT_EQ(view.cell(3, 0).name(), L"3");
    EXPECT_NE(rows[8].state() & STATE_SYSTEM_OFFSCREEN, 0);
    EXPECT_EQ(rows[1].state() & STATE_SYSTEM_OFFSCREEN, 0);
}

TEST_F(GridTests, AnElementKnowsItsParentAndItsNeighbours)
{
    const auto parentOf = [](const ComPtr<IAccessible>& of) {
        return fetch(of, &IAccessible::get_accParent).as<IAccessible>();
    };
    const auto cell = view.cell(3, 2).object;
    const Element row{parentOf(cell)};
    EXPECT_EQ(row.name(), L"cedar");
    const Element table{parentOf(row.object)};
    EXPECT_EQ(table.role(), ROLE_SYSTEM_TABLE);
    HWND window = nullptr;
    WindowFromAccessibleObject(parentOf(table.object).get(), &window);
    EXPECT_EQ(window, grid().window());
    const auto to = [&](const ComPtr<IAccessible>& from, long direction) -> std::wstring {
        const Variant found = fetch(from, &IAccessible::accNavigate, direction, Variant(0L).get());
        if (found.isEmpty())
            return L"-";
        const Element element{toObject(found.get()).as<IAccessible>()};
        return element.role() == ROLE_SYSTEM_ROW ? element.name() : element.value();
    };
    EXPECT_EQ(to(cell, NAVDIR_UP), L"two\r\nlines");
    EXPECT_EQ(to(cell, NAVDIR_DOWN), L"four");
    EXPECT_EQ(to(cell, NAVDIR_LEFT), L"cedar");
    EXPECT_EQ(to(cell, NAVDIR_NEXT), L"-");
    EXPECT_EQ(to(row.object, NAVDIR_NEXT), L"elm");
    EXPECT_EQ(to(row.object, NAVDIR_LASTCHILD), L"three");
    EXPECT_EQ(to(table.object, NAVDIR_FIRSTCHILD), L"Name");
    EXPECT_EQ(to(view.row(0).object, NAVDIR_PREVIOUS), L"-");
}

TEST_F(GridTests, TheElementAtAPointIsTheOneThatIsSeenThere)
{
    const RECT place = view.cell(4, 1).place();
    const Element table = Element::ofWindow(grid().window());
    const auto hit = [&](const ComPtr<IAccessible>& in) {
        return fetch(in, &IAccessible::accHitTest, place.left + 3, place.top + 3);
    };
    const Element row{toObject(hit(table.object).get()).as<IAccessible>()};
    EXPECT_EQ(row.name(), L"elm");
    const Element cell{toObject(hit(row.object).get()).as<IAccessible>()};
    EXPECT_EQ(cell.value(), L"elm");
    EXPECT_EQ(toLong(hit(cell.object).get()), CHILDID_SELF);
    EXPECT_TRUE(hit(view.cell(5, 1).object).isEmpty());
}

TEST_F(GridTests, AScreenReaderMovesTheCurrentCellAndClicks)
{
    layout().txtAfter.setFocus();
    const auto self = Variant(0L);
    call(view.cell(4, 2).object, &IAccessible::accSelect,
         static_cast<long>(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION), self.get());
    EXPECT_EQ(current(), std::pair(4, 2));
    EXPECT_EQ(GetFocus(), grid().window());
    call(view.cell(5, 1).object, &IAccessible::accDoDefaultAction, self.get());
    EXPECT_EQ(current(), std::pair(5, 1));
    EXPECT_EQ(told, "leave leave click ");
    EXPECT_TRUE(FAILED(view.cell(0, 1).object->accSelect(SELFLAG_TAKEFOCUS, self.get())));
    EXPECT_TRUE(FAILED(view.cell(4, 1).object->accSelect(SELFLAG_ADDSELECTION, self.get())));
    EXPECT_EQ(current(), std::pair(5, 1));
}

TEST_F(GridTests, RubbishFromAScreenReaderIsRefused)
{
    const auto table = Element::ofWindow(grid().window()).object;
    for (const long child : {10L, 4711L, -28L, -100000L, LONG_MIN, LONG_MAX})
    {
        VARIANT role{};
        EXPECT_TRUE(FAILED(table->get_accRole(Variant(child).get(), &role))) << child;
        EXPECT_EQ(role.vt, VT_EMPTY);
    }
    EXPECT_TRUE(FAILED(table->get_accName(Variant().get(), Bstr().put())));
    EXPECT_EQ(table->get_accRole(Variant(0L).get(), nullptr), E_POINTER);
}

namespace
{

/// What a screen reader hears of a window, while this lives: the event, and the text of what it is about.
class Hearing
{
public:
    Hearing(HWND window, DWORD first, DWORD last)
    {
        heardOf = window;
        heard.clear();
        hook_ = SetWinEventHook(first, last, nullptr, &hear, GetCurrentProcessId(), GetCurrentThreadId(),
                                WINEVENT_OUTOFCONTEXT);
    }
    Hearing(const Hearing&) = delete;
    Hearing& operator=(const Hearing&) = delete;
    ~Hearing() { UnhookWinEvent(hook_); }

    static inline std::vector<std::pair<DWORD, std::wstring>> heard;

private:
    static void CALLBACK hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child, DWORD, DWORD)
    {
        ComPtr<IAccessible> at;
        Variant self;
        if (window == heardOf &&
            SUCCEEDED(AccessibleObjectFromEvent(window, static_cast<DWORD>(object), static_cast<DWORD>(child),
                                                at.put(), self.put())))
            heard.emplace_back(event, fetchIfAny(at, &IAccessible::get_accValue, self.get()).view());
    }

    static inline HWND heardOf;
    HWINEVENTHOOK hook_;
};

} // namespace

TEST_F(GridTests, AScreenReaderHearsOfTheCellThatGetsTheFocus)
{
    const Hearing hearing(grid().window(), EVENT_OBJECT_FOCUS, EVENT_OBJECT_FOCUS);
    container.press(VK_RIGHT);
    container.press(VK_DOWN);
    container.pump();
    EXPECT_THAT(Hearing::heard,
                ElementsAre(Pair(EVENT_OBJECT_FOCUS, L"one"), Pair(EVENT_OBJECT_FOCUS, L"two\r\nlines")));
}

TEST_F(GridTests, AScreenReaderHearsOfARowThatIsMovedWhileAnotherControlHasTheFocus)
{
    layout().txtAfter.setFocus();
    container.pump();
    const Hearing hearing(grid().window(), EVENT_OBJECT_REORDER, EVENT_OBJECT_SELECTION);
    std::swap(layout().texts[1], layout().texts[2]);
    grid().rowsChanged(1, 2);
    grid().setCurrent({2, 1});
    container.pump();
    EXPECT_THAT(Hearing::heard,
                ElementsAre(Pair(EVENT_OBJECT_REORDER, L""), Pair(EVENT_OBJECT_SELECTION, L"ash")));
}

TEST_F(GridTests, WhoOutlivesTheGridIsToldThatItIsGone)
{
    const Element cell = view.cell(3, 1);
    const Element table = Element::ofWindow(grid().window());
    container.close();
    VARIANT role{};
    EXPECT_TRUE(FAILED(cell.object->get_accRole(Variant(0L).get(), &role)));
    EXPECT_TRUE(FAILED(table.object->get_accRole(Variant(0L).get(), &role)));
    long count = -1;
    EXPECT_TRUE(FAILED(table.object->get_accChildCount(&count)));
    EXPECT_EQ(count, 0);
}

TEST_F(GridTests, WhoOutlivesARowIsToldThatItIsGone)
{
    const Element cell = view.cell(8, 1);
    grid().setRows(8);
    VARIANT role{};
    EXPECT_EQ(cell.object->get_accRole(Variant(0L).get(), &role), CO_E_OBJNOTCONNECTED);
    grid().setRows(9);
    EXPECT_EQ(cell.role(), ROLE_SYSTEM_CELL);
}

TEST_F(GridTests, AHandlerMayEndTheDialog)
{
    grid().onClick = [this] {
        container.close();
        dialog.reset();
    };
    const HWND window = grid().window();
    view.click(3, 1);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(GridTests, WhatAScreenReaderDoesMayEndTheDialogToo)
{
    const Element cell = view.cell(3, 2);
    layout().txtAfter.onLostFocus = [this] {
        container.close();
        dialog.reset();
    };
    layout().txtAfter.setFocus();
    cell.object->accDoDefaultAction(Variant(0L).get());
    EXPECT_FALSE(dialog);
    EXPECT_TRUE(FAILED(cell.object->accSelect(SELFLAG_TAKEFOCUS, Variant(0L).get())));
}

TEST_F(GridTests, AHandlerThatFailsIsToldOf)
{
    grid().onLeaveCell = [] { throw Failure(E_FAIL); };
    container.press(VK_DOWN);
    EXPECT_EQ(container.errors.size(), 1U);
}

TEST_F(GridTests, ADisabledGridTakesNoInputAndSaysSo)
{
    grid().setEnabled(false);
    EXPECT_NE(Element::ofWindow(grid().window()).state() & STATE_SYSTEM_UNAVAILABLE, 0);
    EXPECT_GT(pixelsOf(1, 1, GetSysColor(COLOR_GRAYTEXT)), 0);
}

TEST_F(GridTests, WhereTheUserCouldDoNothingAScreenReaderCannotEither)
{
    const auto cell = view.cell(3, 2).object;
    const auto self = Variant(0L);
    layout().txtAfter.setFocus();
    const std::pair<std::function<void()>, std::function<void()>> ways[] = {
        {[&] { grid().setEnabled(false); }, [&] { grid().setEnabled(true); }},
        {[&] { grid().setVisible(false); }, [&] { grid().setVisible(true); }},
        {[&] { EnableWindow(container.window(), FALSE); }, [&] { EnableWindow(container.window(), TRUE); }}};
    for (const auto& [close, open] : ways)
    {
        close();
        EXPECT_EQ(cell->accDoDefaultAction(self.get()), E_ACCESSDENIED);
        EXPECT_EQ(cell->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, self.get()), E_ACCESSDENIED);
        EXPECT_EQ(current(), std::pair(1, 1));
        EXPECT_NE(GetFocus(), grid().window());
        open();
    }
    EXPECT_EQ(told, "");
    EXPECT_EQ(cell->accDoDefaultAction(self.get()), S_OK);
    EXPECT_EQ(current(), std::pair(3, 2));
}

TEST_F(GridTests, FromRightToLeftTheArrowKeysLeadWhereTheyPoint)
{
    const HWND window = grid().window();
    SetWindowLongW(window, GWL_EXSTYLE, GetWindowLongW(window, GWL_EXSTYLE) | WS_EX_LAYOUTRTL);
    container.press(VK_LEFT);
    EXPECT_EQ(current(), std::pair(1, 2));
    container.press(VK_RIGHT);
    EXPECT_EQ(current(), std::pair(1, 1));
    // The first column is at the right, as are its cells for who asks where they are.
    EXPECT_GT(view.cell(1, 1).place().left, view.cell(1, 2).place().left);
}

} // namespace korvane::test
