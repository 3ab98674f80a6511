#include "tests/support/CommandUser.h"
#include "tests/support/Container.h"
#include "tests/support/Questions.h"

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace
{

constexpr DATE monday = 46349; // 23 November 2026

} // namespace

class ctlMoveEventsTests : public testing::Test, public CommandUser
{
protected:
    ctlMoveEventsTests() : CommandUser(create<IAppCommand>(__uuidof(::MoveEvents))) {}

    void SetUp() override { data.events = {{50, 10, 7, monday, monday + 1, L"Tour"}}; }

    /// Links the activity of resource 10 with one of resource 12.
    void link()
    {
        data.events[0].link = 50;
        data.events.push_back({51, 12, 7, monday, monday + 1, L"Tour", 50});
    }

    bool show(long operation, long target, long instance = 0)
    {
        call(command, &IAppCommand::put_Operation, operation);
        letRoot();
        let(L"EventID", 50L);
        let(L"Instance", instance);
        let(L"N0", 10L);
        let(L"N1", target);
        let(L"T0", monday + 2);
        let(L"T1", monday + 3);
        const bool ready = container.show(__uuidof(::ctlMoveEvents), command.get());
        prepared = data.takeCalls();
        return ready;
    }

    /// Gives the dialog the focus, upon which it executes.
    std::vector<std::string> executed()
    {
        container.site->activateUi();
        container.pump();
        return data.takeCalls();
    }

    std::wstring title() const
    {
        const auto name = fetch(container.dialog, &IAppDialog::get_Name);
        return std::wstring(name.view());
    }

    Questions questions;
    Container container;
    std::vector<std::string> prepared;
};

TEST_F(ctlMoveEventsTests, NameFollowsTheOperation)
{
    show(3, 10);
    EXPECT_EQ(title(), L"Move activity");
    for (const long operation : {4L, 0L, 7L})
    {
        call(command, &IAppCommand::put_Operation, operation);
        EXPECT_EQ(title(), L"Copy activity");
    }
}

TEST_F(ctlMoveEventsTests, NameWithoutACommandIsThatOfACopy)
{
    container.place(__uuidof(::ctlMoveEvents), nullptr);
    EXPECT_EQ(title(), L"Copy activity");
}

TEST_F(ctlMoveEventsTests, ReadyPreparesTheCommandWithinAScope)
{
    EXPECT_TRUE(show(3, 10));
    EXPECT_EQ(prepared.front(), "Root.OpenScope(0, \"ctlMoveEvents.Prepare\")");
    EXPECT_EQ(prepared.back(), "Scope.Close(0, 0)");
    EXPECT_THAT(prepared, Contains("Events.Fetch(50, 0)"));
    EXPECT_THAT(prepared, Contains("EventLinks.Load(50)"));
    EXPECT_EQ(data.openScopes, 0);
    EXPECT_THAT(container.done, IsEmpty());
}

TEST_F(ctlMoveEventsTests, ShowsOneLine)
{
    EXPECT_TRUE(show(3, 10));
    EXPECT_EQ(Container::text(container.control(L"Static")), L"Updating database. Please wait...");
    EXPECT_FALSE(container.control(L"Static", 1));
    EXPECT_FALSE(container.control(L"Button"));
}

TEST_F(ctlMoveEventsTests, AnotherOperationIsNeitherPreparedNorReadyNorExecuted)
{
    for (const long operation : {0L, 1L, 2L, 5L})
    {
        EXPECT_FALSE(show(operation, 10));
        EXPECT_THAT(prepared,
                    ElementsAre("Root.OpenScope(0, \"ctlMoveEvents.Prepare\")", "Scope.Close(0, 0)"));
        EXPECT_THAT(executed(), IsEmpty());
        EXPECT_EQ(container.submitted, 0);
        container.close();
    }
}

TEST_F(ctlMoveEventsTests, IsExecutedAndDoneWhenItGetsTheFocus)
{
    EXPECT_TRUE(show(3, 12));
    EXPECT_EQ(container.submitted, 0);
    EXPECT_THAT(executed(), ElementsAre("Root.Events()", "Events.Update(50, 0, 12, 7, 2026-11-25 00:00:00, "
                                                         "2026-11-26 00:00:00, \"Tour\")"));
    EXPECT_EQ(container.submitted, 1);
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlMoveEventsTests, FocusGainedAgainExecutesNothing)
{
    EXPECT_TRUE(show(3, 12));
    executed();
    SetFocus(container.window());
    SetFocus(container.dialogWindow());
    EXPECT_THAT(executed(), IsEmpty());
    EXPECT_EQ(container.submitted, 1);
    EXPECT_EQ(container.done.size(), 1U);
}

