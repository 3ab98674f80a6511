#include "tests/masterdata/CommandFixture.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr long anna = 5;
constexpr long noUser = -1;

class EditNamesTests : public CommandFixture
{
protected:
    EditNamesTests() : CommandFixture(__uuidof(::EditNames))
    {
        data.names = {{anna, L"Anna", 4, 255, 66, L"anna@office"}, {6, L"Ben", 4}};
        data.accounts = {{31, L"anna", 2, anna}, {32, L"spare", 3}};
    }

    /// What the user enters for a resource.
    void enter(const wchar_t* login, long role, bool sync = false) const
    {
        let(L"NameText", L"Dora");
        let(L"Color", Variant(9L));
        let(L"Role", Variant(role));
        let(L"Login", login);
        let(L"Sync", Variant(sync));
    }

    /// What is called to add a resource whose login was entered, and whose addition failed then, without the login.
    std::vector<std::string> takenBackAfterAFailure(const wchar_t* login)
    {
        prepare(1);
        enter(login, 2);
        data.fail("Names.SetRole", locked);
        failed(1, locked);
        enter(L"", noUser);
        return executed(1);
    }

    /// Anna as the dialog has read her.
    void prepareAnna() const
    {
        let(L"NameID", Variant(anna));
        prepare(3);
    }
};

const ErrorInfo notAuthorized{static_cast<HRESULT>(0x80040000 + 4291), L"",
                              L"You are not authorized to edit this ressource."};
const ErrorInfo superUserRefused{static_cast<HRESULT>(0x80040000 + 4899), L"",
                                 L"The 'SuperUser' account cannot be mapped to user groups."};

/// Without a source the library names the program that it runs in.
ErrorInfo here(ErrorInfo error)
{
    error.source = L"korvane_masterdata_command_tests";
    return error;
}

} // namespace

TEST_F(EditNamesTests, TheRootIsAPropertyToo)
{
    const auto names = command.as<IEditNames>();
    EXPECT_EQ(fetch(names, &IEditNames::get_Root).get(), data.root.get());
    call(names, &IEditNames::putref_Root, nullptr);
    EXPECT_EQ(get(L"Root").get().pdispVal, nullptr);
}

TEST_F(EditNamesTests, PrepareForAdditionStartsANewResourceAndLeavesItsRights)
{
    enter(L"anna", 2, true);
    let(L"NameID", Variant(anna));
    let(L"LoginID", Variant(31L));
    let(L"Mailbox", L"anna@office");

    EXPECT_TRUE(prepare(1));

    EXPECT_EQ(number(L"NameID"), 0);
    EXPECT_EQ(text(L"NameText"), L"");
    EXPECT_EQ(number(L"Color"), -1);
    EXPECT_EQ(number(L"Role"), 2);
    EXPECT_EQ(text(L"Login"), L"anna");
    EXPECT_EQ(number(L"LoginID"), 31);
    EXPECT_TRUE(toBool(get(L"Sync").get()));
    EXPECT_EQ(text(L"Mailbox"), L"anna@office");
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(EditNamesTests, PrepareForAnyOtherOperationReadsTheResource)
{
    for (const long operation : {0L, 2L, 3L, 4L, -1L})
    {
        let(L"NameID", Variant(anna));
        EXPECT_TRUE(prepare(operation));
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Names()", "Names.Fetch(5)", "Names.HasAccess(3, 5)",
                                                  "Names.GetRole(5)", "Names.GetMailbox(5)"));
        EXPECT_EQ(number(L"NameID"), anna);
        EXPECT_EQ(text(L"NameText"), L"Anna");
        EXPECT_EQ(number(L"Color"), 255);
        EXPECT_EQ(number(L"Role"), 2);
        EXPECT_EQ(text(L"Login"), L"anna");
        EXPECT_EQ(text(L"Mailbox"), L"anna@office");
    }
}

