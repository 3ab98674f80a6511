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