TEST_F(ctlMoveEventsTests, AContainerThatDoesNotExecuteEndsTheDialogAsCancelled)
{
    container.onSubmit = [](IAppCommand&) { return false; };
    EXPECT_TRUE(show(3, 12));
    executed();
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_F(ctlMoveEventsTests, TheEndIsToldOnceAlsoWhereTheContainerFailsInIt)
{
    EXPECT_TRUE(show(3, 12));
    std::vector<bool> told;
    container.site->onDone = [&](bool cancelled) {
        told.push_back(cancelled);
        throw Failure(static_cast<HRESULT>(0x80043333), L"host", L"busy");
    };
    EXPECT_THAT(executed(), ElementsAre("Root.Events()", StartsWith("Events.Update(50")));
    EXPECT_THAT(container.errors, ElementsAre(ErrorInfo{static_cast<HRESULT>(0x80043333), L"host", L"busy"}));
    SetFocus(container.window());
    EXPECT_THAT(executed(), IsEmpty());
    EXPECT_THAT(told, ElementsAre(false)); // it was moved
    EXPECT_EQ(container.submitted, 1);
}

TEST_F(ctlMoveEventsTests, IsExecutedWhenItIsShownWithoutTheFocus)
{
    EXPECT_TRUE(show(3, 12));
    EXPECT_EQ(container.submitted, 0); // not before Ready has told its result
    container.pump();
    EXPECT_EQ(container.submitted, 1);
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlMoveEventsTests, IsExecutedWhenItIsReadWhileItHasTheFocus)
{
    EXPECT_FALSE(show(5, 12)); // an operation that it does not know
    EXPECT_THAT(executed(), IsEmpty());
    call(command, &IAppCommand::put_Operation, 3L);
    EXPECT_TRUE(container.ready());
    container.pump();
    EXPECT_EQ(container.submitted, 1);
}

TEST_F(ctlMoveEventsTests, AnActivityOfOneResourceIsMovedWithoutAQuestion)
{
    EXPECT_TRUE(show(3, 10));
    EXPECT_THAT(questions.asked, IsEmpty());
}

TEST_F(ctlMoveEventsTests, ACopyOfALinkedActivityAsksNothing)
{
    link();
    EXPECT_TRUE(show(4, 10));
    EXPECT_THAT(questions.asked, IsEmpty());
    EXPECT_THAT(executed(), ElementsAre("Root.Events()", StartsWith("Events.Add(10, 7")));
}

TEST_F(ctlMoveEventsTests, ALinkedActivityMovedInTimeIsAskedFor)
{
    link();
    questions.answerKey = 'Y';
    EXPECT_TRUE(show(3, 10));
    ASSERT_EQ(questions.asked.size(), 1U);
    EXPECT_EQ(questions.asked[0].title, L"Move activity");
    EXPECT_EQ(
        questions.asked[0].text,
        L"Do you want to edit the activity for all ressources or just for the selected item?\n\nClick 'Yes' "
        L"to change the activity for all items.\nClick 'No' to change the activity for this item only.");
    EXPECT_THAT(questions.asked[0].buttons, ElementsAre(IDYES, IDNO, IDCANCEL));
    EXPECT_EQ(questions.asked[0].defaultButton, IDYES);
    EXPECT_EQ(questions.asked[0].icon, LoadIconW(nullptr, IDI_QUESTION));
    EXPECT_EQ(questions.asked[0].owner, container.window());
    EXPECT_THAT(executed(), ElementsAre(StartsWith("EventLinks.UpdateLinked(50, 0, 7")));
}

TEST_F(ctlMoveEventsTests, NoMovesOnlyTheDraggedResource)
{
    link();
    questions.answerKey = 'N';
    EXPECT_TRUE(show(3, 10));
    EXPECT_THAT(executed(), ElementsAre("EventLinks.Detach(50, 10)", "Root.Events()",
                                        StartsWith("Events.Update(50, 0, 10")));
}

TEST_F(ctlMoveEventsTests, CancelAndEscapeExecuteNothing)
{
    link();
    questions.answerKey = VK_ESCAPE;
    EXPECT_FALSE(show(3, 10));
    EXPECT_EQ(questions.asked.size(), 1U);
    EXPECT_THAT(executed(), IsEmpty());
    EXPECT_EQ(container.submitted, 0);
    EXPECT_EQ(data.events[0].t0, monday);
}

TEST_F(ctlMoveEventsTests, DroppedOnAnotherResourceNothingIsAsked)
{
    link();
    EXPECT_TRUE(show(3, 11));
    EXPECT_THAT(questions.asked, IsEmpty());
    EXPECT_THAT(executed(), ElementsAre("EventLinks.Detach(50, 10)", "Root.Events()",
                                        StartsWith("Events.Update(50, 0, 11")));
}

TEST_F(ctlMoveEventsTests, WhatTheCommandWasForBeforeIsNoAnswer)
{
    link();
    call(command.as<IMoveEvents>(), &IMoveEvents::put_UpdateAll, VARIANT_TRUE);
    EXPECT_TRUE(show(3, 11));
    EXPECT_THAT(executed(), ElementsAre("EventLinks.Detach(50, 10)", "Root.Events()",
                                        StartsWith("Events.Update(50, 0, 11")));
}

TEST_F(ctlMoveEventsTests, ReadyWhileTheContainerExecutesAsksNothing)
{
    link();
    questions.answerKey = 'Y';
    EXPECT_TRUE(show(3, 10));
    questions.answerKey = 'N';
    container.onSubmit = [this](IAppCommand& submitted) {
        EXPECT_TRUE(container.ready());
        return fetch(ComPtr<IAppCommand>(&submitted), &IAppCommand::Execute);
    };
    EXPECT_THAT(executed(), ElementsAre(StartsWith("EventLinks.UpdateLinked(50, 0, 7")));
    EXPECT_EQ(questions.asked.size(), 1U);
}

TEST_F(ctlMoveEventsTests, ASingleOccurrenceIsMovedWithoutDetaching)
{
    link();
    EXPECT_TRUE(show(3, 11, 4));
    EXPECT_THAT(executed(), ElementsAre("Root.Events()", StartsWith("Events.Update(50, 4, 11")));
}

} // namespace korvane::test
