#include "tests/demo/datalayer/Listener.h"
#include "tests/demo/datalayer/Office.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Traces : public DataLayerTest
{
protected:
    static ComPtr<IScope> scope(const ComPtr<IRoot>& root, const wchar_t* source, long flags = 0)
    {
        return korvane::fetch(root, &IRoot::OpenScope, flags, Bstr(source).get());
    }
};

class TracesOfBooking : public ActivityTest
{
};

class TracesOfMasterData : public OfficeTest
{
};

} // namespace

TEST_F(Traces, ShowCallsWithArgumentsAndResults)
{
    const auto root = open(L"admin");
    const auto groups = groupsOf(root);
    const auto id = std::to_wstring(add(groups, L"Staff", 3));
    add(groups, L"Rooms", 3);
    fetch(groups, 4711);
    fetch(groups, 4);
    hasAccess(groups, 3, 4);
    update(groups, 4, L"People", 9);
    remove(groups, 4);
    EXPECT_EQ(L"Database.Open \"" + file +
                  L"\", \"admin\"\r\n"
                  L"Root.Groups\r\n"
                  L"Groups.Add \"Staff\", 3 = " +
                  id +
                  L"\r\n"
                  L"Groups.Add \"Rooms\", 3 = 5\r\n"
                  L"Groups.Fetch 4711 = False\r\n"
                  L"Groups.Fetch 4 = True, \"Staff\", 3\r\n"
                  L"Groups.HasAccess 3, 4 = True\r\n"
                  L"Groups.Update 4, \"People\", 9 = 4\r\n"
                  L"Groups.Remove 4 = 0\r\n",
              trace());
}

TEST_F(Traces, ShowFailuresWithNumberAndText)
{
    const auto groups = openGroups();
    ignoreTrace();
    EXPECT_TRUE(attempt([&] { remove(groups, 1); }));
    EXPECT_EQ(L"Groups.Remove 1 ! 0x80041063 You must not delete a built-in group.\r\n", trace());
}

TEST_F(Traces, NestByScope)
{
    const auto root = open();
    const auto groups = groupsOf(root);
    ignoreTrace();
    const auto outer = scope(root, L"ctlEditGroups.Prepare");
    const auto inner = scope(root, L"EditGroups.FetchEdit", -1);
    fetch(groups, 4711);
    call(inner, &IScope::Close, 0L, 0L);
    call(outer, &IScope::Close, -1L, 2L);
    EXPECT_EQ(L"Root.OpenScope 0, \"ctlEditGroups.Prepare\"\r\n"
              L"  Root.OpenScope -1, \"EditGroups.FetchEdit\"\r\n"
              L"    Groups.Fetch 4711 = False\r\n"
              L"  Scope.Close 0, 0\r\n"
              L"Scope.Close -1, 2\r\n",
              trace());
}

TEST_F(Traces, NestEventsAndWhatSubscribersCall)
{
    const auto groups = openGroups();
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    subscriber->onEvent = [&] {
        if (subscriber->events().size() == 2)
            hasAccess(groups, 3, 1);
    };
    ignoreTrace();
    korvane::fetch(groups, &IGroups::Load);
    EXPECT_EQ(L"Groups.Load = True\r\n"
              L"  OnClear\r\n"
              L"  OnAdd 1, \"System\", 1\r\n"
              L"  Groups.HasAccess 3, 1 = False\r\n"
              L"  OnAdd 2, \"All resources\", 1\r\n"
              L"  OnAdd 3, \"Unassigned\", 1\r\n",
              trace());
}

TEST_F(Traces, TellOfAScopeThatWasNotClosed)
{
    const auto root = open();
    ignoreTrace();
    scope(root, L"ctlEditGroups.Init");
    EXPECT_EQ(L"Root.OpenScope 0, \"ctlEditGroups.Init\"\r\n"
              L"The scope \"ctlEditGroups.Init\" was left without Close\r\n",
              trace());
}

TEST_F(Traces, ShowSettings)
{
    const auto root = open();
    sql("INSERT INTO settings VALUES ('SharedFolder', 'S:\\')");
    ignoreTrace();
    const auto registry = layer.makeRegistry();
    for (const wchar_t* key : {L"SharedFolder", L"Other"})
        korvane::fetch(registry, &IRegistry::GetValue, Bstr(key).get(), VARIANT{});
    EXPECT_EQ(L"Registry.GetValue \"SharedFolder\" = \"S:\\\"\r\n"
              L"Registry.GetValue \"Other\" = the default\r\n",
              trace());
}

TEST_F(Traces, KeepTheLastLinesOnly)
{
    const auto groups = openGroups();
    ignoreTrace();
    for (long id = 1; id <= 1500; ++id)
        hasAccess(groups, 3, id + 1000);
    const std::wstring text = trace();
    EXPECT_TRUE(text.starts_with(L"Groups.HasAccess 3, 1501 = False\r\n"));
    EXPECT_TRUE(text.ends_with(L"Groups.HasAccess 3, 2500 = False\r\n"));
}

