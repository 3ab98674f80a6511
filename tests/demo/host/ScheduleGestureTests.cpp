#include "tests/demo/host/ScheduleWindowTest.h"

namespace korvane::host
{

namespace
{

class ScheduleGestures : public ScheduleWindowTest
{
protected:
    /// A key of this thread's keyboard, held down or not.
    static void hold(BYTE key, bool isDown)
    {
        BYTE keys[256]{};
        GetKeyboardState(keys);
        keys[key] = isDown ? 0x80 : 0;
        SetKeyboardState(keys);
    }

    void turn(int delta, WORD keys) const
    {
        POINT point{500, 100};
        ClientToScreen(window->handle(), &point);
        send(WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), MAKELPARAM(point.x, point.y));
    }

    /// What the window's timers do, until something is the case.
    static bool waitUntil(const std::function<bool()>& isTheCase)
    {
        const ULONGLONG end = GetTickCount64() + 20'000; // more than enough
        while (!isTheCase() && GetTickCount64() < end)
        {
            MSG message;
            if (PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE))
                DispatchMessageW(&message);
            else
                Sleep(1);
        }
        return isTheCase();
    }

    long shownSlot() const
    {
        return minutesBetween(window->selectedSlot()->start, window->selectedSlot()->end);
    }
};

TEST_F(ScheduleGestures, OpensTheSlotOfADoubleClick)
{
    send(WM_LBUTTONDBLCLK, MK_LBUTTON, pointAt(2, 11));
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(window->selectedBar(), nullptr);
    ASSERT_TRUE(window->selectedSlot());
    EXPECT_EQ(window->selectedSlot()->row, 2U);
    EXPECT_EQ(window->selectedSlot()->start, at(11));
    EXPECT_EQ(window->selectedSlot()->end, at(12));
    send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(opened, 1) << "there is nothing in the header";
}

TEST_F(ScheduleGestures, OpensTheBarOfADoubleClick)
{
    const long event = book(1, 9, 10);
    send(WM_LBUTTONDBLCLK, MK_LBUTTON, pointAt(1, 9));
    EXPECT_EQ(opened, 1);
    ASSERT_NE(window->selectedBar(), nullptr);
    EXPECT_EQ(window->selectedBar()->id.event, event);
}

TEST_F(ScheduleGestures, SelectsWithTheRightButtonAndMovesNothing)
{
    const long event = book(1, 9, 10);
    send(WM_RBUTTONDOWN, MK_RBUTTON, pointAt(1, 9));
    ASSERT_NE(window->selectedBar(), nullptr);
    EXPECT_EQ(window->selectedBar()->id.event, event);
    send(WM_MOUSEMOVE, MK_RBUTTON, pointAt(3, 12));
    EXPECT_FALSE(window->isMoving());
}

TEST_F(ScheduleGestures, DropsABarWhereItIsDraggedTo)
{
    const long event = book(1, 9, 10);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 9));
    send(WM_MOUSEMOVE, MK_LBUTTON, pointAt(3, 12));
    EXPECT_TRUE(window->isMoving());
    send(WM_LBUTTONUP, 0, pointAt(3, 12));
    EXPECT_FALSE(window->isMoving());
    ASSERT_EQ(dropped.size(), 1U);
    EXPECT_EQ(dropped[0].bar.id.event, event);
    EXPECT_EQ(dropped[0].landing.row, 3U);
    EXPECT_EQ(dropped[0].landing.start, at(12));
    EXPECT_EQ(dropped[0].landing.end, at(13));
    EXPECT_FALSE(dropped[0].copies);
}

TEST_F(ScheduleGestures, DropsNothingAfterEscOrWithoutAMove)
{
    book(1, 9, 10);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 9));
    send(WM_MOUSEMOVE, MK_LBUTTON, pointAt(3, 12));
    key(VK_ESCAPE);
    EXPECT_FALSE(window->isMoving());
    send(WM_LBUTTONUP, 0, pointAt(3, 12));
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 9));
    send(WM_LBUTTONUP, 0, pointAt(1, 9));
    EXPECT_TRUE(dropped.empty());
}

