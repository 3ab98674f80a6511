#include "tests/demo/host/ScheduleWindowTest.h"

namespace korvane::host
{

namespace
{

class ScheduleWindowScrolling : public ScheduleWindowTest
{
protected:
    /// The slot of the cursor is neither behind the names nor outside of the window.
    void expectInSight() const
    {
        const RECT slot = window->layout().placeOf(*window->selectedSlot());
        RECT area{};
        GetClientRect(window->handle(), &area);
        EXPECT_TRUE(window->layout().at({slot.left, slot.top})) << "names and header are in front of it";
        EXPECT_LE(slot.right, area.right);
        EXPECT_LE(slot.bottom, area.bottom);
    }

    /// Where the menu comes that is asked for at a point of the window.
    std::optional<ScheduleWindow::MenuPlace> menuAt(POINT point) const
    {
        ClientToScreen(window->handle(), &point);
        auto place = window->menuPlace(point);
        if (place)
            ScreenToClient(window->handle(), &place->point);
        return place;
    }
};

TEST_F(ScheduleWindowTest, HasARowForEachMemberOfTheGroup)
{
    ASSERT_EQ(window->content().rows().size(), 6U);
    EXPECT_EQ(window->content().rows()[1].resource.name, L"Ben Carter");
    window->showGroup(0);
    work();
    EXPECT_EQ(window->content().rows().size(), 12U) << "each resource of all groups once";
}

TEST_F(ScheduleWindowScrolling, FollowsTheKeys)
{
    const OleDate before = window->layout().timeAt(200);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(0, 9));
    for (int day = 0; day < 3; ++day)
        key(VK_NEXT);
    EXPECT_EQ(window->selectedSlot()->start, test::at(9, 3));
    EXPECT_GT(window->layout().timeAt(200).days, before.days);
    expectInSight();
    for (int day = 0; day < 7; ++day)
        key(VK_PRIOR);
    EXPECT_EQ(window->selectedSlot()->start, test::at(9, -4));
    expectInSight();
}

TEST_F(ScheduleWindowScrolling, HasAMenuWhereSomethingCanBeSelected)
{
    book(1, 9, 10);
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(1, 9));
    send(WM_LBUTTONUP, 0, pointAt(1, 9));
    RECT area{};
    GetClientRect(window->handle(), &area);
    const int names = window->layout().pixelOf(at(7));
    const int firstRow = window->layout().rowTop(0);
    const int belowRows = firstRow + window->layout().heightOfRows();

    EXPECT_FALSE(menuAt({names - 20, firstRow - 5})) << "above the names";
    EXPECT_FALSE(menuAt({names + 20, firstRow - 5})) << "the header";
    EXPECT_FALSE(menuAt({names - 20, belowRows + 5})) << "below the last name";
    EXPECT_FALSE(menuAt({names + 20, belowRows + 5})) << "below the last row";
    EXPECT_FALSE(menuAt({area.right + 5, firstRow + 5})) << "the scroll bar";
    EXPECT_NE(window->selectedBar(), nullptr);

    const auto place = menuAt({names + 20, firstRow + 5});
    ASSERT_TRUE(place);
    EXPECT_EQ(place->point.x, names + 20);
    EXPECT_EQ(place->point.y, firstRow + 5);
    EXPECT_FALSE(place->isOfResource);
    EXPECT_EQ(window->selectedBar(), nullptr)
        << "wherever the button was pressed, the menu is for this place";
    EXPECT_EQ(window->selectedSlot()->row, 0U);
}

TEST_F(ScheduleWindowScrolling, HasAMenuForTheResourceAmongTheNames)
{
    const int names = window->layout().pixelOf(at(7));
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(2, 11));
    const auto place = menuAt({names - 20, window->layout().rowTop(1) + 5});
    ASSERT_TRUE(place);
    EXPECT_TRUE(place->isOfResource);
    EXPECT_EQ(window->selectedSlot()->row, 1U);
    EXPECT_EQ(window->selectedSlot()->start, at(11)) << "another resource, at the same time";
}

TEST_F(ScheduleWindowScrolling, SelectsAResourceByItsName)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON,
         MAKELPARAM(window->layout().pixelOf(at(7)) - 20, window->layout().rowTop(3) + 5));
    EXPECT_EQ(window->selectedSlot()->row, 3U);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ScheduleWindowScrolling, ShowsWhatTheMenuOfTheKeyboardIsFor)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON, pointAt(2, 11));
    for (const long day : {-5, 5})
    {
        window->scrollTo(test::at(7, day));
        auto place = window->menuPlace({-1, -1});
        expectInSight();
        ASSERT_TRUE(place);
        EXPECT_FALSE(place->isOfResource);
        ScreenToClient(window->handle(), &place->point);
        const RECT slot = window->layout().placeOf(*window->selectedSlot());
        EXPECT_EQ(place->point.x, slot.left);
        EXPECT_EQ(place->point.y, slot.bottom);
    }
}

TEST_F(ScheduleWindowScrolling, KeepsShortBarsApartHoweverFarAway)
{
    window->scrollTo(at(0));
    work();
    for (const double hour : {9, 10, 11, 12})
        book(1, hour, hour + 1);
    for (int zooms = 0; zooms < 5; ++zooms)
    {
        const auto& bars = window->content().bars();
        ASSERT_EQ(bars.size(), 4U);
        for (std::size_t bar = 1; bar < bars.size(); ++bar)
            for (std::size_t before = 0; before < bar; ++before)
            {
                const RECT one = window->layout().placeOf(bars[before]);
                const RECT other = window->layout().placeOf(bars[bar]);
                RECT both{};
                EXPECT_FALSE(IntersectRect(&both, &one, &other)) << "at level " << zooms;
            }
        window->zoom(zooms == 0 ? -9 : 1);
    }
    EXPECT_EQ(window->content().rows()[1].lanes, 1);
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