TEST_F(EditNamesTests, AResourceThatMayNotBeEditedIsRefusedBeforeAnyFieldChanges)
{
    data.names[0].refused = {3};
    enter(L"dora", 3);
    let(L"NameID", Variant(anna));
    call(command, &IAppCommand::put_Operation, 2L);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(errorOf(command->Prepare(&result)), here(notAuthorized));
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Names()", "Names.Fetch(5)", "Names.HasAccess(3, 5)"));
    EXPECT_EQ(text(L"NameText"), L"Dora");
    EXPECT_EQ(number(L"Color"), 9);
    EXPECT_EQ(number(L"Role"), 3);
    EXPECT_EQ(text(L"Login"), L"dora");
}

TEST_F(EditNamesTests, ANewResourceWithoutALoginGetsNoAccount)
{
    prepare(1);
    enter(L"", noUser);
    EXPECT_THAT(executed(1), ElementsAre("Root.Names()", "Root.Accounts()", "Names.Add(\"Dora\", 9, 2)",
                                         "Names.SetSyncLogin(100, \"\")", "Names.SetRole(100, -1)",
                                         "Names.AddToGroup(100, 4, 0)"));
    EXPECT_EQ(number(L"NameID"), 0);
    EXPECT_EQ(number(L"LoginID"), 0);
}

TEST_F(EditNamesTests, ANewResourceWithANewLoginGetsANewAccount)
{
    prepare(1);
    enter(L"dora", 2, true);
    EXPECT_THAT(executed(1), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"dora\")",
                                         "Names.Add(\"Dora\", 9, 2)", "Accounts.Add(\"dora\", 3, 100)",
                                         "Names.SetSyncLogin(100, \"dora\")", "Names.SetRole(100, 2)",
                                         "Names.AddToGroup(100, 4, 0)"));
    EXPECT_EQ(number(L"NameID"), 0);
    EXPECT_EQ(number(L"LoginID"), 101);
}

TEST_F(EditNamesTests, ANewResourceIsAttachedToAnAccountThatExists)
{
    prepare(1);
    enter(L"spare", 3);
    EXPECT_THAT(executed(1), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"spare\")",
                                         "Names.Add(\"Dora\", 9, 2)", "Accounts.Attach(100, \"spare\")",
                                         "Names.SetSyncLogin(100, \"\")", "Names.SetRole(100, 3)",
                                         "Names.AddToGroup(100, 4, 0)"));
    EXPECT_EQ(number(L"NameID"), 0);
    EXPECT_EQ(number(L"LoginID"), 32);
}

TEST_F(EditNamesTests, AResourceThatExistsIsAddedToTheGroupAndNothingElse)
{
    prepare(1);
    enter(L"dora", 3, true);
    let(L"NameID", Variant(6L));
    EXPECT_THAT(executed(1), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"dora\")",
                                         "Names.AddToGroup(6, 4, 0)"));
    EXPECT_EQ(number(L"NameID"), 6); // back to 0 after a creation only
}

TEST_F(EditNamesTests, TheSuperUserIsNotAddedToAGroup)
{
    prepare(1);
    let(L"NameID", Variant(1L));
    EXPECT_THAT(failed(1, here(superUserRefused)), ElementsAre("Root.Names()", "Root.Accounts()"));
    for (const long operation : {2L, 3L})
        EXPECT_FALSE(execute(operation)); // only additions are refused
}

TEST_F(EditNamesTests, ARemovalLooksTheLoginUpAndRemovesFromTheGroup)
{
    prepareAnna();
    data.nextUpdatedItem = 17;
    EXPECT_THAT(executed(2), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"anna\")",
                                         "Names.RemoveFromGroup(5, 4)"));
    EXPECT_EQ(number(L"NameID"), 17);
    EXPECT_EQ(number(L"LoginID"), 31);
}

