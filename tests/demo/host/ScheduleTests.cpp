#include "tests/demo/host/TestSchedule.h"

#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

using test::at;
using test::booked;
using test::scheduleOf;

TEST(Schedule, HasARowForEachResourceOnce)
{
    Schedule schedule;
    schedule.setResources({{10, L"Ann"}, {20, L"Bob"}, {10, L"Ann"}});
    ASSERT_EQ(schedule.rows().size(), 2U);
    EXPECT_EQ(schedule.rows()[1].resource.name, L"Bob");
}

TEST(Schedule, PutsBarsIntoTheRowsOfTheirResourcesByStart)
{
    const auto schedule =
        scheduleOf({booked(1, 20, 11, 12), booked(2, 10, 9, 10), booked(3, 20, 8, 9), booked(4, 99, 8, 9)});
    ASSERT_EQ(schedule.bars().size(), 3U) << "those of other resources are left out";
    EXPECT_EQ(schedule.bars()[0].id, (BarId{2, 0}));
    EXPECT_EQ(schedule.bars()[1].id, (BarId{3, 0}));
    EXPECT_EQ(schedule.bars()[1].row, 1U);
    EXPECT_EQ(schedule.bars()[2].id, (BarId{1, 0}));
}

TEST(Schedule, GivesBarsThatOverlapLanesOfTheirOwn)
{
    const auto schedule = scheduleOf({booked(1, 10, 9, 12), booked(2, 10, 10, 11), booked(3, 10, 11, 13),
                                      booked(4, 10, 12, 13), booked(5, 20, 9, 12)});
    EXPECT_EQ(schedule.find({1, 0})->lane, 0);
    EXPECT_EQ(schedule.find({2, 0})->lane, 1);
    EXPECT_EQ(schedule.find({3, 0})->lane, 1) << "what begins when another ends takes its place";
    EXPECT_EQ(schedule.find({4, 0})->lane, 0);
    EXPECT_EQ(schedule.find({5, 0})->lane, 0);
    EXPECT_EQ(schedule.rows()[0].lanes, 2);
    EXPECT_EQ(schedule.rows()[1].lanes, 1);
    EXPECT_EQ(schedule.rows()[2].lanes, 1) << "an empty row has room for one";
}

TEST(Schedule, KnowsEachRowsPlaceAndItsBars)
{
    const auto schedule = scheduleOf({booked(1, 10, 9, 12), booked(2, 10, 10, 11), booked(3, 30, 8, 9)});
    EXPECT_EQ(schedule.rows()[0].lanesAbove, 0);
    EXPECT_EQ(schedule.rows()[1].lanesAbove, 2);
    EXPECT_EQ(schedule.rows()[2].lanesAbove, 3);
    ASSERT_EQ(schedule.barsOf(0).size(), 2U);
    EXPECT_EQ(schedule.barsOf(0)[1].id.event, 2);
    EXPECT_TRUE(schedule.barsOf(1).empty());
    ASSERT_EQ(schedule.barsOf(2).size(), 1U);
    EXPECT_EQ(schedule.barsOf(2).front().id.event, 3);
}

TEST(Schedule, GivesActivitiesWithoutLengthRoom)
{
    const auto schedule = scheduleOf({booked(1, 10, 9, 9), booked(2, 10, 9, 9)});
    EXPECT_NE(schedule.find({1, 0})->lane, schedule.find({2, 0})->lane);
}

TEST(Schedule, TellsOccurrencesOfASeriesApart)
{
    const auto schedule = scheduleOf({booked(1, 10, 9, 10, 1), booked(1, 10, 33, 34, 2)});
    ASSERT_NE(schedule.find({1, 2}), nullptr);
    EXPECT_EQ(schedule.find({1, 2})->start, at(9, 1));
    EXPECT_EQ(schedule.find({1, 3}), nullptr);
}

TEST(Schedule, KeepsWhatIsBookedWhenTheRowsChange)
{
    auto schedule = scheduleOf({booked(1, 10, 9, 10), booked(2, 20, 9, 10)});
    schedule.setResources({{20, L"Bob"}});
    ASSERT_EQ(schedule.bars().size(), 1U);
    EXPECT_EQ(schedule.bars()[0].row, 0U);
    schedule.setResources({{10, L"Ann"}, {20, L"Bob"}});
    EXPECT_EQ(schedule.bars().size(), 2U);
}

TEST(Schedule, HasColoursOnlyWhereOneIsChosen)
{
    Schedule schedule;
    schedule.setColors({{1, 0x112233}, {2, 0}, {3, -1}});
    EXPECT_EQ(schedule.colorOf(1), COLORREF{0x112233});
    EXPECT_FALSE(schedule.colorOf(2));
    EXPECT_FALSE(schedule.colorOf(3));
    EXPECT_FALSE(schedule.colorOf(4));
}

} // namespace

} // namespace korvane::host
