// What only the dialog of resources does: roles, logins and synchronisation.
#include "tests/masterdata/ListEditor.h"

#include <windowsx.h>

namespace korvane::test
{

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{

class ctlEditNamesTests : public ListEditorTest
{
protected:
    static constexpr long noUser = -1;

    ctlEditNamesTests() : ListEditorTest(resources()) {}

    HWND roles() const { return container.control(L"ComboBox"); }
    HWND logins() const { return container.control(L"ComboBox", 1); }
    HWND loginBox() const { return GetWindow(logins(), GW_CHILD); }
    HWND sync() const { return container.button(L"&Synchronize"); }
    bool synchronised() const { return Button_GetCheck(sync()) == BST_CHECKED; }

    std::vector<std::wstring> offered(HWND box) const
    {
        std::vector<std::wstring> result;
        for (int index = 0; index < ComboBox_GetCount(box); ++index)
        {
            wchar_t item[80]{};
            SendMessageW(box, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item));
            result.emplace_back(item);
        }
        return result;
    }

    void enterLogin(const wchar_t* login)
    {
        SetFocus(loginBox());
        SendMessageW(loginBox(), EM_SETSEL, 0, -1);
        SendMessageW(loginBox(), WM_CLEAR, 0, 0);
        container.type(login);
    }

    /// With the keyboard: Home, and down to the role.
    void chooseRole(int index)
    {
        SetFocus(roles());
        container.press(VK_HOME);
        for (int step = 0; step < index; ++step)
            container.press(VK_DOWN);
    }

    /// The number of the last error, without its base.
    long refusal()
    {
        if (container.errors.empty())
            return 0;
        const auto number = static_cast<unsigned long>(container.errors.back().number);
        container.errors.clear();
        return static_cast<long>(number - 0x80040000);
    }
};

} // namespace

TEST_F(ctlEditNamesTests, ReadyMakesTheseCalls)
{
    EXPECT_TRUE(show(3));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Accounts()", "Root.Names()",
                            "Root.OpenScope(0, \"ctlEditNames.FetchData\")", "Accounts.Load()",
                            "Names.Load(4)", "Names.HasAccess(3, 5)", "Names.HasAccess(3, 6)",
                            "Names.HasAccess(3, 9)", "Names.HasAccess(3, 8)", "Scope.Close(0, 0)"));
}

TEST_F(ctlEditNamesTests, OkMakesTheseCalls)
{
    showed(1);
    enterName(L"Frida");
    chooseRole(2);
    enterLogin(L"frida");
    Container::click(sync());
    confirm();
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"frida\")",
                            "Names.Add(\"Frida\", " + shown(colorOf(swatch(0))) + ", 2)",
                            "Accounts.Add(\"frida\", 3, 100)", "Names.SetSyncLogin(100, \"frida\")",
                            "Names.SetRole(100, 3)", "Names.AddToGroup(100, 4, 0)",
                            "Root.OpenScope(-1, \"EditNames.Next\")", "Scope.Close(-1, 0)"));
}

TEST_F(ctlEditNamesTests, TheNextCommandReadsWhatItsPreparationReads)
{
    showed(2);
    select(0);
    data.takeCalls();
    confirm();
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Names()", "Root.Accounts()", "Accounts.Lookup(\"anna\")",
                            "Names.RemoveFromGroup(5, 4)", "Root.OpenScope(-1, \"EditNames.Next\")",
                            "Root.Names()", "Names.Fetch(0)", "Names.HasAccess(3, 0)", "Names.GetRole(0)",
                            "Names.GetMailbox(0)", "Scope.Close(-1, 0)"));
    EXPECT_EQ(text(L"Login"), L"");
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_F(ctlEditNamesTests, TheRolesAreOfferedInTheirOrderAndNoUserIsChosen)
{
    showed(1);
    EXPECT_THAT(offered(roles()), ElementsAre(L"Administrator", L"Manager", L"User", L"No User"));
    EXPECT_EQ(ComboBox_GetCurSel(roles()), 3);
    EXPECT_EQ(number(L"Role"), noUser);
    const long numbers[] = {1, 2, 3, noUser};
    for (int index = 0; index < 4; ++index)
    {
        EXPECT_EQ(ComboBox_GetItemData(roles(), index), numbers[index]);
        chooseRole(index);
        EXPECT_EQ(number(L"Role"), numbers[index]);
    }
}

TEST_F(ctlEditNamesTests, LoginsAreOfferedButForEmptyOnes)
{
    showed(1);
    EXPECT_THAT(offered(logins()), ElementsAre(L"anna", L"guest"));
    EXPECT_EQ(ComboBox_GetItemData(logins(), 1), 32);
}