TEST_F(Traces, MayLoseTheLineOfACallThatRuns)
{
    const auto groups = openGroups();
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    subscriber->onEvent = [&] { ignoreTrace(); };
    korvane::fetch(groups, &IGroups::Load);
    subscriber->onEvent = [] {};
    EXPECT_EQ(L"", trace());
    fetch(groups, 4711);
    EXPECT_EQ(L"Groups.Fetch 4711 = False\r\n", trace());
}

TEST_F(Traces, BelongToTheObjectThatOpenedTheDatabase)
{
    const auto other = layer.makeDatabase();
    const auto root = open();
    EXPECT_EQ(L"", std::wstring(korvane::fetch(other, &IDatabase::get_Trace).c_str()));
}

TEST_F(Traces, ShowWhatCouldNotBeOpened)
{
    EXPECT_TRUE(attempt([&] { open(L"nobody"); }));
    EXPECT_EQ(L"Database.Open \"" + file +
                  L"\", \"nobody\" ! 0x80040FFA Unknown username - cannot login.\r\n",
              trace());
}

TEST_F(TracesOfBooking, ShowCallsWithArgumentsAndResults)
{
    const Booking trip{van, 2, at(2026, 3, 2, 9), at(2026, 3, 4), L"Trip"};
    const long event = desk->add(trip);
    desk->repeat(event, Repetition{2, 1, 3, 7});
    desk->update(event, 2, trip);
    desk->fetch(event);
    desk->repetition(event);
    desk->remove(event, 2);
    desk->repeat(event, std::nullopt);
    korvane::fetch(desk->events, &IEvents::IsException, event);
    desk->remove(event);
    EXPECT_EQ(L"Events.Add 5, 2, 2026-03-02 09:00:00, 2026-03-04 00:00:00, \"Trip\" = 1\r\n"
              L"Root.NewRecurrence 2\r\n"
              L"Events.SetRecurrence 1, kind 2, interval 1, count 3, anchor 7\r\n"
              L"Events.Update 1, 2, 5, 2, 2026-03-02 09:00:00, 2026-03-04 00:00:00, \"Trip\"\r\n"
              L"Events.Fetch 1, 0 = 5, 2, 2026-03-02 09:00:00, 2026-03-04 00:00:00, \"Trip\"\r\n"
              L"Events.GetRecurrence 1 = kind 2, interval 1, count 3, anchor 7\r\n"
              L"Events.Remove 1, 2\r\n"
              L"Events.SetRecurrence 1, Nothing\r\n"
              L"Events.IsException 1 = 0\r\n"
              L"Events.Remove 1, 0\r\n",
              trace());
}

TEST_F(TracesOfBooking, ShowLinkGroups)
{
    const long event = desk->add(meeting());
    ignoreTrace();
    desk->create(event);
    desk->addNames(event, {bert, van});
    desk->linkOf(event);
    desk->updateLinked(event, 0, meeting());
    desk->repeatLinked(event, std::nullopt);
    desk->removeNames(event, {anna, van});
    desk->linkOf(2);
    desk->detach(2, bert);
    desk->hasAccess(3, 2);
    EXPECT_EQ(L"EventLinks.Create 1 = 1\r\n"
              L"EventLinks.AddNames 1, (3, 5)\r\n"
              L"EventLinks.Load 1 = 1\r\n"
              L"EventLinks.UpdateLinked 1, 0, 1, 2026-03-02 09:00:00, 2026-03-02 10:00:00, \"Budget\" = 1\r\n"
              L"EventLinks.SetRecurrence 1, Nothing\r\n"
              L"EventLinks.RemoveNames 1, (2, 5) = 2\r\n"
              L"EventLinks.Load 2 = Empty\r\n"
              L"EventLinks.Detach 2, 3\r\n"
              L"EventLinks.HasAccess 3, 2 = True\r\n",
              trace());
}

TEST_F(TracesOfBooking, ShowFailuresWithNumberAndText)
{
    EXPECT_TRUE(attempt([&] { desk->removeAll(std::nullopt); }));
    EXPECT_TRUE(attempt([&] { desk->remove(4711); }));
    EXPECT_TRUE(attempt([&] { desk->rule(Repetition{6}); }));
    EXPECT_TRUE(attempt([&] { call(database, &IDatabase::AddSample, desk->root.get()); }));
    EXPECT_EQ(
        L"EventLinks.RemoveAll Empty ! 0x80042341 There is no such group of linked activities. Another user "
        L"may "
        L"have deleted it.\r\n"
        L"Events.Remove 4711, 0 ! 0x8004233D There is no such activity. Another user may have deleted it.\r\n"
        L"Root.NewRecurrence 6 ! 0x80042345 There is no kind of recurrence with the number 6.\r\n"
        L"Database.AddSample ! 0x80042349 The database has resources already.\r\n",
        trace());
}

