#include "demo/host/schedule/ActivityMove.h"
#include "demo/host/schedule/ScheduleCursor.h"
#include "tests/demo/host/TestSchedule.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

using test::at;
using test::booked;
using test::scheduleOf;

class ScheduleLayoutTest : public testing::TestWithParam<int>
{
protected:
    Schedule schedule = scheduleOf({booked(1, 10, 9, 12), booked(2, 10, 10, 11), booked(3, 20, 9, 10)});
    TimeScale scale{GetParam(), at(7)};
    ScheduleMetrics metrics = ScheduleMetrics::forDpi(GetParam(), MulDiv(13, GetParam(), 96));

    ScheduleLayout layout(int scrolled = 0) const { return {schedule, scale, metrics, scrolled}; }
    static POINT middle(const RECT& place)
    {
        return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    }
};

TEST_P(ScheduleLayoutTest, FindsEachBarWhereItPlacesIt)
{
    for (const int scrolled : {0, 7})
        for (const Bar& bar : schedule.bars())
        {
            const auto hit = layout(scrolled).at(middle(layout(scrolled).placeOf(bar)));
            ASSERT_TRUE(hit && hit->row);
            EXPECT_EQ(hit->bar, &bar);
            EXPECT_EQ(*hit->row, bar.row);
        }
}

TEST_P(ScheduleLayoutTest, FindsEmptySlots)
{
    const Slot slot{2, at(13), at(14)};
    const auto hit = layout().at(middle(layout().placeOf(slot)));
    ASSERT_TRUE(hit && hit->row);
    EXPECT_EQ(*hit->row, 2U);
    EXPECT_EQ(hit->bar, nullptr);
    EXPECT_EQ(scale.slotOf(hit->time), at(13));
}

TEST_P(ScheduleLayoutTest, FindsNothingInHeaderAndNamesAndNoRowBelow)
{
    EXPECT_FALSE(layout().at({metrics.nameWidth - 1, metrics.headerHeight() + 5}));
    EXPECT_FALSE(layout().at({metrics.nameWidth + 5, metrics.headerHeight() - 1}));
    const auto below = layout().at({metrics.nameWidth + 5, layout().rowTop(3)});
    ASSERT_TRUE(below);
    EXPECT_FALSE(below->row);
    EXPECT_EQ(layout().rowNear(layout().rowTop(3) + 100), 2U);
    EXPECT_EQ(layout().rowNear(-100), 0U);
}

TEST_P(ScheduleLayoutTest, StacksLanesWithoutOverlap)
{
    const RECT first = layout().placeOf(*schedule.find({1, 0}));
    const RECT second = layout().placeOf(*schedule.find({2, 0}));
    EXPECT_LE(first.bottom, second.top);
    EXPECT_LE(second.bottom, layout().rowTop(1));
    EXPECT_EQ(layout().rowHeight(0), layout().rowHeight(1) + metrics.laneHeight);
    EXPECT_EQ(layout().heightOfRows(), layout().rowHeight(0) + 2 * layout().rowHeight(1));
}

TEST_P(ScheduleLayoutTest, MovesTheRowsUpWhenTheyAreScrolled)
{
    for (const std::size_t row : {0U, 1U, 2U})
        EXPECT_EQ(layout(7).rowTop(row), layout().rowTop(row) - 7);
    EXPECT_EQ(layout(7).heightOfRows(), layout().heightOfRows());
}

TEST_P(ScheduleLayoutTest, FindsTheRowAtEachHeight)
{
    const int top = layout(7).rowTop(0);
    for (int y = top; y < top + layout().heightOfRows(); ++y)
    {
        const auto row = layout(7).rowNear(y);
        ASSERT_TRUE(row);
        EXPECT_GE(y, layout(7).rowTop(*row));
        EXPECT_LT(y, layout(7).rowTop(*row) + layout(7).rowHeight(*row));
    }
    schedule.setResources({});
    EXPECT_FALSE(layout().rowNear(top));
    EXPECT_EQ(layout().heightOfRows(), 0);
}

TEST_P(ScheduleLayoutTest, KeepsShortBarsWideEnoughToBeHit)
{
    schedule.setOccurrences({booked(1, 10, 9, 9)});
    const RECT place = layout().placeOf(schedule.bars().front());
    EXPECT_GE(place.right - place.left, 6);
}

INSTANTIATE_TEST_SUITE_P(AtResolutions, ScheduleLayoutTest, testing::Values(96, 144, 192));

