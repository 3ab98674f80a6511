#include "framework/control/Geometry.h"
#include "tests/framework/Fakes.h"
#include "tests/support/CommandUser.h"
#include "tests/support/Container.h"

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

class ctlEditGroupsTests : public testing::Test, public CommandUser
{
protected:
    ctlEditGroupsTests() : CommandUser(create<IAppCommand>(__uuidof(::EditGroups))) {}

    void SetUp() override
    {
        data.groups = {
            {1, L"All"}, {2, L"Administration"}, {3, L"System"}, {9, L"Vans", 5}, {4, L"Drivers", 7}};
    }

    /// Gives the command its operation and operands, places the dialog and reads Ready.
    bool show(long operation, long groupId = 4)
    {
        call(command, &IAppCommand::put_Operation, operation);
        letRoot();
        let(L"GroupID", groupId);
        return container.show(__uuidof(::ctlEditGroups), command.get());
    }

    /// As show, and forgets the calls that it made.
    void showed(long operation)
    {
        ASSERT_TRUE(show(operation));
        container.site->activateUi();
        container.pump();
        data.takeCalls();
    }

    long groupId() const { return number(L"GroupID"); }

    HWND list() const { return container.control(L"ListBox"); }
    HWND ok() const { return container.button(L"OK"); }
    int selected() const { return static_cast<int>(SendMessageW(list(), LB_GETCURSEL, 0, 0)); }
    HWND nameBox() const { return container.control(L"Edit"); }
    /// The label whose caption depends on the operation; the other one names the text box.
    HWND heading() const
    {
        const HWND first = container.control(L"Static");
        return Container::text(first) == L"Na&me:" ? container.control(L"Static", 1) : first;
    }

    Container container;
};

TEST_F(ctlEditGroupsTests, ReadyForANewGroupReadsNothing)
{
    EXPECT_TRUE(show(1));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.OpenScope(0, \"ctlEditGroups.Prepare\")", "Scope.Close(0, 0)"));
    EXPECT_EQ(data.openScopes, 0);
    EXPECT_FALSE(data.hasSubscribers());
}

TEST_F(ctlEditGroupsTests, ReadyForAChangeLoadsTheGroupsWithinScopes)
{
    EXPECT_TRUE(show(3));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.OpenScope(0, \"ctlEditGroups.Prepare\")", "Root.Groups()",
                            "Groups.Fetch(4)", "Scope.Close(0, 0)",
                            "Root.OpenScope(0, \"ctlEditGroups.Init\")", "Root.Groups()", "Groups.Load()",
                            "Groups.HasAccess(3, 9)", "Groups.HasAccess(3, 4)", "Scope.Close(0, 0)"));
    EXPECT_EQ(data.openScopes, 0);
}

TEST_F(ctlEditGroupsTests, TheSizeFollowsTheLayoutOnceTheListIsLoaded)
{
    SIZE whileLoading{-1, -1};
    data.during = [&](const std::string& call) {
        if (call == "Groups.Load")
            whileLoading = container.extent;
    };
    EXPECT_TRUE(show(2)); // a shorter layout than the designed one
    data.during = nullptr;
    EXPECT_GE(whileLoading.cy, 0);
    EXPECT_NE(whileLoading.cy, container.extent.cy);
}

TEST_F(ctlEditGroupsTests, AlsoForADeletionTheRightToChangeIsAsked)
{
    EXPECT_TRUE(show(2));
    EXPECT_THAT(data.takeCalls(), testing::Contains("Groups.HasAccess(3, 9)"));
}

TEST_F(ctlEditGroupsTests, ReadyForAnUnknownOperationIsFalseAndLaysNothingOut)
{
    for (const long operation : {0L, 4L, -1L})
    {
        EXPECT_FALSE(show(operation));
        EXPECT_EQ(Container::text(heading()), L"");
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.OpenScope(0, \"ctlEditGroups.Prepare\")",
                                                  "Root.Groups()", "Groups.Fetch(4)", "Scope.Close(0, 0)"));
        container.close();
    }
}

TEST_F(ctlEditGroupsTests, TheNewLayoutHasANameAndNoList)
{
    showed(1);
    EXPECT_EQ(Container::text(heading()), L"&New group:");
    EXPECT_TRUE(container.visible(nameBox()));
    EXPECT_FALSE(container.visible(list()));
    EXPECT_EQ(Container::text(nameBox()), L"");
}

