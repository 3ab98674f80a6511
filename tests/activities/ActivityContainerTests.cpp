// The dialogs of activities in a container of the platform's own, made by their names: nobody hears what they tell, and
// nobody executes what they submit.
#include "tests/activities/ActivityDialog.h"
#include "tests/support/AtlContainer.h"
#include "tests/support/ComRules.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class ActivityContainerTests : public ActivityDialog
{
protected:
    /// Creates the dialog in the container's window and gives it its command.
    void place(const wchar_t* dialogClass)
    {
        container.dialog = plain.create(dialogClass).as<IAppDialog>();
        call(container.dialog, &IAppDialog::putref_Command, command.as<IDispatch>().get());
    }

    /// The activity dialog, ready and with the focus, with its calls forgotten.
    void edit(long operation, long instance = 0)
    {
        arrange(operation, instance);
        place(L"KorvaneDlg.ctlEditEvents");
        ASSERT_TRUE(container.ready());
        SetFocus(textBox());
        container.pump();
        data.takeCalls();
    }

    /// The move dialog of an activity that goes to another resource.
    void move(long operation)
    {
        command = create<IAppCommand>(__uuidof(::MoveEvents));
        arrange(operation);
        let(L"EventID", 50L);
        let(L"N0", 10L);
        let(L"N1", 12L);
        place(L"KorvaneDlg.ctlMoveEvents");
    }

    bool execute() const { return fetch(command, &IAppCommand::Execute); }

    /// Lets go of dialog and command, as a host does that has destroyed their window.
    void letGo()
    {
        container.dialog.reset();
        command.reset();
    }

    void expectNothingIsHeld() const
    {
        EXPECT_FALSE(data.hasSubscribers());
        EXPECT_EQ(references(data.root.get()), 1U);
        EXPECT_EQ(canUnload(), S_OK);
    }

    AtlContainer plain{{376, 370}};
};

} // namespace

TEST_F(ActivityContainerTests, TheActivityDialogIsFilledFromTheDataLayer)
{
    edit(3);
    EXPECT_TRUE(IsChild(plain.window(), container.dialogWindow()));
    EXPECT_TRUE(container.visible(textBox()));
    EXPECT_EQ(Container::text(textBox()), L"Oil change");
    EXPECT_EQ(Container::text(types()), L"Service");
    EXPECT_DOUBLE_EQ(timeOf(picker(0)), monday + 9 * hour);
    EXPECT_DOUBLE_EQ(timeOf(picker(1)), monday + 10 * hour);
    EXPECT_THAT(treeLines(), ElementsAre(L"[ ] Drivers", L"  [x] Anna", L"  [ ] Ben", L"  [ ] Carla",
                                         L"[ ] Vans", L"  [ ] Van 1", L"  [ ] Ben"));
}

TEST_F(ActivityContainerTests, WhatIsTypedAndCheckedGoesToTheCommand)
{
    edit(3);
    SendMessageW(textBox(), EM_SETSEL, 0, -1);
    AtlContainer::type(L"Tyres");
    toggleByKey(node(L"Carla", L"Drivers"));
    EXPECT_EQ(text(L"Text"), L"Tyres");
    EXPECT_EQ(number(L"N0"), 12);
}

TEST_F(ActivityContainerTests, OkExecutesNothingAndTheHostMayStillDoSo)
{
    edit(1);
    AtlContainer::type(L"Tyres");
    Container::click(ok());
    Container::click(ok());
    Container::click(container.button(L"Cancel"));
    container.pump();
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_TRUE(container.visible(textBox()));
    EXPECT_EQ(Container::text(textBox()), L"Tyres");

    EXPECT_FALSE(execute());
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Events()",
                            "Events.Add(10, 0, 2026-11-23 09:00:00, 2026-11-23 10:00:00, \"Tyres\")",
                            "Root.Events()", "Events.SetRecurrence(100, none)"));
}

TEST_F(ActivityContainerTests, DeleteLeavesTheCommandToTheHost)
{
    edit(3);
    Container::click(deletion());
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    const long operation = fetch(command, &IAppCommand::get_Operation);
    EXPECT_EQ(operation, 2);
    execute();
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Events()", "Events.Remove(50, 0)"));
}

TEST_F(ActivityContainerTests, ThePanelOpensThoughNobodyMakesRoomForIt)
{
    edit(1);
    const int before = static_cast<int>(container.place(ok()).top);
    Container::click(repeat());
    EXPECT_TRUE(container.visible(arrows(0)));
    EXPECT_GT(container.place(ok()).top, before);
}

TEST_F(ActivityContainerTests, AQuestionStandsBeforeTheContainersWindow)
{
    data.events[0].rule = Rule{2, 0, 4, 0};
    questions.answerKey = 'N';
    edit(3, 3);
    ASSERT_EQ(questions.asked.size(), 1U);
    EXPECT_EQ(questions.asked[0].owner, plain.top());
    EXPECT_FALSE(IsWindowEnabled(repeat()));
}

TEST_F(ActivityContainerTests, AFailureOfReadyIsRaisedAndTheNextReadySucceeds)
{
    data.fail("Names.Load", locked);
    arrange(3);
    place(L"KorvaneDlg.ctlEditEvents");
    VARIANT_BOOL ready = VARIANT_TRUE;
    EXPECT_EQ(errorOf(container.dialog->get_Ready(&ready)), locked);
    EXPECT_EQ(ready, VARIANT_FALSE);
    EXPECT_EQ(data.openScopes, 0);
    EXPECT_TRUE(container.ready());
    EXPECT_EQ(treeLines().size(), 7U);
}

TEST_F(ActivityContainerTests, TheEndOfTheContainersWindowReleasesTheActivityDialog)
{
    edit(3);
    AtlContainer::type(L"x");
    const HWND dialogWindow = container.dialogWindow();
    DestroyWindow(plain.window());
    container.pump();
    EXPECT_FALSE(IsWindow(dialogWindow));
    EXPECT_EQ(container.dialogWindow(), nullptr);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    letGo();
    expectNothingIsHeld();
}

TEST_F(ActivityContainerTests, TheMoveDialogIsPreparedAndExecutesNothing)
{
    move(3);
    ASSERT_TRUE(container.ready());
    EXPECT_THAT(data.takeCalls(), testing::Contains("Events.Fetch(50, 0)"));
    const HWND line = label(L"Updating database. Please wait...");
    ASSERT_TRUE(line);
    EXPECT_TRUE(container.visible(line));
    SetFocus(container.dialogWindow());
    container.pump();
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_TRUE(container.visible(line));

    EXPECT_TRUE(execute());
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Events()", testing::StartsWith("Events.Update(50, 0, 12, 7, ")));
}

TEST_F(ActivityContainerTests, TheEndOfTheWindowAboveReleasesTheMoveDialog)
{
    move(4);
    ASSERT_TRUE(container.ready());
    data.takeCalls();
    SetFocus(container.dialogWindow());
    const HWND dialogWindow = container.dialogWindow();
    DestroyWindow(plain.top()); // before the dialog has come to execute
    container.pump();
    EXPECT_FALSE(IsWindow(dialogWindow));
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    letGo();
    expectNothingIsHeld();
}

} // namespace korvane::test
