#include "tests/demo/datalayer/DataLayer.h"
#include "tests/demo/datalayer/Listener.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

using Lines = std::vector<std::wstring>;

class Events : public DataLayerTest
{
protected:
    static void raiseLoad(const ComPtr<IGroups>& groups)
    {
        EXPECT_TRUE(korvane::fetch(groups, &IGroups::Load));
    }

    const Lines builtIn{L"OnClear", L"OnAdd 1, System, 1", L"OnAdd 2, All resources, 1",
                        L"OnAdd 3, Unassigned, 1"};

    Lines with(std::initializer_list<std::wstring> more) const
    {
        Lines result = builtIn;
        result.insert(result.end(), more);
        return result;
    }
};

} // namespace

TEST_F(Events, AreNotRaisedByReading)
{
    const auto groups = openGroups();
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    fetch(groups, 2);
    fetch(groups, 4711);
    hasAccess(groups, 3, 2);
    EXPECT_EQ(Lines{}, subscriber->events());
}

TEST_F(Events, AnnounceTheGroupsAfterEachWrite)
{
    const auto groups = openGroups();
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    const long staff = add(groups, L"Staff", 3);
    const auto staffId = std::to_wstring(staff);
    EXPECT_EQ(with({L"OnAdd " + staffId + L", Staff, 3"}), subscriber->events());

    const auto roomsId = std::to_wstring(add(groups, L"Rooms", 3));
    subscriber->forget();
    update(groups, staff, L"People", 7);
    EXPECT_EQ(with({L"OnAdd " + staffId + L", People, 7", L"OnAdd " + roomsId + L", Rooms, 3"}),
              subscriber->events());

    subscriber->forget();
    remove(groups, staff);
    EXPECT_EQ(with({L"OnAdd " + roomsId + L", Rooms, 3"}), subscriber->events());
}

TEST_F(Events, AreNotRaisedByWritesThatFail)
{
    const auto groups = openGroups();
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    EXPECT_TRUE(attempt([&] { add(groups, L""); }));
    EXPECT_TRUE(attempt([&] { update(groups, 4711, L"Staff"); }));
    EXPECT_TRUE(attempt([&] { remove(groups, 1); }));
    EXPECT_EQ(Lines{}, subscriber->events());
}

TEST_F(Events, ReachSubscribersOfEveryReferenceToTheGroups)
{
    const auto root = open();
    const auto listening = groupsOf(root);
    const Listener::Subscription subscriber(listening, DIID_IGroupsEvents);
    add(groupsOf(root), L"Staff");
    EXPECT_EQ(5u, subscriber->events().size());
}

TEST_F(Events, ReachSubscribersInTheOrderOfSubscription)
{
    const auto groups = openGroups();
    std::wstring order;
    const Listener::Subscription first(groups, DIID_IGroupsEvents);
    const Listener::Subscription second(groups, DIID_IGroupsEvents);
    first->onEvent = [&] { order += L'1'; };
    second->onEvent = [&] { order += L'2'; };
    raiseLoad(groups);
    EXPECT_EQ(L"12121212", order);
}

TEST_F(Events, GoOnForOthersWhenASubscriberFails)
{
    const auto groups = openGroups();
    const Listener::Subscription failing(groups, DIID_IGroupsEvents);
    const Listener::Subscription other(groups, DIID_IGroupsEvents);
    failing->answer = E_FAIL;
    raiseLoad(groups);
    EXPECT_EQ(builtIn, failing->events());
    EXPECT_EQ(builtIn, other->events());
    EXPECT_GT(add(groups, L"Staff"), 3);
}

TEST_F(Events, StopForWhoeverUnsubscribes)
{
    const auto groups = openGroups();
    Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    subscriber.end();
    raiseLoad(groups);
    EXPECT_EQ(Lines{}, subscriber->events());
}

TEST_F(Events, StopForWhoeverUnsubscribesDuringOne)
{
    const auto groups = openGroups();
    Listener::Subscription leaving(groups, DIID_IGroupsEvents);
    const Listener::Subscription staying(groups, DIID_IGroupsEvents);
    leaving->onEvent = [&] {
        if (leaving->events().size() == 2)
            leaving.end();
    };
    raiseLoad(groups);
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 1, System, 1"}), leaving->events());
    EXPECT_EQ(builtIn, staying->events());
}

TEST_F(Events, DoNotReachASubscriberThatAnotherOneRemoved)
{
    const auto groups = openGroups();
    const Listener::Subscription removing(groups, DIID_IGroupsEvents);
    Listener::Subscription removed(groups, DIID_IGroupsEvents);
    removing->onEvent = [&] { removed.end(); };
    raiseLoad(groups);
    EXPECT_EQ(builtIn, removing->events());
    EXPECT_EQ(Lines{}, removed->events());
}

TEST_F(Events, ReachANewSubscriberFromTheNextOneOn)
{
    const auto groups = openGroups();
    std::optional<Listener::Subscription> late;
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    subscriber->onEvent = [&] {
        if (!late)
            late.emplace(groups, DIID_IGroupsEvents);
    };
    raiseLoad(groups);
    EXPECT_EQ(Lines(builtIn.begin() + 1, builtIn.end()), (*late)->events());
}

TEST_F(Events, AllowWritesWhichAnnounceTheirOwnState)
{
    const auto groups = openGroups();
    bool added = false;
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    subscriber->onEvent = [&] {
        if (!std::exchange(added, true))
            add(groups, L"Staff");
    };
    raiseLoad(groups);
    // Once for the write within the first event, then the rest of what was being loaded.
    EXPECT_EQ(1u + 5u + 3u, subscriber->events().size());
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
}

TEST_F(Events, HoldASubscriberUntilItUnsubscribes)
{
    const auto groups = openGroups();
    Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    EXPECT_EQ(2u, subscriber->references());
    raiseLoad(groups);
    EXPECT_EQ(2u, subscriber->references());
    subscriber.end();
    EXPECT_EQ(1u, subscriber->references());
}

TEST_F(Events, LetSubscribersGoWithTheGroups)
{
    const ComPtr<Listener> subscriber(new Listener(DIID_IGroupsEvents));
    auto groups = openGroups();
    const auto point = eventsOf(groups);
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, point->Advise(subscriber.get(), &cookie));
    groups.reset();
    EXPECT_EQ(1u, subscriber->references());
    EXPECT_EQ(CONNECT_E_NOCONNECTION, point->Unadvise(cookie));
}

TEST_F(Events, ComeAfterTheWriteIsSafe)
{
    const auto groups = openGroups();
    std::vector<std::wstring> seen;
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    subscriber->onEvent = [&] { seen.push_back(sqlText("SELECT max(name) FROM groups WHERE id > 3")); };
    add(groups, L"Staff");
    EXPECT_EQ(std::vector<std::wstring>(5, L"Staff"), seen);
}
