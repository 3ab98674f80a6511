#include "demo/host/schedule/ScheduleWindow.h"

#include "demo/datalayer/Database.h"
#include "tests/demo/host/TestSchedule.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace korvane::host
{

namespace
{

constexpr long staff = 4; // in a new database with the sample
constexpr long meeting = 1;

/// A schedule on a database with the sample, within a window that nobody sees.
class ScheduleWindowTest : public testing::Test
{
public:
    ScheduleWindowTest()
    {
        std::filesystem::remove(file);
        call(database, &IDatabase::Open, Bstr(file).get(), nullptr, root.put());
        call(database, &IDatabase::AddSample, root.get());
        call(root, &IRoot::get_Events, events.put());
        window = std::make_unique<ScheduleWindow>(parent, root);
        window->onOpen = [this] { ++opened; };
        window->onDrop = [this](const Bar& bar, const Slot& landing, bool copies) {
            dropped.push_back({bar, landing, copies});
        };
        window->place({0, 0, 900, 400});
        window->scrollTo(at(7));
        window->showGroup(staff);
        work();
    }
    ScheduleWindowTest(const ScheduleWindowTest&) = delete;
    ScheduleWindowTest& operator=(const ScheduleWindowTest&) = delete;
    ~ScheduleWindowTest() override
    {
        window.reset();
        DestroyWindow(parent);
        events.reset();
        root.reset();
        std::filesystem::remove(file);
    }

protected:
    struct Dropped
    {
        Bar bar;
        Slot landing;
        bool copies;
    };

    static OleDate at(double hour) { return test::at(hour, 0); }

    /// What is posted is done.
    static void work()
    {
        MSG message;
        for (int count = 0; PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE); ++count)
        {
            ASSERT_LT(count, 100) << "one load leads to the next without end";
            DispatchMessageW(&message);
        }
    }

    long book(std::size_t row, double from, double to) const
    {
        long event = 0;
        call(events, &IEvents::Add, window->content().rows().at(row).resource.id, meeting, at(from).days,
             at(to).days, Bstr(L"Work").get(), &event);
        work();
        return event;
    }

    std::wstring trace() const
    {
        Bstr text;
        call(database, &IDatabase::get_Trace, text.put());
        call(database, &IDatabase::ClearTrace);
        return std::wstring(text.view());
    }

    int loads() const
    {
        const std::wstring text = trace();
        int count = 0;
        for (auto found = text.find(L"Schedule.Load"); found != std::wstring::npos;
             found = text.find(L"Schedule.Load", found + 1))
            ++count;
        return count;
    }

    LPARAM pointAt(std::size_t row, double hour) const
    {
        const RECT place = window->layout().placeOf(Slot{row, at(hour), at(hour + 1)});
        return MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    }

    void send(UINT message, WPARAM first, LPARAM second = 0) const
    {
        SendMessageW(window->handle(), message, first, second);
    }
    void key(WPARAM virtualKey) const { send(WM_KEYDOWN, virtualKey); }

    std::wstring file = (std::filesystem::temp_directory_path() /
                         (L"korvane schedule " + std::to_wstring(GetCurrentProcessId()) + L".sqlite"))
                            .wstring();
    HWND parent =
        CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 900, 400, nullptr, nullptr, nullptr, nullptr);
    ComPtr<IDatabase> database{make<store::Database>().get()};
    ComPtr<IRoot> root;
    ComPtr<IEvents> events;
    std::unique_ptr<ScheduleWindow> window;
    int opened = 0;
    std::vector<Dropped> dropped;
};

TEST_F(ScheduleWindowTest, HasARowForEachMemberOfTheGroup)
{
    ASSERT_EQ(window->content().rows().size(), 6U);
    EXPECT_EQ(window->content().rows()[1].resource.name, L"Ben Carter");
    window->showGroup(0);
    work();
    EXPECT_EQ(window->content().rows().size(), 12U) << "each resource of all groups once";
}

TEST_F(ScheduleWindowTest, ShowsWhatIsBookedAsSoonAsItIs)
{
    const long event = book(1, 9, 10);
    ASSERT_EQ(window->content().bars().size(), 1U);
    const Bar& bar = window->content().bars().front();
    EXPECT_EQ(bar.id, (BarId{event, 0}));
    EXPECT_EQ(bar.row, 1U);
    EXPECT_EQ(bar.start, at(9));
    EXPECT_EQ(bar.text, L"Work");
    EXPECT_TRUE(window->content().colorOf(bar.type));
    call(events, &IEvents::Remove, event, 0L);
    work();
    EXPECT_TRUE(window->content().bars().empty());
}

