#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Links : public ActivityTest
{
};

} // namespace

TEST_F(Links, CopyTheRuleAndWhatWasDoneToSingleOccurrences)
{
    const long event = desk->add(meeting());
    desk->repeat(event, Repetition{2, 0, 4, 7});
    desk->update(event, 2, meeting(at(2026, 3, 10, 9), carla));
    desk->remove(event, 3);
    desk->addNames(desk->create(event), {van});
    EXPECT_EQ((Repetition{2, 0, 4, 7}), desk->repetition(2));
    EXPECT_EQ(meeting(at(2026, 3, 10, 9), van), desk->fetch(2, 2));
    EXPECT_FALSE(desk->has(2, 3));
    EXPECT_EQ(meeting(at(2026, 3, 23, 9), van), desk->fetch(2, 4));
}

TEST_F(Links, BookNobodyWhenOneResourceIsUnknown)
{
    const Link link = three();
    EXPECT_REFUSED(desk->addNames(link, {carla, 4711}), Code::unknownName, L"EventLinks");
    EXPECT_REFUSED(desk->removeNames(link, {bert, 4711}), Code::unknownName, L"EventLinks");
}

TEST_F(Links, TakeTheIdOfTheFirstActivityLeft)
{
    EXPECT_EQ(Link(3), desk->removeNames(three(), {anna, bert}));
    EXPECT_EQ(Lines{L"3, 5"}, desk->members(3));
    EXPECT_EQ(std::nullopt, desk->linkOf(3));
    desk->addNames(3, {anna});
    EXPECT_EQ(Link(3), desk->linkOf(3));
    EXPECT_EQ((Lines{L"3, 5", L"4, 2"}), desk->members(4));
}

TEST_F(Links, KeepAResource)
{
    const Link link = three();
    const Lines booked = desk->schedule(at(1990, 1, 1), at(2200, 1, 1));
    EXPECT_REFUSED(desk->removeNames(link, {anna, bert, van}), Code::nobodyLeft, L"EventLinks");
    EXPECT_EQ(booked, desk->schedule(at(1990, 1, 1), at(2200, 1, 1)));
}

TEST_F(Links, AreGoneWithTheLastActivity)
{
    const Link link = three();
    desk->removeAll(link);
    EXPECT_EQ(Lines{}, desk->schedule(at(1990, 1, 1), at(2200, 1, 1)));
    EXPECT_REFUSED(desk->addNames(link, {anna}), Code::unknownLink, L"EventLinks");
}

TEST_F(Links, StayAsTheyAreWithoutResourcesToAddOrRemove)
{
    const Link link = three();
    const std::wstring before = content();
    desk->addNames(link, {});
    EXPECT_EQ(link, desk->removeNames(link, {}));
    EXPECT_EQ(before, content());
}

TEST_F(Links, LetAnActivityGoOnByItself)
{
    const Link link = three();
    desk->detach(link, bert);
    EXPECT_EQ(std::nullopt, desk->linkOf(2));
    EXPECT_EQ(meeting(at(2026, 3, 2, 9), bert), desk->fetch(2));
    EXPECT_EQ((Lines{L"1, 2", L"3, 5"}), desk->members(1));
    desk->removeAll(link);
    EXPECT_TRUE(desk->has(2));
}

TEST_F(Links, TakeAnotherIdWhenTheirFirstActivityIsDetached)
{
    desk->detach(three(), anna);
    EXPECT_EQ(std::nullopt, desk->linkOf(1));
    EXPECT_EQ(Link(2), desk->linkOf(2));
    EXPECT_EQ(Link(2), desk->linkOf(3));
}

TEST_F(Links, LeaveTheLastActivityItsIdWhenItIsDetached)
{
    const Link left = desk->removeNames(three(), {anna, van});
    ASSERT_EQ(Link(2), left);
    desk->detach(left, bert);
    EXPECT_EQ(meeting(at(2026, 3, 2, 9), bert), desk->fetch(*left));
    EXPECT_EQ(std::nullopt, desk->linkOf(*left));
    EXPECT_REFUSED(desk->addNames(left, {anna}), Code::unknownLink, L"EventLinks");
    EXPECT_EQ(left, desk->create(*left));
}

TEST_F(Links, DetachOnlyWhoIsBooked)
{
    const Link link = three();
    EXPECT_REFUSED(desk->detach(link, carla), Code::notBookedForName, L"EventLinks");
    EXPECT_REFUSED(desk->detach(link, 4711), Code::notBookedForName, L"EventLinks");
}

TEST_F(Links, FollowTheRemovalOfASingleActivity)
{
    three();
    desk->remove(1);
    EXPECT_EQ(Link(2), desk->linkOf(2));
    EXPECT_EQ((Lines{L"2, 3", L"3, 5"}), desk->members(3));
    desk->remove(3);
    EXPECT_EQ(std::nullopt, desk->linkOf(2));
}

TEST_F(Links, RefuseWhatIsUnknown)
{
    const long single = desk->add(meeting());
    EXPECT_REFUSED(desk->linkOf(4711), Code::unknownEvent, L"EventLinks");
    EXPECT_REFUSED(desk->create(4711), Code::unknownEvent, L"EventLinks");
    for (const Link& link : {Link(), Link(0), Link(-1), Link(4711), Link(single)})
    {
        const auto refused = [&](auto&& body) { EXPECT_REFUSED(body(), Code::unknownLink, L"EventLinks"); };
        if (link) // an Empty one is a single activity, which is given to another resource
            refused([&] { desk->addNames(link, {anna}); });
        refused([&] { desk->removeNames(link, {anna}); });
        refused([&] { desk->removeOccurrence(link, 1); });
        refused([&] { desk->removeAll(link); });
        refused([&] { desk->updateLinked(link, 0, meeting()); });
        refused([&] { desk->detach(link, anna); });
        refused([&] { desk->repeatLinked(link, Repetition{1}); });
    }
}
