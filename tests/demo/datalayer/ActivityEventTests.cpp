#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class ActivityEvents : public ActivityTest
{
protected:
    /// What the activities announce while something is done.
    template <class Body> Lines raised(Body&& body) const
    {
        const Listener::Subscription listener(desk->events, DIID_IEventsEvents);
        body();
        return listener->events();
    }

    const Lines once{L"OnClear"};
};

} // namespace

TEST_F(ActivityEvents, TellOfEachWrite)
{
    long event = 0;
    EXPECT_EQ(once, raised([&] { event = desk->add(meeting()); }));
    EXPECT_EQ(once, raised([&] { desk->update(event, 0, meeting()); }));
    EXPECT_EQ(once, raised([&] { desk->repeat(event, Repetition{1}); }));
    EXPECT_EQ(once, raised([&] { desk->update(event, 2, meeting()); }));
    EXPECT_EQ(once, raised([&] { desk->remove(event, 3); }));
    EXPECT_EQ(once, raised([&] { desk->remove(event); }));
}

TEST_F(ActivityEvents, TellOfEachWriteToLinkGroups)
{
    const long event = desk->add(meeting());
    EXPECT_EQ(once, raised([&] { desk->create(event); }));
    EXPECT_EQ(once, raised([&] { desk->addNames(event, {bert, van, carla}); }));
    EXPECT_EQ(once, raised([&] { desk->repeatLinked(event, Repetition{1}); }));
    EXPECT_EQ(once, raised([&] { desk->updateLinked(event, 0, meeting()); }));
    EXPECT_EQ(once, raised([&] { desk->removeOccurrence(event, 2); }));
    EXPECT_EQ(once, raised([&] { desk->removeNames(event, {bert}); }));
    EXPECT_EQ(once, raised([&] { desk->detach(event, van); }));
    EXPECT_EQ(once, raised([&] { desk->removeAll(event); }));
}

TEST_F(ActivityEvents, AreNotRaisedByReading)
{
    const long event = desk->add(meeting());
    EXPECT_EQ(Lines{}, raised([&] {
                  desk->fetch(event);
                  desk->repetition(event);
                  desk->linkOf(event);
                  desk->hasAccess(3, event);
              }));
}

TEST_F(ActivityEvents, AreNotRaisedByWritesThatFail)
{
    EXPECT_EQ(Lines{}, raised([&] {
                  EXPECT_TRUE(attempt([&] { desk->add(meeting(at(2026, 3, 2), 4711)); }));
                  EXPECT_TRUE(attempt([&] { desk->remove(4711); }));
                  EXPECT_TRUE(attempt([&] { desk->removeAll(4711); }));
              }));
}

TEST_F(ActivityEvents, ComeAfterTheWriteIsSafe)
{
    const Listener::Subscription listener(desk->events, DIID_IEventsEvents);
    std::wstring seen;
    listener->onEvent = [&] { seen = sqlText("SELECT text FROM events"); };
    desk->add(meeting());
    EXPECT_EQ(L"Budget", seen);
}

TEST_F(ActivityEvents, DoNotReachTheListOfALinkGroup)
{
    const Listener::Subscription listener(desk->links, DIID_IEventLinksEvents);
    desk->addNames(desk->create(desk->add(meeting())), {bert});
    EXPECT_EQ(Lines{}, listener->events());
}

TEST_F(ActivityEvents, OfALinkGroupClearFirst)
{
    desk->addNames(desk->create(desk->add(meeting())), {bert});
    const Listener::Subscription listener(desk->links, DIID_IEventLinksEvents);
    desk->linkOf(2);
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 1, 2", L"OnAdd 2, 3"}), listener->events());
}