TEST_F(TracesOfBooking, NestEvents)
{
    const auto resources = korvane::fetch(desk->root, &IRoot::get_Names);
    const auto types = korvane::fetch(desk->root, &IRoot::get_Types);
    const Listener::Subscription names(resources, DIID_INamesEvents);
    const Listener::Subscription typesListener(types, DIID_ITypesEvents);
    const Listener::Subscription events(desk->events, DIID_IEventsEvents);
    const Listener::Subscription links(desk->links, DIID_IEventLinksEvents);
    korvane::fetch(resources, &INames::Load, 5L);
    korvane::fetch(types, &ITypes::Load, 5L);
    desk->linkOf(desk->add(meeting()));
    call(desk->events.as<ISchedule>(), &ISchedule::Load, at(2026, 3, 2), at(2026, 3, 3));
    EXPECT_EQ(L"Root.Names\r\n"
              L"Root.Types\r\n"
              L"Names.Load 5 = True\r\n"
              L"  OnClear\r\n"
              L"  OnAdd 5, \"Van\", 5, 65280\r\n"
              L"Types.Load 5 = True\r\n"
              L"  OnClear\r\n"
              L"  OnAdd 0, \"Activity\", 12566463\r\n"
              L"  OnAdd 1, \"Meeting\", 16711680\r\n"
              L"  OnAdd 2, \"Travel\", 0\r\n"
              L"Events.Add 2, 1, 2026-03-02 09:00:00, 2026-03-02 10:00:00, \"Budget\" = 1\r\n"
              L"  OnClear\r\n"
              L"EventLinks.Load 1 = Empty\r\n"
              L"  OnClear\r\n"
              L"  OnAdd 1, 2\r\n"
              L"Schedule.Load 2026-03-02 00:00:00, 2026-03-03 00:00:00\r\n"
              L"  OnClear\r\n"
              L"  OnAdd 1, 0, 2, 1, 2026-03-02 09:00:00, 2026-03-02 10:00:00, \"Budget\"\r\n",
              trace());
}

TEST_F(TracesOfMasterData, ShowCallsWithArgumentsAndResults)
{
    ignoreTrace();
    const long dora = office->addName(L"Dora", 255);
    office->addAccount(L"dora", dora);
    office->setRole(dora, 2);
    office->setSyncLogin(dora, L"dora");
    office->addToGroup(office->names, dora, staff);
    office->fetchName(dora);
    office->fetchName(0);
    office->role(dora);
    office->mailbox(dora);
    office->lookup(L"dora");
    office->lookup(L"nobody");
    office->detach(dora);
    office->removeAccount(L"dora");
    call(office->groups, &IGroups::SetPosition, staff, 9L);
    attempt([&] { office->updateName(1, L"Me"); });
    EXPECT_EQ(L"Names.Add \"Dora\", 255, 2 = 6\r\n"
              L"Accounts.Add \"dora\", 3, 6 = 5\r\n"
              L"Names.SetRole 6, 2\r\n"
              L"Names.SetSyncLogin 6, \"dora\"\r\n"
              L"Names.AddToGroup 6, 4, 0 = 0\r\n"
              L"Names.Fetch 6 = \"Dora\", 255, 5, \"dora\", 2, 2\r\n"
              L"Names.Fetch 0\r\n"
              L"Names.GetRole 6 = 2\r\n"
              L"Names.GetMailbox 6 = \"dora\"\r\n"
              L"Accounts.Lookup \"dora\" = 5, 2, 6\r\n"
              L"Accounts.Lookup \"nobody\" = 0\r\n"
              L"Accounts.Detach 6 = True\r\n"
              L"Accounts.Remove \"dora\" = True\r\n"
              L"Groups.SetPosition 4, 9\r\n"
              L"Names.Update 1, \"Me\", 0, 2 ! 0x800410C3 You are not authorized to edit this ressource.\r\n",
              trace());
}

TEST_F(TracesOfMasterData, ShowInformationAndMessages)
{
    ignoreTrace();
    office->setInfo(anna, L"Mobile", 0, L"1");
    office->info(anna);
    const long message = office->leave(anna, {L"", at(2026, 3, 2, 9), L"555", L"Mr Hale", L"Training", 3});
    office->messagesFor(anna);
    office->read(message);
    call(office->messages, &IMessages::Remove, message);
    call(office->session(), &ISession::AnnounceAll);
    EXPECT_EQ(L"Names.SetInfo 2, \"Mobile\", 0, \"1\"\r\n"
              L"Names.LoadInfo 2 = True\r\n"
              L"  OnInfoClear\r\n"
              L"  OnInfoAdd 2, \"Mobile\", \"1\"\r\n"
              L"Messages.Add 2, 2026-03-02 09:00:00, \"Training\", \"555\", \"Mr Hale\", 3 = 1\r\n"
              L"Messages.LoadFor 2, -1 = True\r\n"
              L"  OnClear\r\n"
              L"  OnAdd 1, \"SuperUser\", 2026-03-02 09:00:00, \"555\", \"Mr Hale\", \"Training\", False\r\n"
              L"Messages.Fetch 1 = \"SuperUser\", 2026-03-02 09:00:00, \"555\", \"Mr Hale\", \"Training\", "
              L"3, False\r\n"
              L"Messages.Remove 1\r\n"
              L"Session.AnnounceAll\r\n",
              trace());
}