TEST_F(ctlEditGroupsTests, TheDeleteLayoutHasAListAndNoName)
{
    showed(2);
    EXPECT_EQ(Container::text(heading()), L"&Delete group:");
    EXPECT_FALSE(container.visible(nameBox()));
    EXPECT_TRUE(container.visible(list()));
}

TEST_F(ctlEditGroupsTests, TheEditLayoutHasBothAndTheNameOfTheGroup)
{
    showed(3);
    EXPECT_EQ(Container::text(heading()), L"&Edit group:");
    EXPECT_TRUE(container.visible(nameBox()));
    EXPECT_TRUE(container.visible(list()));
    EXPECT_EQ(Container::text(nameBox()), L"Drivers");
    EXPECT_LT(container.place(nameBox()).bottom, container.place(list()).top);
}

TEST_F(ctlEditGroupsTests, TheHeightIsThatOfTheVisibleFrames)
{
    // The buttons stand as far from the bottom in every layout, and frames follow one another without gaps.
    long margins[3];
    long heights[3];
    for (const long operation : {1L, 2L, 3L})
    {
        showed(operation);
        heights[operation - 1] = container.site->extent().cy;
        margins[operation - 1] = heights[operation - 1] - container.place(container.button(L"OK")).bottom;
        RECT client{};
        GetClientRect(container.dialogWindow(), &client);
        EXPECT_EQ(client.bottom, heights[operation - 1]);
        container.close();
    }
    EXPECT_EQ(margins[0], margins[1]);
    EXPECT_EQ(margins[0], margins[2]);
    // What the edit layout has more than the delete layout is the name's frame, and the new layout is that frame
    // and the buttons: without the buttons counted twice nothing is left over.
    EXPECT_GT(heights[0], heights[2] - heights[1]);
    EXPECT_LT(heights[0], heights[1]);
    EXPECT_LT(heights[1], heights[2]);
}

TEST_F(ctlEditGroupsTests, InTheDesignedFontTheHeightIsThatOfTheFramesAsDesigned)
{
    constexpr float name = 465;
    constexpr float groups = 2205;
    constexpr float buttons = 615;
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    container.site->font.reset();
    const std::pair<long, float> heights[] = {
        {1L, name + buttons}, {2L, groups + buttons}, {3L, name + groups + buttons}};
    for (const auto& [operation, height] : heights)
    {
        showed(operation);
        EXPECT_EQ(container.site->extent().cy, toPixels(height, dpi)) << operation;
        container.close();
    }
}

TEST_F(ctlEditGroupsTests, ReadAgainANewGroupStartsAnew)
{
    showed(1);
    container.type(L"Cranes");
    EXPECT_EQ(Container::text(nameBox()), L"Cranes");
    EXPECT_TRUE(container.ready());
    EXPECT_EQ(Container::text(nameBox()), L"");
}

TEST_F(ctlEditGroupsTests, ReadAgainForAnUnknownOperationTheLayoutStays)
{
    showed(2);
    const SIZE extent = container.site->extent();
    const RECT okButton = container.place(container.button(L"OK"));
    call(command, &IAppCommand::put_Operation, 9L);
    EXPECT_FALSE(container.ready());
    EXPECT_EQ(container.site->extent().cx, extent.cx);
    EXPECT_EQ(container.site->extent().cy, extent.cy);
    EXPECT_EQ(container.place(container.button(L"OK")).top, okButton.top);
    EXPECT_EQ(Container::text(heading()), L"&Delete group:");
    EXPECT_TRUE(container.visible(list()));
    EXPECT_FALSE(container.visible(nameBox()));
    EXPECT_THAT(items(list()), ElementsAre(L"Vans", L"Drivers"));
}

TEST_F(ctlEditGroupsTests, ReadAgainWithOtherTextsTitleAndHeadingFollowAndWhatTheLayoutGivesStays)
{
    showed(1);
    call(container.dialog, &IAppDialog::putref_Resources, make<HostResources>().get());
    ASSERT_TRUE(container.ready());
    EXPECT_EQ(fetch(container.dialog, &IAppDialog::get_Name), L"host text 21000");
    EXPECT_EQ(Container::text(heading()), L"host text 21001");
    for (const wchar_t* caption : {L"OK", L"Cancel"})
        EXPECT_TRUE(container.button(caption)) << caption;
    EXPECT_EQ(accessibleName(nameBox()), L"host text 21001");
    call(container.dialog, &IAppDialog::putref_Resources, nullptr);
}