TEST_F(ctlEditNamesTests, ALoginIsTypedOrChosen)
{
    showed(1);
    enterLogin(L"frida");
    EXPECT_EQ(text(L"Login"), L"frida");
    container.press(VK_DOWN);
    EXPECT_EQ(text(L"Login"), L"anna");
    container.press(VK_DOWN);
    EXPECT_EQ(text(L"Login"), L"guest");
    EXPECT_EQ(Container::text(loginBox()), L"guest");
}

// --- what is shown is what is held

TEST_F(ctlEditNamesTests, ASelectedUserIsShownWithRoleAndLogin)
{
    showed(3);
    select(0);
    EXPECT_EQ(ComboBox_GetCurSel(roles()), 1);
    EXPECT_EQ(ComboBox_GetCurSel(logins()), 0);
    EXPECT_EQ(Container::text(loginBox()), L"anna");
    EXPECT_FALSE(synchronised());
    select(1);
    EXPECT_EQ(ComboBox_GetCurSel(roles()), 3);
    EXPECT_EQ(Container::text(loginBox()), L"");
    EXPECT_EQ(number(L"Role"), noUser);
    EXPECT_EQ(text(L"Login"), L"");
}

TEST_F(ctlEditNamesTests, ALoginThatIsNotOfferedIsShownAsText)
{
    showed(3);
    data.accounts.front().login = L"anna.andersen";
    select(0);
    EXPECT_EQ(Container::text(loginBox()), L"anna.andersen");
    EXPECT_EQ(ComboBox_GetCurSel(logins()), -1);
    EXPECT_EQ(text(L"Login"), L"anna.andersen");
}

TEST_F(ctlEditNamesTests, AMailboxIsShownAsLoginThatIsSynchronisedAndHeld)
{
    for (Name& name : data.names)
        if (name.id == anna)
            name.mailbox = L"anna@post";
    showed(3);
    select(0);
    EXPECT_TRUE(synchronised());
    EXPECT_EQ(Container::text(loginBox()), L"anna@post");
    EXPECT_EQ(text(L"Login"), L"anna@post");
    EXPECT_TRUE(toBool(get(L"Sync").get()));
    select(1);
    EXPECT_FALSE(synchronised());
    EXPECT_FALSE(toBool(get(L"Sync").get()));
}

TEST_F(ctlEditNamesTests, ARoleThatIsNotOfferedIsShownAndHeldAsNoUser)
{
    data.accounts.front().role = 7;
    showed(3);
    select(0);
    EXPECT_EQ(ComboBox_GetCurSel(roles()), 3);
    EXPECT_EQ(number(L"Role"), noUser);
}

TEST_F(ctlEditNamesTests, WhoeverChangesOnlyAColourKeepsTheRest)
{
    for (Name& name : data.names)
        if (name.id == anna)
            name.mailbox = L"anna";
    showed(3);
    select(0);
    Container::click(swatch(7));
    data.takeCalls();
    confirm();
    EXPECT_THAT(container.errors, IsEmpty());
    const auto calls = data.takeCalls();
    EXPECT_THAT(calls, Contains("Accounts.Attach(5, \"anna\")"));
    EXPECT_THAT(calls, Contains("Names.Update(5, \"Anna\", " + shown(colorOf(swatch(7))) + ", 2)"));
    EXPECT_THAT(calls, Contains("Names.SetSyncLogin(5, \"anna\")"));
    EXPECT_THAT(calls, Contains("Names.SetRole(5, 2)"));
}

TEST_F(ctlEditNamesTests, EachEntryIsAnEdit)
{
    const std::function<void()> edits[] = {[this] { chooseRole(0); }, [this] { enterLogin(L"x"); },
                                           [this] { Container::click(sync()); }};
    questions.answerKey = 'Y';
    showed(3);
    select(1);
    std::size_t asked = 0;
    for (const auto& edit : edits)
    {
        edit();
        select(0);
        EXPECT_EQ(questions.asked.size(), ++asked);
        select(1);
        EXPECT_EQ(questions.asked.size(), asked);
    }
}

TEST_F(ctlEditNamesTests, AfterOkTheNextResourceHasNoLogin)
{
    showed(1);
    enterName(L"Frida");
    chooseRole(0);
    enterLogin(L"frida");
    Container::click(sync());
    confirm();
    EXPECT_EQ(ComboBox_GetCurSel(roles()), 3);
    EXPECT_EQ(Container::text(loginBox()), L"");
    EXPECT_FALSE(synchronised());
    EXPECT_EQ(number(L"Role"), noUser);
    EXPECT_EQ(text(L"Login"), L"");
    EXPECT_FALSE(toBool(get(L"Sync").get()));
}