TEST_F(ScheduleWindowTest, LoadsOnceForManyChanges)
{
    trace();
    for (int count = 0; count < 5; ++count)
    {
        long event = 0;
        call(events, &IEvents::Add, 3L, meeting, at(9).days, at(10).days, Bstr(L"").get(), &event);
    }
    EXPECT_EQ(loads(), 0) << "not within the calls that change";
    work();
    EXPECT_EQ(loads(), 1);
    work();
    EXPECT_EQ(loads(), 0) << "what is announced while loading is no change";
    EXPECT_EQ(window->content().bars().size(), 5U);
}

TEST_F(ScheduleWindowTest, LoadsNothingWhileADialogIsOpen)
{
    window->hold(true);
    trace();
    book(1, 9, 10);
    EXPECT_EQ(loads(), 0);
    window->hold(false);
    EXPECT_EQ(loads(), 1);
    EXPECT_EQ(window->content().bars().size(), 1U);
}

TEST_F(ScheduleWindowTest, LoadsWhatIsScrolledInto)
{
    long event = 0;
    call(events, &IEvents::Add, 3L, meeting, test::at(9, 60).days, test::at(10, 60).days, Bstr(L"").get(),
         &event);
    work();
    EXPECT_TRUE(window->content().bars().empty());
    window->scrollTo(test::at(7, 60));
    work();
    EXPECT_EQ(window->content().bars().size(), 1U);
}

TEST_F(ScheduleWindowTest, OpensTheSlotOfADoubleClick)
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

TEST_F(ScheduleWindowTest, OpensTheBarOfADoubleClick)
{
    const long event = book(1, 9, 10);
    send(WM_LBUTTONDBLCLK, MK_LBUTTON, pointAt(1, 9));
    EXPECT_EQ(opened, 1);
    ASSERT_NE(window->selectedBar(), nullptr);
    EXPECT_EQ(window->selectedBar()->id.event, event);
}

TEST_F(ScheduleWindowTest, SelectsWithTheRightButtonAndMovesNothing)
{
    const long event = book(1, 9, 10);
    send(WM_RBUTTONDOWN, MK_RBUTTON, pointAt(1, 9));
    ASSERT_NE(window->selectedBar(), nullptr);
    EXPECT_EQ(window->selectedBar()->id.event, event);
    send(WM_MOUSEMOVE, MK_RBUTTON, pointAt(3, 12));
    EXPECT_FALSE(window->isMoving());
}

TEST_F(ScheduleWindowTest, DropsABarWhereItIsDraggedTo)
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

TEST_F(ScheduleWindowTest, DropsNothingAfterEscOrWithoutAMove)
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

TEST_F(ScheduleWindowTest, MovesAndCopiesByKeyboard)
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

TEST_F(ScheduleWindowTest, EndsAMoveWhenTheKeyboardGoesElsewhere)
{
    book(1, 9, 10);
    key(VK_TAB);
    ASSERT_NE(window->selectedBar(), nullptr);
    window->beginMove(false);
    EXPECT_TRUE(window->isMoving());
    send(WM_KILLFOCUS, 0);
    EXPECT_FALSE(window->isMoving());
}

TEST_F(ScheduleWindowTest, ScrollsToWhereTheKeysGo)
{
    const OleDate before = window->layout().timeAt(200);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(0, 9));
    for (int day = 0; day < 3; ++day)
        key(VK_NEXT);
    EXPECT_EQ(window->selectedSlot()->start, test::at(9, 3));
    EXPECT_GT(window->layout().timeAt(200).days, before.days);
    const RECT slot = window->layout().placeOf(*window->selectedSlot());
    RECT area{};
    GetClientRect(window->handle(), &area);
    EXPECT_GE(slot.left, 0);
    EXPECT_LE(slot.right, area.right);
}

TEST_F(ScheduleWindowTest, ZoomsWithTheWheelAtThePointer)
{
    POINT point{500, 100};
    const OleDate before = window->layout().timeAt(500);
    ClientToScreen(window->handle(), &point);
    send(WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, WHEEL_DELTA), MAKELPARAM(point.x, point.y));
    EXPECT_EQ(minutesBetween(window->selectedSlot()->start, window->selectedSlot()->end), 30);
    EXPECT_LE(std::abs(minutesBetween(before, window->layout().timeAt(500))), 1);
}

TEST_F(ScheduleWindowTest, TellsItsNameAndWhereTheCursorIs)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 11));
    wchar_t text[200];
    GetWindowTextW(window->handle(), text, ARRAYSIZE(text));
    EXPECT_TRUE(std::wstring_view(text).starts_with(L"Schedule: Ben Carter")) << "screen readers read it";
}

TEST_F(ScheduleWindowTest, SelectsAnOccurrenceOrAnyOtherOfItsActivity)
{
    const long event = book(1, 9, 10);
    book(0, 9, 10);
    window->select({event, 7});
    ASSERT_NE(window->selectedBar(), nullptr);
    EXPECT_EQ(window->selectedBar()->id, (BarId{event, 0}));
}

} // namespace

} // namespace korvane::host