TEST_F(ctlEditGroupsTests, InTheNewLayoutTheButtonsFollowTheNameDirectly)
{
    showed(3);
    const long betweenNameAndList = container.place(list()).top - container.place(nameBox()).bottom;
    container.close();
    showed(1);
    // Buttons and list stand at the same distance from the top of their frames.
    EXPECT_NEAR(container.place(container.button(L"OK")).top - container.place(nameBox()).bottom,
                betweenNameAndList, 1);
}

TEST_F(ctlEditGroupsTests, TheListKeepsTheOrderOfTheDataLayer)
{
    showed(3);
    EXPECT_THAT(items(list()), ElementsAre(L"Vans", L"Drivers"));
}

TEST_F(ctlEditGroupsTests, BuiltInGroupsAreNeverOffered)
{
    data.groups = {{1, L"All"}, {2, L"Administration"}, {3, L"System"}, {0, L"Zero"}, {-5, L"Negative"}};
    for (const long operation : {2L, 3L})
    {
        showed(operation);
        EXPECT_THAT(items(list()), IsEmpty());
        container.close();
    }
}

TEST_F(ctlEditGroupsTests, AGroupWithoutTheRightToChangeIsNotListed)
{
    data.groups[3].editable = false;
    showed(2);
    EXPECT_THAT(items(list()), ElementsAre(L"Drivers"));
}

TEST_F(ctlEditGroupsTests, ClearEmptiesTheListAndLaterAnnouncementsFillIt)
{
    showed(3);
    data.announceGroup({12, L"Cranes"});
    EXPECT_THAT(items(list()), ElementsAre(L"Vans", L"Drivers")); // no right to a group that is not there
    data.groups.push_back({12, L"Cranes"});
    data.announceGroup({12, L"Cranes"});
    EXPECT_THAT(items(list()), ElementsAre(L"Vans", L"Drivers", L"Cranes"));
    data.announceClear();
    EXPECT_THAT(items(list()), IsEmpty());
}

TEST_F(ctlEditGroupsTests, ASelectedGroupStaysSelectedWhenTheGroupsAreAnnouncedAnew)
{
    data.announcesWrites = true;
    showed(2);
    clickItem(list(), 0);
    data.groups.insert(data.groups.begin(), {12, L"Cranes"});
    call(fetch(data.root, &IRoot::get_Groups), &IGroups::SetPosition, 12L, 0L); // by somebody else
    EXPECT_THAT(items(list()), ElementsAre(L"Cranes", L"Vans", L"Drivers"));
    EXPECT_EQ(selected(), 1);
    data.takeCalls();
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), testing::Contains("Groups.Remove(9)"));
}

TEST_F(ctlEditGroupsTests, ASelectedGroupThatIsNotListedAnyMoreIsNotSubmitted)
{
    for (const long operation : {3L, 2L})
    {
        showed(operation);
        clickItem(list(), 0);
        data.announceClear();
        data.announceGroup({4, L"Drivers"});
        EXPECT_EQ(selected(), -1);
        Container::click(ok());
        RECT client{};
        GetClientRect(list(), &client);
        Container::clickAt(list(), 5, client.bottom - 3, true);
        EXPECT_EQ(container.submitted, 0);
        ASSERT_EQ(container.errors.size(), operation == 2 ? 2U : 1U);
        EXPECT_EQ(std::exchange(container.errors, {}).front().number, DISP_E_BADINDEX);

        data.announceGroup({9, L"Vans"});
        EXPECT_EQ(selected(), 1);
        Container::click(ok());
        EXPECT_EQ(std::exchange(container.submitted, 0), 1);
        container.close();
    }
}

TEST_F(ctlEditGroupsTests, SelectingAGroupFetchesIt)
{
    showed(3);
    clickItem(list(), 0);

    EXPECT_EQ(groupId(), 9);
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.OpenScope(0, \"EditGroups.FetchEdit\")", "Root.Groups()",
                                              "Groups.Fetch(9)", "Scope.Close(0, 0)"));
    EXPECT_EQ(Container::text(nameBox()), L"Vans");
}

TEST_F(ctlEditGroupsTests, TheBoxShowsTheNameThatIsListed)
{
    showed(3);
    data.announceGroup({9, L"As announced"});
    clickItem(list(), 2);
    EXPECT_EQ(Container::text(nameBox()), L"As announced");
    EXPECT_EQ(text(L"GroupName"), L"Vans");
}