TEST_F(ScheduleGestures, MovesAndCopiesByKeyboard)
{
    book(1, 9, 10);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 9));
    send(WM_LBUTTONUP, 0, pointAt(1, 9));
    window->beginMove(false);
    key(VK_RIGHT);
    key(VK_RIGHT);
    key(VK_DOWN);
    key(VK_RETURN);
    window->beginMove(true);
    key(VK_RETURN);
    window->beginMove(false);
    key(VK_RETURN);
    ASSERT_EQ(dropped.size(), 2U) << "a move to where it is is none";
    EXPECT_EQ(dropped[0].landing.row, 2U);
    EXPECT_EQ(dropped[0].landing.start, at(11));
    EXPECT_FALSE(dropped[0].copies);
    EXPECT_EQ(dropped[1].landing.start, at(9));
    EXPECT_TRUE(dropped[1].copies);
}

TEST_F(ScheduleGestures, EndsAMoveWhenTheKeyboardGoesElsewhere)
{
    book(1, 9, 10);
    key(VK_TAB);
    ASSERT_NE(window->selectedBar(), nullptr);
    window->beginMove(false);
    EXPECT_TRUE(window->isMoving());
    send(WM_KILLFOCUS, 0);
    EXPECT_FALSE(window->isMoving());
}

TEST_F(ScheduleGestures, CopiesABarThatIsDroppedWithCtrl)
{
    book(1, 9, 10);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 9));
    send(WM_MOUSEMOVE, MK_LBUTTON, pointAt(3, 12));
    hold(VK_CONTROL, true);
    send(WM_LBUTTONUP, MK_CONTROL, pointAt(3, 12));
    hold(VK_CONTROL, false);
    ASSERT_EQ(dropped.size(), 1U);
    EXPECT_TRUE(dropped[0].copies);
    EXPECT_EQ(dropped[0].landing.row, 3U);
    EXPECT_EQ(dropped[0].landing.start, at(12));
}

TEST_F(ScheduleGestures, ScrollAsLongAsABarIsHeldBelowTheRows)
{
    window->showGroup(0);
    work();
    window->place({0, 0, 900, 200});
    RECT area{};
    GetClientRect(window->handle(), &area);
    book(1, 9, 10);
    const LPARAM taken = pointAt(1, 9);
    const auto bottomOfLast = [&] { return window->layout().rowTop(0) + window->layout().heightOfRows(); };
    ASSERT_GT(bottomOfLast(), area.bottom);
    send(WM_LBUTTONDOWN, MK_LBUTTON, taken);
    send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(LOWORD(taken), area.bottom + 50));
    EXPECT_TRUE(waitUntil([&] { return bottomOfLast() <= area.bottom; })) << "without a further move";
    send(WM_LBUTTONUP, 0, MAKELPARAM(LOWORD(taken), area.bottom + 50));
    ASSERT_EQ(dropped.size(), 1U);
    EXPECT_EQ(dropped[0].landing.row, window->content().rows().size() - 1);
}

TEST_F(ScheduleGestures, ScrollAsLongAsABarIsHeldBesideTheTime)
{
    book(1, 9, 10);
    RECT area{};
    GetClientRect(window->handle(), &area);
    const LPARAM taken = pointAt(1, 9);
    const OleDate before = window->layout().timeAt(500);
    const auto moved = [&] { return minutesBetween(before, window->layout().timeAt(500)); };
    send(WM_LBUTTONDOWN, MK_LBUTTON, taken);
    send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(area.right + 30, HIWORD(taken)));
    EXPECT_TRUE(waitUntil([&] { return moved() >= 180; }));
    send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, HIWORD(taken)));
    EXPECT_TRUE(waitUntil([&] { return moved() <= -180; }));
    send(WM_LBUTTONUP, 0, MAKELPARAM(5, HIWORD(taken)));
    ASSERT_EQ(dropped.size(), 1U);
    EXPECT_LT(dropped[0].landing.start.days, at(9).days);
    EXPECT_GE(window->layout().pixelOf(dropped[0].landing.end), 0) << "where it is seen";
}