TEST_F(EditNamesTests, AChangeHandsTheFlagsBackAndWritesTheRightsOfTheReturnedId)
{
    prepareAnna();
    enter(L"anna", 1, true);
    data.nextUpdatedItem = 17;
    EXPECT_THAT(executed(3), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"anna\")",
                                         "Accounts.Attach(5, \"anna\")", "Names.Update(5, \"Dora\", 9, 66)",
                                         "Names.SetSyncLogin(17, \"anna\")", "Names.SetRole(17, 1)"));
    EXPECT_EQ(number(L"NameID"), 17);
}

TEST_F(EditNamesTests, AChangedLoginThatNobodyHasGetsANewAccount)
{
    prepareAnna();
    enter(L"dora", 2);
    EXPECT_THAT(executed(3), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"dora\")",
                                         "Accounts.Add(\"dora\", 3, 5)", "Names.Update(5, \"Dora\", 9, 66)",
                                         "Names.SetSyncLogin(5, \"\")", "Names.SetRole(5, 2)"));
    EXPECT_EQ(number(L"LoginID"), 100);
}

TEST_F(EditNamesTests, ANewLoginOfNoUserGetsNoAccount)
{
    prepareAnna();
    enter(L"dora", noUser, true);
    EXPECT_THAT(executed(3), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"dora\")",
                                         "Names.Update(5, \"Dora\", 9, 66)",
                                         "Names.SetSyncLogin(5, \"dora\")", "Names.SetRole(5, -1)"));
    EXPECT_EQ(number(L"LoginID"), 0);
}

TEST_F(EditNamesTests, ALoginThatIsClearedIsDetachedAndItsAccountRemoved)
{
    prepareAnna();
    enter(L"", noUser, true);
    EXPECT_THAT(executed(3), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Detach(5)",
                                         "Accounts.Remove(\"anna\")", "Names.Update(5, \"Dora\", 9, 66)",
                                         "Names.SetSyncLogin(5, \"\")", "Names.SetRole(5, -1)"));
}

TEST_F(EditNamesTests, ANewLoginOfAnUnknownRoleGetsAnAccountAndKeepsTheRole)
{
    prepareAnna();
    enter(L"dora", -2);
    EXPECT_THAT(executed(3), ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"dora\")",
                                         "Accounts.Add(\"dora\", 3, 5)", "Names.Update(5, \"Dora\", 9, 66)",
                                         "Names.SetSyncLogin(5, \"\")", "Names.SetRole(5, -2)"));
}

TEST_F(EditNamesTests, ALoginThatIsRemovedIsNotRemovedAgainByTheNextAttempt)
{
    prepareAnna();
    enter(L"", noUser);
    data.fail("Names.Update", locked);
    EXPECT_THAT(failed(3, locked), testing::Contains("Accounts.Remove(\"anna\")"));
    data.accounts.push_back({40, L"anna", 3}); // somebody else's
    EXPECT_THAT(executed(3),
                ElementsAre("Root.Names()", "Root.Accounts()", "Names.Update(5, \"Dora\", 9, 66)",
                            "Names.SetSyncLogin(5, \"\")", "Names.SetRole(5, -1)"));
}

TEST_F(EditNamesTests, AResourceThatHadNoLoginLosesNone)
{
    let(L"NameID", Variant(6L));
    prepare(3);
    EXPECT_THAT(executed(3), ElementsAre("Root.Names()", "Root.Accounts()", "Names.Update(6, \"Ben\", 0, 2)",
                                         "Names.SetSyncLogin(6, \"\")", "Names.SetRole(6, -1)"));
}

TEST_F(EditNamesTests, ARoleBelowNoUserIsNoUserWhereNoLoginIsSet)
{
    let(L"NameID", Variant(6L));
    prepare(3);
    let(L"Role", Variant(-2L));
    EXPECT_THAT(executed(3), testing::Contains("Names.SetRole(6, -1)"));
    EXPECT_EQ(number(L"Role"), noUser);

    let(L"Role", Variant(-2L));
    let(L"Login", L"spare");
    EXPECT_THAT(executed(3), testing::Contains("Names.SetRole(6, -2)"));
}