TEST_F(ctlEditGroupsTests, AGroupThatCannotBeReadLeavesTheOneBeforeAndADoubleClickOnItDeletesNone)
{
    for (const long operation : {2L, 3L})
        for (const char* failing : {"Root.OpenScope", "Root.Groups", "Groups.Fetch"})
            for (const int before : {-1, 1})
            {
                SCOPED_TRACE(failing);
                showed(operation);
                if (before >= 0)
                    clickItem(list(), before);
                data.fail(failing, locked);
                clickItem(list(), 0, true);
                EXPECT_EQ(std::exchange(container.errors, {}), std::vector{locked});
                EXPECT_EQ(container.submitted, 0);
                EXPECT_EQ(groupId(), 4);
                EXPECT_EQ(selected(), before);
                EXPECT_EQ(Container::text(nameBox()), L"Drivers");
                data.takeCalls();
                Container::click(ok());
                EXPECT_EQ(std::exchange(container.submitted, 0), 1);
                EXPECT_THAT(data.takeCalls(),
                            testing::Contains(operation == 2 ? "Groups.Remove(4)"
                                                             : "Groups.Update(4, \"Drivers\", 7)"));
                container.close();
                SetUp();
            }
}

TEST_F(ctlEditGroupsTests, AGroupWhoseScopeDoesNotCloseIsSelectedWhole)
{
    showed(3);
    data.fail("Scope.Close", locked);
    clickItem(list(), 0);
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(Container::text(nameBox()), L"Vans");
    data.takeCalls();
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Update(9, \"Vans\", 5)"));
}

/// By a user who cannot wait, while a data layer waits for its server.
TEST_F(ctlEditGroupsTests, WhileAGroupIsReadNothingIsSubmittedAndNoOtherIsSelected)
{
    for (const long operation : {2L, 3L})
    {
        showed(operation);
        data.during = [this](const std::string& call) {
            if (call != "Groups.Fetch")
                return;
            data.during = nullptr;
            Container::click(ok());
            clickItem(list(), 1, true);
            EXPECT_EQ(selected(), 0);
        };
        clickItem(list(), 0);
        EXPECT_THAT(container.errors, IsEmpty());
        EXPECT_EQ(container.submitted, 0);
        EXPECT_EQ(groupId(), 9);
        EXPECT_EQ(text(L"GroupName"), L"Vans");
        EXPECT_EQ(Container::text(nameBox()), L"Vans");
        container.close();
    }
}

TEST_F(ctlEditGroupsTests, ACommandThatTheHostGivesWhileAGroupIsReadIsLeftAsItIs)
{
    for (const bool fails : {false, true})
    {
        showed(3);
        data.during = [&](const std::string& call) {
            if (call != "Groups.Fetch")
                return;
            data.during = nullptr;
            command = create<IAppCommand>(__uuidof(::EditGroups)); // nobody else holds the former one
            letRoot();
            let(L"GroupID", 4L);
            korvane::call(command, &IAppCommand::put_Operation, 3L);
            korvane::call(container.dialog, &IAppDialog::putref_Command, command.as<IDispatch>().get());
            EXPECT_TRUE(container.ready());
            if (fails)
                data.fail("Groups.Fetch", locked);
        };
        clickItem(list(), 0);
        EXPECT_EQ(groupId(), 4);
        EXPECT_EQ(text(L"GroupName"), L"Drivers");
        EXPECT_EQ(Container::text(nameBox()), L"Drivers");
        EXPECT_EQ(selected(), -1);
        container.close();
        container.errors.clear();
    }
}

TEST_F(ctlEditGroupsTests, TheArrowKeysSelectToo)
{
    showed(3);
    SetFocus(list());
    container.press(VK_DOWN);
    EXPECT_EQ(groupId(), 9);
    container.press(VK_DOWN);
    EXPECT_EQ(groupId(), 4);
    EXPECT_EQ(Container::text(nameBox()), L"Drivers");
}

TEST_F(ctlEditGroupsTests, ANewGroupIsTypedAndAdded)
{
    showed(1);
    container.type(L"Cranes");
    container.press(VK_RETURN);

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Add(\"Cranes\", 3)"));
    EXPECT_EQ(groupId(), 100);
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_F(ctlEditGroupsTests, AnEmptyNameIsHandedOverAsItIs)
{
    showed(1);
    Container::click(container.button(L"OK"));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Add(\"\", 3)"));
}

