#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class LinkedActivities : public ActivityTest
{
};

} // namespace

TEST_F(LinkedActivities, AreUpdatedEachWithItsOwnResource)
{
    const Link link = three();
    EXPECT_EQ(link, desk->updateLinked(link, 0, {0, 2, at(2026, 5, 1), at(2026, 5, 2), L"Trip"}));
    EXPECT_EQ((Lines{L"1, 0, 2, 2, 2026-05-01, 2026-05-02, Trip", L"2, 0, 3, 2, 2026-05-01, 2026-05-02, Trip",
                     L"3, 0, 5, 2, 2026-05-01, 2026-05-02, Trip"}),
              desk->schedule(at(1990, 1, 1), at(2200, 1, 1)));
}

TEST_F(LinkedActivities, AreUpdatedInOneOccurrence)
{
    const Link link = three();
    desk->repeatLinked(link, Repetition{2, 0, 2});
    EXPECT_EQ(link, desk->updateLinked(link, 2, {0, 2, at(2026, 3, 10), at(2026, 3, 11), L"Trip"}));
    EXPECT_EQ((Booking{bert, 2, at(2026, 3, 10), at(2026, 3, 11), L"Trip"}), desk->fetch(2, 2));
    EXPECT_EQ((Booking{van, 2, at(2026, 3, 10), at(2026, 3, 11), L"Trip"}), desk->fetch(3, 2));
    EXPECT_EQ(meeting(at(2026, 3, 2, 9), van), desk->fetch(3, 1));
}

TEST_F(LinkedActivities, KeepTheResourceOfAnOccurrenceThatWasGivenToAnother)
{
    const Link link = three();
    desk->repeatLinked(link, Repetition{2, 0, 2});
    desk->update(2, 2, meeting(at(2026, 3, 9, 9), carla));
    desk->updateLinked(link, 2, meeting(at(2026, 3, 10, 9)));
    EXPECT_EQ(meeting(at(2026, 3, 10, 9), carla), desk->fetch(2, 2));
}

TEST_F(LinkedActivities, AreRepeatedTogether)
{
    const Link link = three();
    desk->repeatLinked(link, Repetition{3, 1, 2});
    for (long event = 1; event <= 3; ++event)
        EXPECT_EQ((Repetition{3, 1, 2}), desk->repetition(event));
    desk->repeatLinked(link, Repetition{3, 1, 2});
    desk->repeatLinked(link, std::nullopt);
    for (long event = 1; event <= 3; ++event)
        EXPECT_EQ(std::nullopt, desk->repetition(event));
}

TEST_F(LinkedActivities, LoseOneOccurrenceTogether)
{
    const Link link = three();
    desk->repeatLinked(link, Repetition{2, 0, 3});
    desk->removeOccurrence(link, 2);
    for (long event = 1; event <= 3; ++event)
    {
        EXPECT_FALSE(desk->has(event, 2));
        EXPECT_TRUE(desk->has(event, 3));
    }
    EXPECT_REFUSED(desk->removeOccurrence(link, 2), Code::unknownOccurrence, L"EventLinks", L"2");
}

TEST_F(LinkedActivities, LeaveAnOccurrenceRemovedThatWasRemovedByItself)
{
    const Link link = three();
    desk->repeatLinked(link, Repetition{2, 0, 3});
    desk->remove(2, 2);
    desk->updateLinked(link, 2, meeting(at(2026, 3, 10, 9)));
    EXPECT_FALSE(desk->has(2, 2));
    EXPECT_EQ(meeting(at(2026, 3, 10, 9), van), desk->fetch(3, 2));
    desk->removeOccurrence(link, 2);
    EXPECT_FALSE(desk->has(3, 2));
}

TEST_F(LinkedActivities, AreRemovedAtOnce)
{
    const Link link = three();
    const long other = desk->add(meeting());
    desk->removeAll(link);
    EXPECT_EQ(1u, desk->schedule(at(1990, 1, 1), at(2200, 1, 1)).size());
    EXPECT_TRUE(desk->has(other));
}

TEST_F(LinkedActivities, StayLinkedWhenOneIsEditedByItself)
{
    const Link link = three();
    desk->update(2, 0, meeting(at(2026, 4, 1, 9), carla));
    EXPECT_EQ((Lines{L"1, 2", L"2, 4", L"3, 5"}), desk->members(1));
    EXPECT_EQ(link, desk->linkOf(2));
}

TEST_F(LinkedActivities, AreCheckedAsActivitiesAre)
{
    const Link link = three();
    EXPECT_REFUSED(desk->updateLinked(link, 0, {0, 1, at(2026, 3, 2), at(2026, 3, 1), L""}),
                   Code::endBeforeBegin, L"EventLinks");
    EXPECT_REFUSED(desk->updateLinked(link, 0, {0, 99, at(2026, 3, 2), at(2026, 3, 3), L""}),
                   Code::unknownType, L"EventLinks");
    EXPECT_REFUSED(desk->updateLinked(link, 1, meeting()), Code::unknownOccurrence, L"EventLinks", L"1");
}