class ScheduleCursorTest : public testing::Test
{
protected:
    Schedule schedule = scheduleOf({booked(1, 10, 9, 12), booked(2, 10, 14, 15), booked(3, 30, 9, 10)});
    TimeScale scale{96, at(7)};
    ScheduleCursor cursor{schedule, scale};
};

TEST_F(ScheduleCursorTest, WalksFromSlotToSlot)
{
    cursor.putInto(0, at(7.5));
    EXPECT_EQ(cursor.slot()->start, at(7));
    EXPECT_EQ(cursor.slot()->end, at(8));
    cursor.move(1, 1);
    EXPECT_EQ(cursor.slot()->row, 1U);
    EXPECT_EQ(cursor.slot()->start, at(8));
    cursor.move(0, 9);
    EXPECT_EQ(cursor.slot()->row, 2U);
    cursor.move(-8, -9);
    EXPECT_EQ(cursor.slot()->row, 0U);
    EXPECT_EQ(cursor.slot()->start, at(0));
}

TEST_F(ScheduleCursorTest, WalksFromBarToBarAllAround)
{
    cursor.putInto(0, at(7));
    for (const long event : {1, 2, 3, 1})
    {
        EXPECT_TRUE(cursor.toBar(false));
        ASSERT_NE(cursor.bar(), nullptr);
        EXPECT_EQ(cursor.bar()->id.event, event);
    }
    for (const long event : {3, 2, 1})
    {
        EXPECT_TRUE(cursor.toBar(true));
        EXPECT_EQ(cursor.bar()->id.event, event);
    }
}

TEST_F(ScheduleCursorTest, LeavesABarForTheSlots)
{
    cursor.putOn(*schedule.find({2, 0}));
    EXPECT_EQ(cursor.slot()->start, at(14));
    cursor.move(1, 0);
    EXPECT_EQ(cursor.bar(), nullptr);
    EXPECT_EQ(cursor.slot()->start, at(15));
}

TEST_F(ScheduleCursorTest, StaysInPlaceWhenItsBarIsGone)
{
    cursor.putOn(*schedule.find({3, 0}));
    schedule.setOccurrences({});
    EXPECT_EQ(cursor.bar(), nullptr);
    EXPECT_EQ(cursor.slot()->row, 2U);
    EXPECT_EQ(cursor.slot()->start, at(9));
    EXPECT_FALSE(cursor.toBar(false));
    schedule.setResources({{10, L"Ann"}});
    EXPECT_EQ(cursor.slot()->row, 0U);
    schedule.setResources({});
    EXPECT_FALSE(cursor.slot());
}

class ActivityMoveTest : public ScheduleCursorTest
{
protected:
    ActivityMove move{*schedule.find({1, 0}), at(10.25)};
};

TEST_F(ActivityMoveTest, StaysAtFirst)
{
    EXPECT_FALSE(move.isElsewhere());
    move.follow(at(10.5), 0, scale);
    EXPECT_FALSE(move.isElsewhere()) << "less than half a slot";
}

TEST_F(ActivityMoveTest, FollowsThePointerByWholeSlotsAndRows)
{
    move.follow(at(12.5), 2, scale);
    EXPECT_TRUE(move.isElsewhere());
    EXPECT_EQ(move.landing().row, 2U);
    EXPECT_EQ(move.landing().start, at(11));
    EXPECT_EQ(move.landing().end, at(14)) << "as long as before";
    move.follow(at(10.25), 0, scale);
    EXPECT_FALSE(move.isElsewhere());
}

TEST_F(ActivityMoveTest, KeepsTheMinutesOfAnActivity)
{
    Bar odd = *schedule.find({1, 0});
    odd.start = later(odd.start, 10);
    ActivityMove oddMove(odd, odd.start);
    oddMove.follow(later(odd.start, 60), 0, scale);
    EXPECT_EQ(oddMove.landing().start, later(at(10), 10));
}

TEST_F(ActivityMoveTest, GoesByKeysWithinTheRows)
{
    move.shift(60);
    move.changeRow(1, 3);
    EXPECT_EQ(move.landing().row, 1U);
    EXPECT_EQ(move.landing().start, at(10));
    move.changeRow(5, 3);
    EXPECT_EQ(move.landing().row, 2U);
    move.changeRow(-9, 3);
    EXPECT_EQ(move.landing().row, 0U);
    move.shift(-60);
    EXPECT_FALSE(move.isElsewhere());
}

} // namespace

} // namespace korvane::host
