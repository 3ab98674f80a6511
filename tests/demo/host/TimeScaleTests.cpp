#include "tests/demo/host/TestSchedule.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

using test::at;
using test::monday;

TEST(Moments, AddUpToTheSecond)
{
    OleDate moment = monday;
    for (int quarter = 0; quarter < 96; ++quarter)
        moment = later(moment, 15);
    EXPECT_EQ(moment, at(0, 1));
    EXPECT_EQ(minutesBetween(at(9), at(10.5)), 90);
    EXPECT_EQ(minutesBetween(at(10), at(9)), -60);
}

TEST(Moments, KnowDaysAndWeeks)
{
    EXPECT_EQ(startOfDay(at(23.75)), monday);
    EXPECT_EQ(startOfDay({monday.days - 1e-9}), monday) << "a fraction short of midnight";
    for (long day = 0; day < 7; ++day)
    {
        EXPECT_EQ(startOfWeek(at(12, day)), monday);
        EXPECT_EQ(isWeekend(at(12, day)), day >= 5);
    }
    EXPECT_EQ(startOfWeek(at(12, -1)), at(0, -7));
}

TEST(TimeScale, GoesFromTimeToPixelAndBack)
{
    const TimeScale scale(96, at(7));
    EXPECT_EQ(scale.pixelOf(at(7)), 0);
    EXPECT_GT(scale.pixelOf(at(8)), 0);
    EXPECT_LT(scale.pixelOf(at(6)), 0);
    EXPECT_EQ(minutesBetween(at(11), scale.timeAt(scale.pixelOf(at(11)))), 0);
}

TEST(TimeScale, KeepsItsProportionsAtEveryResolution)
{
    const TimeScale normal(96, at(0));
    for (const int factor : {1, 2, 3})
    {
        const TimeScale finer(96 * factor, at(0));
        EXPECT_EQ(finer.pixelOf(at(6)), factor * normal.pixelOf(at(6)));
    }
    EXPECT_EQ(TimeScale(144, at(0)).pixelOf(at(8)), normal.pixelOf(at(12)));
}

TEST(TimeScale, StaysWithinWhatWindowsCount)
{
    const TimeScale scale(192, at(0));
    EXPECT_LT(scale.pixelOf({monday.days + 1e6}), 0x7FFF);
    EXPECT_GT(scale.pixelOf({-1e6}), -0x7FFF);
}

TEST(TimeScale, SnapsToItsSlots)
{
    TimeScale scale(96, at(0));
    EXPECT_EQ(scale.slotMinutes(), 60);
    EXPECT_EQ(scale.slotOf(at(9.9)), at(9));
    EXPECT_EQ(scale.slotOf(at(9)), at(9));
    scale.zoom(1, 0);
    EXPECT_EQ(scale.slotMinutes(), 30);
    EXPECT_EQ(scale.slotOf(at(9.9)), at(9.5));
    scale.zoom(1, 0);
    EXPECT_EQ(scale.slotMinutes(), 15);
    EXPECT_EQ(scale.slotOf(at(9.9)), at(9.75));
    EXPECT_EQ(scale.wholeSlots(22), 15);
    EXPECT_EQ(scale.wholeSlots(23), 30);
    EXPECT_EQ(scale.wholeSlots(-23), -30);
}

TEST(TimeScale, ZoomsAroundAPixel)
{
    TimeScale scale(96, at(7));
    const OleDate fixed = scale.timeAt(300);
    EXPECT_TRUE(scale.zoom(-1, 300));
    EXPECT_EQ(scale.level(), TimeScale::days);
    EXPECT_EQ(minutesBetween(fixed, scale.timeAt(300)), 0);
    EXPECT_TRUE(scale.zoom(2, 300));
    EXPECT_EQ(minutesBetween(fixed, scale.timeAt(300)), 0);
}

TEST(TimeScale, EndsWithWeeksAndQuartersOfAnHour)
{
    TimeScale scale(96, at(7));
    EXPECT_TRUE(scale.zoom(-9, 0));
    EXPECT_EQ(scale.level(), TimeScale::weeks);
    EXPECT_EQ(scale.hoursPerLabel(), 0);
    EXPECT_FALSE(scale.zoom(-1, 0));
    EXPECT_TRUE(scale.zoom(9, 0));
    EXPECT_EQ(scale.level(), TimeScale::quarterHours);
    EXPECT_FALSE(scale.zoom(1, 0));
}

} // namespace

} // namespace korvane::host