TEST_F(ctlEditGroupsTests, ARenamedGroupKeepsItsFlags)
{
    showed(3);
    clickItem(list(), 0);
    data.takeCalls();
    SetFocus(nameBox());
    SendMessageW(nameBox(), EM_SETSEL, 0, -1);
    container.type(L"Small vans");
    Container::click(container.button(L"OK"));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Update(9, \"Small vans\", 5)"));
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlEditGroupsTests, WhatTheContainerIsExecutingStaysAsItWasConfirmed)
{
    container.onSubmit = [this](IAppCommand& submitted) {
        EXPECT_TRUE(container.ready());
        if (container.visible(list()))
        {
            EXPECT_EQ(selected(), 0);
            clickItem(list(), 1, true); // by a user who cannot wait
            EXPECT_EQ(selected(), 0);
        }
        fetch(ComPtr<IAppCommand>(&submitted), &IAppCommand::Execute);
        return true;
    };
    const std::pair<long, const char*> writes[] = {
        {1, "Groups.Add(\"Cranes\", 3)"}, {3, "Groups.Update(9, \"Cranes\", 5)"}, {2, "Groups.Remove(9)"}};
    for (const auto& [operation, write] : writes)
    {
        showed(operation);
        if (operation != 1)
            clickItem(list(), 0);
        SetWindowTextW(nameBox(), L"Cranes");
        Container::click(ok());
        EXPECT_THAT(data.takeCalls(), testing::Contains(write));
        EXPECT_THAT(container.errors, IsEmpty());
        container.close();
    }
}

TEST_F(ctlEditGroupsTests, OkInTheDeleteLayoutTakesTheHiddenName)
{
    showed(2);
    clickItem(list(), 0);
    data.takeCalls();
    Container::click(container.button(L"OK"));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Remove(9)"));
    EXPECT_EQ(text(L"GroupName"), L"Vans");
}

TEST_F(ctlEditGroupsTests, DeletingWithoutASelectionUsesTheIdOfTheHost)
{
    showed(2);
    Container::click(container.button(L"OK"));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Remove(4)"));
}

TEST_F(ctlEditGroupsTests, ADoubleClickConfirmsInTheDeleteLayoutWithoutTakingTheName)
{
    showed(2);
    SetWindowTextW(nameBox(), L"not taken");
    container.onSubmit = [&](IAppCommand& submitted) {
        EXPECT_EQ(&submitted, command.get());
        EXPECT_EQ(text(L"GroupName"), L"Drivers"); // as the click has fetched it
        return true;
    };
    clickItem(list(), 1, true);

    EXPECT_EQ(container.submitted, 1);
    EXPECT_EQ(groupId(), 4);
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlEditGroupsTests, ADoubleClickInTheEditLayoutOnlySelects)
{
    showed(3);
    clickItem(list(), 0, true);
    EXPECT_EQ(groupId(), 9);
    EXPECT_EQ(container.submitted, 0);
    EXPECT_THAT(container.done, IsEmpty());
}

TEST_F(ctlEditGroupsTests, TheAnswerOfTheHostDoesNotKeepTheDialogOpen)
{
    showed(1);
    container.onSubmit = [](IAppCommand&) { return false; };
    container.press(VK_RETURN);
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlEditGroupsTests, TheLabelStandsBeforeWhatItNames)
{
    showed(2);
    EXPECT_EQ(Container::text(GetWindow(list(), GW_HWNDPREV)), L"&Delete group:");
    container.close();
    showed(1);
    EXPECT_EQ(Container::text(GetWindow(nameBox(), GW_HWNDPREV)), L"&New group:");
}

TEST_F(ctlEditGroupsTests, ScreenReadersNameTheTextBoxByItsLabel)
{
    showed(3);
    EXPECT_EQ(accessibleName(nameBox()), L"Name:");
    container.close();
    showed(1);
    EXPECT_EQ(accessibleName(nameBox()), L"New group:");
}

TEST_F(ctlEditGroupsTests, AStrayEventsFailureReachesTheErrorReport)
{
    showed(3);
    data.fail("Groups.HasAccess", locked);
    data.announceGroup({12, L"Cranes"});
    EXPECT_THAT(container.errors, ElementsAre(locked));
}

} // namespace korvane::test
