#include "tests/demo/datalayer/ChildProcess.h"
#include "tests/demo/datalayer/Office.h"

#include <gmock/gmock.h>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;
using testing::ElementsAre;

namespace
{

class Sessions : public OfficeTest
{
protected:
    static std::wstring who(const Office& who)
    {
        const auto session = who.session();
        return std::to_wstring(korvane::fetch(session, &ISession::get_LoginID)) + L' ' +
               korvane::fetch(session, &ISession::get_Login).c_str() + L' ' +
               std::to_wstring(korvane::fetch(session, &ISession::get_NameID)) + L' ' +
               std::to_wstring(korvane::fetch(session, &ISession::get_Role));
    }
    static long unread(const Office& who)
    {
        return korvane::fetch(who.session(), &ISession::get_UnreadMessages);
    }
    static bool hasChanged(const Office& who) { return korvane::fetch(who.session(), &ISession::HasChanged); }
};

} // namespace

TEST_F(Sessions, TellWhoWorks)
{
    EXPECT_EQ(L"1 admin 1 1", who(*office));
    EXPECT_EQ(L"3 manager 2 2", who(*manager));
    EXPECT_EQ(L"4 user 3 3", who(*user));
}

TEST_F(Sessions, FollowWhatHappensToTheAccount)
{
    office->setRole(bert, -1);
    office->attach(van, L"user");
    EXPECT_EQ(L"4 user 5 -1", who(*user));
    office->detach(van);
    EXPECT_EQ(L"4 user 0 -1", who(*user));
    office->removeAccount(L"user");
    EXPECT_EQ(L"0  0 -1", who(*user));
    EXPECT_EQ(0, unread(*user));
}

TEST_F(Sessions, CountTheMessagesThatHaveNotBeenRead)
{
    const long first = office->leave(bert, {});
    office->leave(bert, {});
    office->leave(anna, {});
    EXPECT_EQ(2, unread(*user));
    EXPECT_EQ(1, unread(*manager));
    EXPECT_EQ(0, unread(*office));
    user->read(first);
    EXPECT_EQ(1, unread(*user));
}

TEST_F(Sessions, TellOnceWhenAnotherUserHasWritten)
{
    hasChanged(*user);
    EXPECT_FALSE(hasChanged(*user));
    office->updateName(bert, L"Bertram");
    EXPECT_TRUE(hasChanged(*user));
    EXPECT_FALSE(hasChanged(*user));
}

TEST_F(Sessions, TellWhenAnotherProcessHasWritten)
{
    hasChanged(*user);
    EXPECT_EQ(0u, ChildProcess::adding(file, L"From the other process").exitCode());
    EXPECT_TRUE(hasChanged(*user));
}

TEST_F(Sessions, DoNotTellOfTheirOwnWrites)
{
    hasChanged(*office);
    office->updateName(bert, L"Bertram");
    EXPECT_FALSE(hasChanged(*office));
}

TEST_F(Sessions, KnowNoChangeFromBeforeTheyBegan)
{
    EXPECT_FALSE(hasChanged(officeOf(L"user")));
}

TEST_F(Sessions, LetTheCollectionsAnnounceAnewWhatWasLoadedLast)
{
    office->members(office->names, vehicles);
    office->members(office->types, staff);
    const Listener::Subscription groups(office->groups, DIID_IGroupsEvents);
    const Listener::Subscription names(office->names, DIID_INamesEvents);
    const Listener::Subscription types(office->types, DIID_ITypesEvents);
    const Listener::Subscription accounts(office->accounts, DIID_IAccountsEvents);
    const Listener::Subscription events(desk->events, DIID_IEventsEvents);
    const Listener::Subscription ours(korvane::fetch(office->root, &IRoot::get_Events), DIID_IEventsEvents);
    manager->updateName(bert, L"Bertram");
    officeOf(L"").updateName(van, L"Truck");
    call(office->session(), &ISession::AnnounceAll);
    EXPECT_EQ(L"OnAdd 5, Vehicles, 3", groups->events().back());
    EXPECT_THAT(names->events(), ElementsAre(L"OnClear", L"OnAdd 5, Truck, 5, 0"));
    EXPECT_THAT(types->events(), ElementsAre(L"OnClear", L"OnAdd 0, Activity, 12566463",
                                             L"OnAdd 1, Meeting, 16711680", L"OnAdd 2, Travel, 0"));
    EXPECT_EQ(5u, accounts->events().size());
    EXPECT_THAT(ours->events(), ElementsAre(L"OnClear"));
    EXPECT_EQ(Lines{}, events->events()); // of another root
}

TEST_F(Sessions, ClearWhatNobodyHasLoaded)
{
    const Listener::Subscription names(office->names, DIID_INamesEvents);
    const Listener::Subscription messages(office->messages, DIID_IMessagesEvents);
    office->leave(bert, {});
    call(office->session(), &ISession::AnnounceAll);
    EXPECT_THAT(names->events(), ElementsAre(L"OnClear"));
    EXPECT_EQ(Lines{}, messages->events());
}

TEST_F(Sessions, RefuseMissingPlacesForResults)
{
    const auto session = office->session();
    EXPECT_EQ(E_POINTER, session->get_LoginID(nullptr));
    EXPECT_EQ(E_POINTER, session->get_Login(nullptr));
    EXPECT_EQ(E_POINTER, session->get_NameID(nullptr));
    EXPECT_EQ(E_POINTER, session->get_Role(nullptr));
    EXPECT_EQ(E_POINTER, session->get_UnreadMessages(nullptr));
    EXPECT_EQ(E_POINTER, session->HasChanged(nullptr));
}
