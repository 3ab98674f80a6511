#include "tests/demo/datalayer/Office.h"

#include <cmath>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Samples : public DataLayerTest
{
protected:
    void addTo(const ComPtr<IRoot>& root) const { call(database, &IDatabase::AddSample, root.get()); }
};

} // namespace

TEST_F(Samples, BringGroupsResourcesAndTypes)
{
    addTo(open());
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Vehicles", L"Rooms"}), names(openGroups()));
    EXPECT_EQ((Listed{4, L"Staff", 3}), fetch(openGroups(), 4));
    EXPECT_EQ(L"12", sqlText("SELECT count(*) FROM names WHERE id > 1"));
    EXPECT_EQ(L"Meeting,Training,Holiday,Service,Travel",
              sqlText("SELECT group_concat(name) FROM (SELECT name FROM types WHERE id > 0 ORDER BY id)"));
    EXPECT_EQ(L"6", sqlText("SELECT count(DISTINCT color) FROM types"));
    EXPECT_EQ(L"0", sqlText("SELECT count(*) FROM types WHERE color < 1"));
    EXPECT_EQ(L"ok", sqlText("PRAGMA integrity_check"));
}

TEST_F(Samples, HaveOneResourceInTwoGroupsAndAllInOne)
{
    addTo(open());
    EXPECT_EQ(
        L"1",
        sqlText("SELECT count(*) FROM (SELECT 1 FROM group_names GROUP BY name_id HAVING count(*) = 2)"));
    EXPECT_EQ(L"12", sqlText("SELECT count(DISTINCT name_id) FROM group_names"));
}

TEST_F(Samples, GiveTheEmployeeAResource)
{
    addTo(open());
    const Desk employee(open(L"employee"));
    const long own = std::stol(sqlText("SELECT id FROM names WHERE account = 2"));
    EXPECT_GT(employee.add({own, 3, at(2026, 7, 1), at(2026, 7, 15), L"Holiday"}), 0);
}

TEST_F(Samples, HaveAManagerUsersMessagesAndInformation)
{
    addTo(open());
    EXPECT_EQ(L"andrea 2 Andrea Lindner, ben 3 Ben Carter, employee 3 Emily Stone",
              sqlText("SELECT group_concat(concat_ws(' ', login, accounts.role, name), ', ' ORDER BY login)"
                      "  FROM accounts JOIN names ON account = accounts.id WHERE names.id > 1"));
    const Office emily(open(L"employee"));
    const long own = korvane::fetch(emily.session(), &ISession::get_NameID);
    EXPECT_EQ(2, korvane::fetch(emily.session(), &ISession::get_UnreadMessages));
    const Lines messages = emily.messagesFor(own);
    EXPECT_EQ(3u, messages.size());
    SYSTEMTIME now;
    GetLocalTime(&now);
    EXPECT_EQ(at(now.wYear, now.wMonth, now.wDay), std::floor(emily.read(1).time));
    const Office andrea(open(L"andrea"));
    const long managers = korvane::fetch(andrea.session(), &ISession::get_NameID);
    EXPECT_EQ(L"andrea", andrea.mailbox(managers));
    EXPECT_EQ(3u, andrea.info(managers).size());
    EXPECT_TRUE(Office::may(andrea.names, 3, own));
}

TEST_F(Samples, AreAnnounced)
{
    const auto root = open();
    const Listener::Subscription groupsListener(groupsOf(root), DIID_IGroupsEvents);
    const Listener::Subscription namesListener(korvane::fetch(root, &IRoot::get_Names), DIID_INamesEvents);
    const Listener::Subscription typesListener(korvane::fetch(root, &IRoot::get_Types), DIID_ITypesEvents);
    addTo(root);
    EXPECT_EQ(
        (Lines{L"OnClear", L"OnAdd 1, System, 1", L"OnAdd 2, All resources, 1", L"OnAdd 3, Unassigned, 1",
               L"OnAdd 4, Staff, 3", L"OnAdd 5, Vehicles, 3", L"OnAdd 6, Rooms, 3"}),
        groupsListener->events());
    EXPECT_EQ(Lines{L"OnClear"}, namesListener->events());
    EXPECT_EQ(Lines{L"OnClear"}, typesListener->events());
}

TEST_F(Samples, TakeGroupsAndTypesThatAreThereAsTheyAre)
{
    const auto root = open();
    add(groupsOf(root), L"staff", 7);
    sql("INSERT INTO types (name, color) VALUES ('Travel', 99)");
    addTo(root);
    EXPECT_EQ((std::vector<std::wstring>{L"staff", L"Vehicles", L"Rooms"}), names(groupsOf(root)));
    EXPECT_EQ(L"6", sqlText("SELECT count(*) FROM group_names WHERE group_id = 4"));
    EXPECT_EQ(L"99", sqlText("SELECT color FROM types WHERE name = 'Travel'"));
}

TEST_F(Samples, AreRefusedWhereThereAreResources)
{
    const auto root = open();
    sql("INSERT INTO names (name) VALUES ('Anna')");
    EXPECT_ERROR(addTo(root), Code::hasNamesAlready, L"Database");
    EXPECT_EQ(L"2", sqlText("SELECT count(*) FROM names"));
    EXPECT_EQ(L"3", sqlText("SELECT count(*) FROM groups"));
    EXPECT_EQ(L"1", sqlText("SELECT count(*) FROM types"));
}

TEST_F(Samples, AreAddedOnce)
{
    const auto root = open();
    addTo(root);
    EXPECT_ERROR(addTo(root), Code::hasNamesAlready, L"Database");
    EXPECT_EQ(L"13", sqlText("SELECT count(*) FROM names"));
}

TEST_F(Samples, AreTakenBackAsAWhole)
{
    const auto root = open();
    sql("CREATE TRIGGER late BEFORE INSERT ON group_types BEGIN SELECT raise(ABORT, 'too late'); END");
    EXPECT_ERROR(addTo(root), Code::ruleBroken, L"Database", L"too late");
    EXPECT_EQ(L"1", sqlText("SELECT count(*) FROM names"));
    EXPECT_EQ(L"3", sqlText("SELECT count(*) FROM groups"));
}

TEST_F(Samples, NeedTheRightToAddGroups)
{
    EXPECT_ERROR(addTo(open(L"employee")), Code::mayNotAddGroups, L"Database");
    EXPECT_EQ(L"1", sqlText("SELECT count(*) FROM names"));
}

TEST_F(Samples, NeedARootOfThisDataLayer)
{
    EXPECT_EQ(E_POINTER, database->AddSample(nullptr));
    // Whatever it is, it was not opened here.
    const auto groups = openGroups();
    const auto foreign = groups.as<IDispatch>();
    EXPECT_ERROR(call(database, &IDatabase::AddSample, reinterpret_cast<IRoot*>(foreign.get())),
                 Code::foreignRoot, L"Database");
}

TEST_F(Samples, MayBeAddedToWhatAnotherObjectOpened)
{
    const auto other = layer.makeDatabase();
    addTo(korvane::fetch(other, &IDatabase::Open, Bstr(file).get(), Bstr(L"").get()));
    EXPECT_EQ(L"13", sqlText("SELECT count(*) FROM names"));
}