TEST_F(ctlEditNamesTests, ALoginIsTypedOnWhateverIsAnnouncedMeanwhile)
{
    showed(1);
    enterLogin(L"frda");
    SendMessageW(loginBox(), EM_SETSEL, 2, 2);
    data.announceClear(EventsOf::accounts);
    data.announceAccount({33, L"frank"});
    EXPECT_THAT(offered(logins()), ElementsAre(L"frank"));
    container.type(L"i");
    notifier()->OnExecuted(nullptr, VARIANT_TRUE);
    container.type(L"e");
    EXPECT_EQ(Container::text(loginBox()), L"frieda");
    EXPECT_EQ(text(L"Login"), L"frieda");
}

TEST_F(ctlEditNamesTests, AnExecutionLeavesRoleLoginAndSynchronisationAsEntered)
{
    for (Name& name : data.names)
        if (name.id == anna)
            name.mailbox = L"anna";
    showed(3);
    select(0);
    chooseRole(0);
    enterLogin(L"annie");
    Container::click(sync());
    SetFocus(nameBox());
    notifier()->OnExecuted(nullptr, VARIANT_TRUE);
    EXPECT_EQ(ComboBox_GetCurSel(roles()), 0);
    EXPECT_EQ(Container::text(loginBox()), L"annie");
    EXPECT_FALSE(synchronised());
    EXPECT_EQ(number(L"Role"), 1);
    EXPECT_EQ(text(L"Login"), L"annie");
    EXPECT_FALSE(toBool(get(L"Sync").get()));
}

TEST_F(ctlEditNamesTests, ResourcesOfOtherGroupsThatSomebodyElseLoadsAreNotListed)
{
    showed(3);
    announce(cleo, L"Cleo", 5);
    EXPECT_EQ(listed().size(), 3U);
    container.close();
    command = create<IAppCommand>(kind.command);
    showed(1);
    announce(cleo, L"Cleo", 6);
    EXPECT_THAT(listed(), ElementsAre(L"Cleo"));
    announce(cleo, L"Cleo", 4); // it is in the group now
    EXPECT_THAT(listed(), IsEmpty());
}

// --- what is refused

TEST_F(ctlEditNamesTests, TheFirstOfSeveralMistakesIsTold)
{
    for (const long operation : {1L, 3L})
    {
        command = create<IAppCommand>(kind.command);
        showed(operation);
        if (operation == 3)
            select(1);
        enterName(L"x");
        container.press(VK_BACK);
        Container::click(sync());
        chooseRole(1);
        data.takeCalls();
        confirm();
        EXPECT_EQ(refusal(), 22092);
        enterName(L"Frida");
        confirm();
        EXPECT_EQ(refusal(), 22090);
        Container::click(sync());
        confirm();
        EXPECT_EQ(refusal(), 22091);
        chooseRole(3);
        enterLogin(L"frida");
        confirm();
        EXPECT_EQ(refusal(), 22095);
        EXPECT_EQ(container.submitted, 0);
        EXPECT_THAT(data.takeCalls(), IsEmpty());
        Container::click(sync());
        confirm();
        EXPECT_EQ(refusal(), 0);
        EXPECT_EQ(container.submitted, 1);
        container.submitted = 0;
        container.close();
    }
}

TEST_F(ctlEditNamesTests, AMistakeIsToldWithNumberSourceAndTheTablesText)
{
    showed(1);
    enterName(L"Frida");
    Container::click(sync());
    confirm();
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(container.errors.front().number, static_cast<HRESULT>(0x80040000 + 22090U));
    EXPECT_FALSE(container.errors.front().source.empty());
    EXPECT_EQ(container.errors.front().description,
              L"You have selected, that the user should be synchronized to the outlook account. This is only "
              L"possible, "
              L"if you enter a valid Login name.");
    EXPECT_EQ(Container::text(nameBox()), L"Frida");
}

TEST_F(ctlEditNamesTests, ALoginWithoutARoleIsAcceptedWhereItIsSynchronised)
{
    showed(1);
    enterName(L"Frida");
    enterLogin(L"frida");
    Container::click(sync());
    confirm();
    EXPECT_EQ(refusal(), 0);
    EXPECT_THAT(data.calls, Contains("Names.SetSyncLogin(100, \"frida\")"));
    EXPECT_THAT(data.calls, Contains("Names.SetRole(100, -1)"));
}

