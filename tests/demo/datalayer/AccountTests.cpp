#include "tests/demo/datalayer/Office.h"

#include <gmock/gmock.h>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;
using testing::ElementsAre;

namespace
{

class Accounts : public OfficeTest
{
protected:
    long add(const VARIANT& nameId) const
    {
        return korvane::fetch(office->accounts, &IAccounts::Add, Bstr(L"dora").get(), 3L, nameId);
    }
};

} // namespace

TEST_F(Accounts, AreAnnouncedByTheirLogins)
{
    EXPECT_EQ(
        (Lines{L"OnClear", L"OnAdd 1, admin", L"OnAdd 2, employee", L"OnAdd 3, manager", L"OnAdd 4, user"}),
        office->logins());
}

TEST_F(Accounts, AreFoundByTheirLoginsInAnyCase)
{
    EXPECT_THAT(office->lookup(L"manager"), ElementsAre(3, 2, anna));
    EXPECT_THAT(office->lookup(L"MANAGER"), ElementsAre(3, 2, anna));
    for (const wchar_t* nobody : {L"nobody", L"", L"manage"})
        EXPECT_THAT(office->lookup(nobody), ElementsAre(0, -1, 0));
}

TEST_F(Accounts, AreAddedForAResourceWithARole)
{
    const long account = office->addAccount(L"driver", van);
    EXPECT_THAT(office->lookup(L"driver"), ElementsAre(account, 3, van));
    EXPECT_EQ((Resource{L"Van", 65280, account, L"driver", 2, 3}), office->fetchName(van));
    EXPECT_EQ(Office(open(L"driver")).fetchName(van).login, L"driver");
    office->setRole(van, -1);
    EXPECT_THAT(office->lookup(L"driver"), ElementsAre(account, -1, van));
}

TEST_F(Accounts, TakeThePlaceOfTheOneThatTheResourceHad)
{
    office->addAccount(L"second", anna);
    EXPECT_EQ(L"second", office->fetchName(anna).login);
    EXPECT_THAT(office->lookup(L"manager"), ElementsAre(3, 2, 0));
}

TEST_F(Accounts, NeedALoginOfTheirOwnInAnyCase)
{
    office->addAccount(L"Zoë", van);
    EXPECT_KEPT(office->addAccount(L"ZOË", bert), Code::loginTaken, L"Accounts", L"Zoë");
    EXPECT_KEPT(office->addAccount(L"Admin", van), Code::loginTaken, L"Accounts", L"admin");
    EXPECT_KEPT(office->addAccount(L"", van), Code::loginNeedsText, L"Accounts");
    EXPECT_TRUE(open(L"zoË"));
}

TEST_F(Accounts, NeedAResourceThatExists)
{
    EXPECT_KEPT(add(Variant(0L).get()), Code::loginNeedsName, L"Accounts");
    EXPECT_KEPT(add(Variant().get()), Code::loginNeedsName, L"Accounts");
    EXPECT_KEPT(add(Variant(Bstr(L"2")).get()), Code::loginNeedsName, L"Accounts");
    EXPECT_KEPT(add(Variant(unknown).get()), Code::unknownName, L"Accounts");
    long number = van;
    VARIANT reference{};
    reference.vt = VT_I4 | VT_BYREF;
    reference.plVal = &number;
    EXPECT_GT(add(reference), 0);
}

TEST_F(Accounts, NeedARoleThatExists)
{
    EXPECT_KEPT(office->addAccount(L"dora", van, 17), Code::unknownRole, L"Accounts", L"17");
}

TEST_F(Accounts, AreAttachedToAnotherResource)
{
    office->attach(van, L"MANAGER");
    EXPECT_THAT(office->lookup(L"manager"), ElementsAre(3, 2, van));
    EXPECT_EQ(L"", office->fetchName(anna).login);
    EXPECT_EQ(2, office->role(van));
    office->attach(van, L"user");
    EXPECT_THAT(office->lookup(L"manager"), ElementsAre(3, 2, 0));
    EXPECT_THAT(office->lookup(L"user"), ElementsAre(4, 3, van));
}

TEST_F(Accounts, ThatAreAttachedAlreadyStay)
{
    const std::wstring before = masterData();
    office->attach(anna, L"manager");
    user->attach(bert, L"user");
    EXPECT_EQ(before, masterData());
}

TEST_F(Accounts, AreAttachedOnlyWhereBothExist)
{
    EXPECT_KEPT(office->attach(van, L"nobody"), Code::unknownLogin, L"Accounts", L"nobody");
    EXPECT_KEPT(office->attach(unknown, L"user"), Code::unknownName, L"Accounts");
}

TEST_F(Accounts, AreDetachedOnce)
{
    EXPECT_TRUE(office->detach(anna));
    EXPECT_FALSE(office->detach(anna));
    EXPECT_THAT(office->lookup(L"manager"), ElementsAre(3, 2, 0));
    EXPECT_EQ((Resource{L"Anna", 255, 0, L"", 2, -1}), office->fetchName(anna));
    EXPECT_KEPT(office->detach(unknown), Code::unknownName, L"Accounts");
}

TEST_F(Accounts, AreRemovedWithTheirRightsAndNotTheirResources)
{
    EXPECT_TRUE(office->removeAccount(L"Manager"));
    EXPECT_FALSE(office->removeAccount(L"manager"));
    EXPECT_EQ(L"", office->fetchName(anna).login);
    EXPECT_ERROR(open(L"manager"), Code::unknownAccount, L"Database");
    EXPECT_FALSE(manager->may(manager->names, 3, anna));
}

TEST_F(Accounts, HaveABuiltInOneThatStaysWhereItIs)
{
    EXPECT_KEPT(office->removeAccount(L"admin"), Code::mayNotChangeLogin, L"Accounts", L"admin");
    EXPECT_KEPT(office->attach(van, L"admin"), Code::mayNotChangeLogin, L"Accounts", L"admin");
    EXPECT_KEPT(office->detach(1), Code::mayNotEditName, L"Accounts");
    EXPECT_KEPT(office->attach(1, L"user"), Code::mayNotEditName, L"Accounts");
    EXPECT_KEPT(office->addAccount(L"root", 1), Code::mayNotEditName, L"Accounts");
}

TEST_F(Accounts, AreWrittenAsAWhole)
{
    sql("CREATE TRIGGER late BEFORE UPDATE OF account ON names WHEN NEW.account IS NOT NULL"
        " BEGIN SELECT raise(ABORT, 'too late'); END");
    const auto expectTakenBack = [&](auto&& write) {
        const std::wstring before = masterData();
        EXPECT_ERROR(write(), Code::ruleBroken, L"Database", L"too late");
        EXPECT_EQ(before, masterData());
    };
    expectTakenBack([&] { office->addAccount(L"driver", van); });
    expectTakenBack([&] { office->attach(van, L"user"); });
}

TEST_F(Accounts, AnnounceThemselvesAfterEachWrite)
{
    const Listener::Subscription listener(office->accounts, DIID_IAccountsEvents);
    office->addAccount(L"driver", van);
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 1, admin", L"OnAdd 5, driver", L"OnAdd 2, employee",
                     L"OnAdd 3, manager", L"OnAdd 4, user"}),
              listener->events());
    for (const auto& write : std::initializer_list<std::function<void()>>{
             [&] { office->attach(anna, L"driver"); }, [&] { office->detach(anna); },
             [&] { office->removeAccount(L"driver"); }})
    {
        listener->forget();
        write();
        EXPECT_EQ(L"OnClear", listener->events().front());
    }
    EXPECT_EQ(5u, listener->events().size());
}