TEST_F(EditNamesTests, SynchronisationNeedsALogin)
{
    prepare(1);
    enter(L"", noUser, true);
    EXPECT_THAT(executed(1), testing::Contains("Names.SetSyncLogin(100, \"\")"));
}

TEST_F(EditNamesTests, OnlyTheOperandWritesTheMailbox)
{
    const auto names = command.as<IEditNames>();
    let(L"Mailbox", L"anna@office");
    call(names, &IEditNames::put_NameMailbox, Bstr(L"elsewhere").get());
    EXPECT_EQ(text(L"Mailbox"), L"anna@office");
    EXPECT_EQ(fetch(names, &IEditNames::get_NameMailbox).view(), L"anna@office");
}

TEST_F(EditNamesTests, AnyOtherOperationTakesTheCollectionsOnly)
{
    prepareAnna();
    for (const long operation : {0L, 4L, -1L})
        EXPECT_THAT(executed(operation),
                    ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"anna\")"));
}

TEST_F(EditNamesTests, ACreationThatFailedHalfWayIsCompletedByTheNextAttempt)
{
    prepare(1);
    enter(L"dora", 2);
    data.fail("Accounts.Add", locked);
    failed(1, locked);
    enter(L"dora the second", 2);
    let(L"NameText", L"Dora II");
    EXPECT_THAT(executed(1),
                ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"dora the second\")",
                            "Names.Update(100, \"Dora II\", 9, 2)",
                            "Accounts.Add(\"dora the second\", 3, 100)", "Names.SetSyncLogin(100, \"\")",
                            "Names.SetRole(100, 2)", "Names.AddToGroup(100, 4, 0)"));
    EXPECT_EQ(number(L"NameID"), 0);
    EXPECT_THAT(executed(1),
                testing::Contains("Names.Add(\"Dora II\", 9, 2)")); // and the next one is another
}

TEST_F(EditNamesTests, ALoginThatIsTakenBackAfterAFailureLeavesNoAccount)
{
    EXPECT_THAT(takenBackAfterAFailure(L"dora"),
                ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Detach(100)",
                            "Accounts.Remove(\"dora\")", "Names.SetSyncLogin(100, \"\")",
                            "Names.SetRole(100, -1)", "Names.AddToGroup(100, 4, 0)"));
}

TEST_F(EditNamesTests, AnAccountThatWasThereBeforeStaysWhenItsLoginIsTakenBackAfterAFailure)
{
    EXPECT_THAT(takenBackAfterAFailure(L"spare"),
                ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Detach(100)",
                            "Names.SetSyncLogin(100, \"\")", "Names.SetRole(100, -1)",
                            "Names.AddToGroup(100, 4, 0)"));

    // What the resource is read to have is its own.
    let(L"NameID", Variant(anna));
    prepare(3);
    enter(L"", noUser);
    EXPECT_THAT(executed(3), testing::Contains("Accounts.Remove(\"anna\")"));
}

TEST_F(EditNamesTests, ALoginThatIsTakenBackIsTakenBackOnce)
{
    for (const wchar_t* login : {L"dora", L"spare"})
    {
        prepare(1);
        enter(login, 2);
        data.fail("Names.SetRole", locked);
        failed(1, locked);
        enter(L"", noUser);
        data.fail("Names.SetRole", locked);
        EXPECT_THAT(failed(1, locked), testing::Contains(testing::StartsWith("Accounts.Detach(")));
        EXPECT_THAT(executed(1), testing::Each(testing::Not(testing::StartsWith("Accounts."))));
    }
}

TEST_F(EditNamesTests, ANewResourceWithoutALoginLeavesThatOfTheOneBeforeAlone)
{
    prepare(1);
    enter(L"frida", 2);
    executed(1);
    enter(L"", noUser);
    EXPECT_THAT(executed(1), testing::Each(testing::Not(testing::StartsWith("Accounts."))));
}

} // namespace korvane::test