TEST_F(ctlEditNamesTests, AnExistingResourceIsAddedWithoutAnyLookAtLoginAndRole)
{
    showed(1);
    select(0);
    chooseRole(0);
    confirm();
    EXPECT_EQ(refusal(), 0);
    EXPECT_THAT(data.calls, Contains("Names.AddToGroup(7, 4, 0)"));
}

TEST_F(ctlEditNamesTests, AlsoAnExistingResourceNeedsItsName)
{
    showed(1);
    select(0);
    enterName(L"x");
    container.press(VK_BACK);
    confirm();
    EXPECT_EQ(refusal(), 22092);
}

TEST_F(ctlEditNamesTests, RoleLoginAndSynchronisationAreExecutedAsTheyWereConfirmed)
{
    showed(3);
    select(0);
    container.onSubmit = [this](IAppCommand& submitted) {
        chooseRole(0); // by a user who cannot wait
        enterLogin(L"guest");
        Container::click(sync());
        fetch(ComPtr<IAppCommand>(&submitted), &IAppCommand::Execute);
        return true;
    };
    data.fail("Names.SetRole", locked);
    confirm();
    auto calls = data.takeCalls();
    for (const char* expected :
         {"Accounts.Attach(5, \"anna\")", "Names.SetSyncLogin(5, \"\")", "Names.SetRole(5, 2)"})
        EXPECT_THAT(calls, Contains(expected));
    container.onSubmit = [](IAppCommand& submitted) {
        fetch(ComPtr<IAppCommand>(&submitted), &IAppCommand::Execute);
        return true;
    };
    confirm(); // the next OK takes what stands there
    calls = data.takeCalls();
    for (const char* expected :
         {"Accounts.Attach(5, \"guest\")", "Names.SetSyncLogin(5, \"guest\")", "Names.SetRole(5, 1)"})
        EXPECT_THAT(calls, Contains(expected));
}

// --- completing what has failed half-way

TEST_F(ctlEditNamesTests, AHalfMadeUserKeepsLoginRoleAndSynchronisation)
{
    for (const char* failing : {"Accounts.Add", "Names.SetSyncLogin", "Names.SetRole", "Names.AddToGroup"})
    {
        SCOPED_TRACE(failing);
        command = create<IAppCommand>(kind.command);
        data.accounts.resize(1);
        data.nextId = 100;
        showed(1);
        enterName(L"Frida");
        chooseRole(2);
        enterLogin(L"frida");
        Container::click(sync());
        data.fail(failing, locked);
        confirm();
        EXPECT_THAT(container.errors, ElementsAre(locked));
        EXPECT_EQ(Container::text(loginBox()), L"frida");
        data.takeCalls();
        confirm();
        const auto calls = data.takeCalls();
        EXPECT_THAT(calls, Each(Not(StartsWith("Names.Add("))));
        EXPECT_THAT(calls, Contains("Names.SetSyncLogin(100, \"frida\")"));
        EXPECT_THAT(calls, Contains("Names.SetRole(100, 3)"));
        EXPECT_THAT(calls, Contains("Names.AddToGroup(100, 4, 0)"));
        const Account& account = data.accounts.back();
        EXPECT_EQ(account.login, L"frida");
        EXPECT_EQ(account.nameId, 100);
        container.close();
        container.errors.clear();
        std::erase_if(data.names, [](const Name& name) { return name.id == 100; });
    }
}

TEST_F(ctlEditNamesTests, AHalfMadeUserIsCheckedLikeANewOne)
{
    showed(1);
    enterName(L"Frida");
    chooseRole(2);
    enterLogin(L"frida");
    data.fail("Names.SetRole", locked);
    confirm();
    container.errors.clear();
    enterLogin(L"");
    confirm();
    EXPECT_EQ(refusal(), 22091);
}

TEST_F(ctlEditNamesTests, ALoginThatIsTakenBackBeforeTheCompletionIsGone)
{
    showed(1);
    enterName(L"Frida");
    chooseRole(2);
    enterLogin(L"frida");
    data.fail("Names.SetRole", locked);
    confirm();
    chooseRole(3);
    enterLogin(L"");
    confirm();
    EXPECT_EQ(container.errors.size(), 1U);
    EXPECT_THAT(data.calls, Contains("Accounts.Detach(100)"));
    EXPECT_THAT(data.calls, Contains("Accounts.Remove(\"frida\")"));
    EXPECT_EQ(data.accounts.size(), 3U);
}

} // namespace korvane::test