TEST_F(ScheduleGestures, DropsNowhereThatIsNotSeen)
{
    window->showGroup(0);
    work();
    window->place({0, 0, 900, 200});
    book(1, 9, 10);
    RECT area{};
    GetClientRect(window->handle(), &area);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 9));
    send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(LOWORD(pointAt(1, 12)), area.bottom + 500));
    send(WM_LBUTTONUP, 0, MAKELPARAM(LOWORD(pointAt(1, 12)), area.bottom + 500));
    ASSERT_EQ(dropped.size(), 1U);
    EXPECT_LT(window->layout().rowTop(dropped[0].landing.row), area.bottom);
    EXPECT_GT(dropped[0].landing.row, 1U);
}

TEST_F(ScheduleGestures, ShowByThePointerWhetherABarIsMovedOrCopied)
{
    const HCURSOR move = LoadCursorW(nullptr, IDC_HAND);
    const HCURSOR copy = LoadCursorW(nullptr, IDC_CROSS);
    window->useCursors({move, copy});
    book(1, 9, 10);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 9));
    send(WM_MOUSEMOVE, MK_LBUTTON, pointAt(3, 12));
    EXPECT_EQ(GetCursor(), move);
    hold(VK_CONTROL, true);
    send(WM_KEYDOWN, VK_CONTROL);
    EXPECT_EQ(GetCursor(), copy);
    hold(VK_CONTROL, false);
    send(WM_KEYUP, VK_CONTROL);
    EXPECT_EQ(GetCursor(), move);
    send(WM_LBUTTONUP, 0, pointAt(3, 12));
}

TEST_F(ScheduleGestures, EndAMoveWhoseRowIsGone)
{
    window->showGroup(0);
    work();
    const std::size_t last = window->content().rows().size() - 1;
    book(last, 9, 10);
    key(VK_TAB);
    ASSERT_NE(window->selectedBar(), nullptr);
    window->beginMove(false);
    window->showGroup(staff);
    work();
    EXPECT_FALSE(window->isMoving());
}

TEST_F(ScheduleGestures, ZoomWithTheWheelAtThePointer)
{
    const OleDate before = window->layout().timeAt(500);
    turn(WHEEL_DELTA, MK_CONTROL);
    EXPECT_EQ(shownSlot(), 30);
    EXPECT_LE(std::abs(minutesBetween(before, window->layout().timeAt(500))), 1);
}

TEST_F(ScheduleGestures, AddUpTheSmallStepsOfATouchpad)
{
    for (int part = 0; part < 3; ++part)
        turn(WHEEL_DELTA / 4, MK_CONTROL);
    EXPECT_EQ(shownSlot(), 60);
    turn(WHEEL_DELTA / 4, MK_CONTROL);
    EXPECT_EQ(shownSlot(), 30);

    const OleDate before = window->layout().timeAt(500);
    for (int part = 0; part < 4; ++part)
        turn(-WHEEL_DELTA / 4, MK_SHIFT);
    EXPECT_EQ(minutesBetween(before, window->layout().timeAt(500)), 3 * 30);
}

TEST_F(ScheduleGestures, ScrollAsManyRowsAsTheUserHasChosen)
{
    UINT chosen = 0;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &chosen, 0);
    window->showGroup(0);
    work();
    window->place({0, 0, 900, 200});
    const auto top = [&] { return window->layout().rowTop(0); };
    const int before = top();
    const auto scrolled = [&](UINT lines) {
        SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, lines, nullptr, 0);
        turn(-WHEEL_DELTA, 0);
        const int by = before - top();
        turn(WHEEL_DELTA, 0);
        EXPECT_EQ(top(), before);
        return by;
    };
    const int one = scrolled(1);
    EXPECT_GT(one, 0);
    EXPECT_EQ(scrolled(4), 4 * one);
    EXPECT_GT(scrolled(WHEEL_PAGESCROLL), 4 * one) << "a page";
    SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, chosen, nullptr, 0);
}

} // namespace

} // namespace korvane::host
