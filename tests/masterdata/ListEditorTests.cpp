// What the dialogs of resources and activity types have in common.
#include "tests/masterdata/ListEditor.h"
#include "tests/support/ComRules.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <colordlg.h>

namespace korvane::test
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{

class ListEditorTests : public ListEditorTest, public testing::WithParamInterface<ListEditorKind>
{
protected:
    ListEditorTests() : ListEditorTest(GetParam()) {}

    /// The calls of going on with a further item after OK, but for what the command reads for it.
    std::string opening() const { return "Root.OpenScope(-1, \"Edit" + kind.name + ".Next\")"; }

    /// What was executed, with the data layer failing where it adds the new item to the group.
    void failAtJoining() { data.fail(on(".AddToGroup"), locked); }
};

INSTANTIATE_TEST_SUITE_P(EveryKind, ListEditorTests, testing::Values(resources(), activityTypes()),
                         [](const auto& tested) { return tested.param.name; });

} // namespace

// --- the list

TEST_P(ListEditorTests, TheGroupsItemsAreListedInTheirOrder)
{
    for (const long operation : {2L, 3L})
    {
        EXPECT_TRUE(show(operation));
        EXPECT_THAT(listed(), ElementsAre(L"Anna", L"Ben", L"Emil"));
        EXPECT_EQ(selected(), -1);
        container.close();
    }
}

TEST_P(ListEditorTests, TheRightToTheOperationIsAskedForEachItemWithinAScope)
{
    EXPECT_TRUE(show(2));
    const auto calls = data.takeCalls();
    const auto scope =
        std::find(calls.begin(), calls.end(), "Root.OpenScope(0, \"ctlEdit" + kind.name + ".FetchData\")");
    ASSERT_NE(scope, calls.end());
    std::vector<std::string> expected{on(".Load(4)"),         on(".HasAccess(2, 5)"), on(".HasAccess(2, 6)"),
                                      on(".HasAccess(2, 9)"), on(".HasAccess(2, 8)"), "Scope.Close(0, 0)"};
    EXPECT_EQ(
        std::vector<std::string>(calls.end() - static_cast<std::ptrdiff_t>(expected.size()), calls.end()),
        expected);
    EXPECT_EQ(data.openScopes, 0);
    const auto preparation = "Root.OpenScope(0, \"" + kind.preparation + "\")";
    EXPECT_EQ(std::count(calls.begin(), calls.end(), preparation), kind.preparation.empty() ? 0 : 1);
}

TEST_P(ListEditorTests, ForAnAdditionEverythingIsListedOnceButWhatIsInTheGroup)
{
    EXPECT_TRUE(show(1));
    EXPECT_THAT(listed(), ElementsAre(L"Cleo"));
    const auto calls = data.takeCalls();
    EXPECT_THAT(calls, Contains(on(".Load(4)")));
    EXPECT_THAT(calls, Contains(on(".Load(0)")));
    EXPECT_THAT(calls, Contains(on(".HasAccess(1, 7)")));
    EXPECT_THAT(calls, Not(Contains(on(".HasAccess(1, 5)"))));
}

TEST_P(ListEditorTests, InTheGroupOfAllEverythingIsListedInEveryOperation)
{
    edited = 0;
    for (const long operation : {1L, 2L, 3L})
    {
        command = create<IAppCommand>(kind.command);
        EXPECT_TRUE(show(operation));
        const auto calls = data.takeCalls();
        EXPECT_EQ(std::count(calls.begin(), calls.end(), on(".Load(0)")), 1);
        announce(cleo, L"Cleo", 0);
        EXPECT_THAT(listed(), ElementsAre(L"Anna", L"Ben", L"Emil", L"Cleo"));
        container.close();
    }
}

TEST_P(ListEditorTests, TheItemThatTheHostHasNamedIsSelectedAndRead)
{
    EXPECT_TRUE(show(3, ben));
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(Container::text(nameBox()), L"Ben");
    EXPECT_EQ(id(), ben);
    EXPECT_EQ(Container::text(heading()), kind.change);
    for (const std::string& call : kind.reading)
        EXPECT_THAT(data.calls, Contains(call));
}

TEST_P(ListEditorTests, TheHeadingFollowsTheOperationAndThenTheSelection)
{
    const std::pair<long, std::wstring> headings[] = {{1, kind.add}, {2, kind.remove}, {3, kind.change}};
    for (const auto& [operation, heading] : headings)
    {
        showed(operation);
        EXPECT_EQ(Container::text(this->heading()), heading);
        select(0);
        EXPECT_EQ(Container::text(this->heading()), kind.change);
        container.press(VK_SPACE, false, false, true);
        EXPECT_EQ(Container::text(this->heading()), kind.add);
        container.close();
    }
}

TEST_P(ListEditorTests, AnUnknownOperationHasNothingToShow)
{
    for (const long operation : {0L, 4L, -1L})
    {
        EXPECT_FALSE(show(operation));
        EXPECT_EQ(Container::text(heading()), L"");
        container.close();
    }
}

// --- what is shown is what is held

TEST_P(ListEditorTests, ASelectedItemIsReadWithinAScopeAndShown)
{
    showed(3);
    select(1);
    EXPECT_EQ(data.takeCalls(), kind.reading);
    EXPECT_EQ(Container::text(nameBox()), L"Ben");
    EXPECT_EQ(id(), ben);
    EXPECT_EQ(name(), L"Ben");
    select(0);
    EXPECT_EQ(id(), anna);
    EXPECT_EQ(color(), red);
    EXPECT_EQ(fillOf(shape()), red);
    EXPECT_EQ(colorOf(swatch(marked())), red);
}

TEST_P(ListEditorTests, TheItemAtHandSelectedAgainIsNotReadAgain)
{
    showed(3);
    select(1);
    data.takeCalls();
    enterName(L"Benny");
    select(1);
    EXPECT_THAT(questions.asked, IsEmpty());
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_EQ(name(), L"Benny");
}

TEST_P(ListEditorTests, AnItemThatCannotBeReadLeavesEverythingAsItWas)
{
    showed(3);
    for (const std::string& call : kind.reading)
    {
        SCOPED_TRACE(call);
        if (call.starts_with("Scope.Close"))
            continue;
        select(0);
        data.takeCalls();
        data.fail(call.substr(0, call.find('(')), locked);
        select(1);
        EXPECT_THAT(container.errors, ElementsAre(locked));
        EXPECT_EQ(selected(), 0);
        EXPECT_EQ(id(), anna);
        EXPECT_EQ(name(), L"Anna");
        EXPECT_EQ(Container::text(nameBox()), L"Anna");
        EXPECT_EQ(color(), red);
        EXPECT_EQ(data.openScopes, 0);
        container.errors.clear();
    }
}

/// The item has been read by then: it is shown whole, and not mixed with the one before.
TEST_P(ListEditorTests, AnItemWhoseScopeDoesNotCloseIsShown)
{
    showed(3);
    select(0);
    data.fail("Scope.Close", locked);
    select(1);
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(id(), ben);
    EXPECT_EQ(name(), L"Ben");
    EXPECT_EQ(Container::text(nameBox()), L"Ben");
}

/// By a user who cannot wait, while a data layer waits for its server.
TEST_P(ListEditorTests, OkWhileAnItemIsReadSavesTheOneThatIsShownAndMixesNothing)
{
    showed(3);
    select(0);
    enterName(L"Anne");
    questions.answerKey = 'Y';
    data.during = [this](const std::string& call) {
        if (!call.starts_with(on(".HasAccess")))
            return;
        data.during = nullptr;
        enterName(L"Annie");
        confirm();
    };
    select(1);
    EXPECT_EQ(container.submitted, 1);
    EXPECT_THAT(data.calls, Contains(StartsWith(on(".Update(5, \"Annie\""))));
    EXPECT_EQ(id(), 0);
    EXPECT_EQ(name(), L"");
    EXPECT_EQ(Container::text(nameBox()), L"");
    EXPECT_EQ(selected(), -1);
}

TEST_P(ListEditorTests, AnItemThatMayNotBeEditedIsRefused)
{
    showed(1);
    for (auto& each : data.names)
        each.refused.insert(3);
    for (auto& each : data.types)
        each.refused.insert(3);
    select(0);
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(container.errors.front().number & 0xFFFF, kind.name == "Names" ? 4291 : 4391);
    EXPECT_EQ(selected(), -1);
    EXPECT_EQ(id(), 0);
}

TEST_P(ListEditorTests, WhatIsEnteredIsHeldAtOnce)
{
    showed(1);
    enterName(L"Frida");
    EXPECT_EQ(name(), L"Frida");
    Container::click(swatch(3));
    EXPECT_EQ(color(), colorOf(swatch(3)));
    EXPECT_EQ(container.submitted, 0);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_P(ListEditorTests, TheNameIsSelectedWhenTheFocusComes)
{
    showed(3);
    select(1);
    SetFocus(nameBox());
    DWORD start = 9;
    DWORD end = 9;
    SendMessageW(nameBox(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0U);
    EXPECT_EQ(end, 3U);
}

TEST_P(ListEditorTests, WithNothingSelectedAnyMoreANewItemIsShown)
{
    showed(1);
    select(0);
    EXPECT_EQ(id(), cleo);
    container.press(VK_SPACE, false, false, true);
    EXPECT_EQ(selected(), -1);
    EXPECT_EQ(id(), 0);
    EXPECT_EQ(name(), L"");
    EXPECT_EQ(Container::text(nameBox()), L"");
    enterName(L"Frida");
    confirm();
    EXPECT_THAT(data.calls, Contains(StartsWith(on(".Add(\"Frida\""))));
}

// --- the question

TEST_P(ListEditorTests, SelectingAnotherItemAfterAnEditAsks)
{
    showed(3);
    select(0);
    data.takeCalls();
    enterName(L"Anne");
    questions.answerKey = 'N';
    select(1);
    ASSERT_EQ(questions.asked.size(), 1U);
    const Questions::Asked& asked = questions.asked.front();
    EXPECT_EQ(asked.text, kind.question);
    EXPECT_EQ(asked.title, L"Edit ");
    EXPECT_THAT(asked.buttons, ElementsAre(IDYES, IDNO));
    EXPECT_EQ(asked.icon, LoadIconW(nullptr, IDI_QUESTION));
    EXPECT_EQ(asked.owner, container.window());

    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(id(), anna);
    EXPECT_EQ(name(), L"Anne");
    EXPECT_EQ(Container::text(nameBox()), L"Anne");
    EXPECT_THAT(data.takeCalls(), IsEmpty());

    questions.answerKey = 'Y';
    select(1);
    EXPECT_EQ(questions.asked.size(), 2U);
    EXPECT_EQ(id(), ben);
    EXPECT_EQ(Container::text(nameBox()), L"Ben");
    select(0); // nothing was edited since
    EXPECT_EQ(questions.asked.size(), 2U);
    EXPECT_EQ(Container::text(nameBox()), L"Anna");
}

TEST_P(ListEditorTests, AChosenColourIsAnEditToo)
{
    showed(3);
    select(0);
    Container::click(swatch(5));
    questions.answerKey = 'N';
    select(1);
    EXPECT_EQ(questions.asked.size(), 1U);
    EXPECT_EQ(color(), colorOf(swatch(5)));
    chooseColor(VK_RETURN, own);
    questions.answerKey = 'N';
    select(1);
    EXPECT_EQ(color(), own);
}

TEST_P(ListEditorTests, AfterNoOnANewItemNothingIsSelectedAgain)
{
    showed(1);
    enterName(L"Frida");
    questions.answerKey = 'N';
    select(0);
    EXPECT_EQ(selected(), -1);
    EXPECT_EQ(id(), 0);
    EXPECT_EQ(name(), L"Frida");
}

TEST_P(ListEditorTests, WhatWasSelectedBeforeTheQuestionIsReadWhateverIsAnnouncedMeanwhile)
{
    showed(3);
    select(0);
    enterName(L"Anne");
    questions.answerKey = 'Y';
    questions.onAsked = [this] { notifier()->OnExecuted(nullptr, VARIANT_TRUE); };
    select(1);
    EXPECT_EQ(id(), ben);
    EXPECT_EQ(selected(), 1);
}

TEST_P(ListEditorTests, TheHostMayCloseItWhileTheQuestionIsOpen)
{
    showed(3);
    select(0);
    enterName(L"Anne");
    questions.answerKey = 'Y';
    questions.onAsked = [this] { container.close(); };
    data.takeCalls();
    select(1);
    EXPECT_FALSE(container.dialog);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

// --- OK

TEST_P(ListEditorTests, OkSavesOneItemAndGoesOnWithAFurtherNewOne)
{
    showed(1);
    Container::click(swatch(4));
    for (const wchar_t* entered : {L"Frida", L"Gerd"})
    {
        SCOPED_TRACE(narrow(entered));
        const auto before = held();
        enterName(entered);
        data.takeCalls();
        confirm();
        EXPECT_THAT(data.takeCalls(),
                    Contains(on(".Add(" + quoted(entered) + ", " + shown(colorOf(swatch(4))) +
                                (kind.name == "Names" ? ", 2)" : ", 3)"))));
        EXPECT_NE(held().get(), before.get());
        EXPECT_EQ(fetch(held(), &IAppCommand::get_Operation), 1);
        EXPECT_EQ(number(L"GroupID"), 4);
        EXPECT_EQ(Container::text(nameBox()), L"");
        EXPECT_EQ(name(), L"");
        EXPECT_EQ(id(), 0);
        EXPECT_EQ(selected(), -1);
        EXPECT_EQ(color(), colorOf(swatch(4)));
        EXPECT_EQ(fillOf(shape()), colorOf(swatch(4)));
        EXPECT_EQ(marked(), 4);
    }
    EXPECT_EQ(container.submitted, 2);
    EXPECT_THAT(container.done, IsEmpty());
    container.press(VK_ESCAPE);
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_P(ListEditorTests, TheNextCommandIsPreparedWithinAScopeOfItsOwn)
{
    showed(1);
    enterName(L"Frida");
    confirm();
    const auto& calls = data.calls;
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls.at(calls.size() - 2), opening());
    EXPECT_EQ(calls.back(), "Scope.Close(-1, 0)");
    EXPECT_EQ(data.openScopes, 0);
}

TEST_P(ListEditorTests, AnExistingItemIsAddedToTheGroupAndNothingElse)
{
    showed(1);
    select(0);
    data.takeCalls();
    confirm();
    const auto calls = data.takeCalls();
    EXPECT_THAT(calls, Contains(on(".AddToGroup(7, 4, 0)")));
    EXPECT_THAT(calls, testing::Each(Not(testing::HasSubstr(".Add("))));
    EXPECT_EQ(Container::text(heading()), kind.add);
    EXPECT_EQ(color(), own); // consecutive items keep the last colour
}

TEST_P(ListEditorTests, AnItemIsChangedWithWhatIsShown)
{
    showed(3);
    select(0);
    enterName(L"Anne");
    data.takeCalls();
    confirm();
    EXPECT_THAT(data.takeCalls(), Contains(on(".Update(5, \"Anne\", " + shown(red) +
                                              (kind.name == "Names" ? ", 2)" : ", 3)"))));
    select(1); // nothing was edited since
    EXPECT_THAT(questions.asked, IsEmpty());
}

TEST_P(ListEditorTests, RemovingNeedsASelection)
{
    showed(2);
    confirm();
    ASSERT_EQ(container.errors.size(), 1U);
    EXPECT_EQ(container.errors.front().number,
              static_cast<HRESULT>(0x80040000 + static_cast<unsigned long>(kind.nothingToRemoveCode)));
    EXPECT_EQ(container.errors.front().description, kind.nothingToRemove);
    EXPECT_FALSE(container.errors.front().source.empty());
    EXPECT_EQ(container.submitted, 0);

    select(1);
    data.takeCalls();
    confirm();
    EXPECT_THAT(data.takeCalls(), Contains(on(".RemoveFromGroup(6, 4)")));
    EXPECT_EQ(container.errors.size(), 1U);
}

TEST_P(ListEditorTests, RemovingChecksNothingElse)
{
    showed(2);
    select(1);
    enterName(L"");
    SendMessageW(nameBox(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L""));
    confirm();
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_EQ(container.submitted, 1);
}

TEST_P(ListEditorTests, ItGoesOnAlsoWhereNobodyHasExecuted)
{
    showed(1);
    enterName(L"Frida");
    container.onSubmit = [](IAppCommand&) { return false; };
    confirm();
    EXPECT_EQ(Container::text(nameBox()), L"");
    EXPECT_THAT(data.calls, Contains(opening()));
    EXPECT_THAT(container.done, IsEmpty());
}

// --- a failure of the data layer

TEST_P(ListEditorTests, AfterAFailedSaveOkTriesAgainWithEverythingThatWasEntered)
{
    showed(3);
    select(0);
    enterName(L"Anne");
    const auto before = held();
    data.fail(on(".Update"), locked);
    confirm();
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_EQ(held().get(), before.get());
    EXPECT_EQ(Container::text(nameBox()), L"Anne");
    EXPECT_EQ(selected(), 0);
    questions.answerKey = 'N';
    select(1); // what was entered is not saved yet
    EXPECT_EQ(questions.asked.size(), 1U);
    confirm();
    EXPECT_EQ(Container::text(nameBox()), L"");
    EXPECT_EQ(container.errors.size(), 1U);
}

TEST_P(ListEditorTests, AHalfMadeItemIsCompletedAndNotMadeTwice)
{
    showed(1);
    enterName(L"Frida");
    failAtJoining();
    confirm();
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_EQ(Container::text(nameBox()), L"Frida");
    EXPECT_EQ(Container::text(heading()), kind.add);
    data.takeCalls();
    confirm();
    const auto calls = data.takeCalls();
    EXPECT_THAT(calls, Contains(on(".AddToGroup(100, 4, 0)")));
    EXPECT_THAT(calls, testing::Each(Not(StartsWith(on(".Add(")))));
    EXPECT_THAT(calls, testing::Each(Not(StartsWith(on(".Update("))))); // it is stored like that
}

TEST_P(ListEditorTests, AHalfMadeItemFollowsWhatIsEnteredBeforeItIsCompleted)
{
    showed(1);
    enterName(L"Frida");
    failAtJoining();
    confirm();
    enterName(L"Frieda");
    Container::click(swatch(6));
    data.takeCalls();
    confirm();
    const auto calls = data.takeCalls();
    EXPECT_THAT(calls, testing::Each(Not(StartsWith(on(".Add(")))));
    EXPECT_THAT(calls, Contains(on(".Update(100, \"Frieda\", " + shown(colorOf(swatch(6))) +
                                   (kind.name == "Names" ? ", 2)" : ", 3)"))));
    EXPECT_THAT(calls, Contains(on(".AddToGroup(100, 4, 0)")));
    // And the next one is new again.
    enterName(L"Gerd");
    confirm();
    EXPECT_THAT(data.takeCalls(), Contains(StartsWith(on(".Add(\"Gerd\""))));
}

TEST_P(ListEditorTests, AHalfMadeItemStaysANewOneWhateverIsAnnounced)
{
    showed(1);
    enterName(L"Frida");
    failAtJoining();
    confirm();
    announce(100, L"Frida", 5);
    EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_FALSE), S_OK);
    EXPECT_EQ(selected(), -1);
    EXPECT_EQ(Container::text(nameBox()), L"Frida");
    confirm();
    EXPECT_THAT(data.calls, Contains(on(".AddToGroup(100, 4, 0)")));
    EXPECT_EQ(std::count_if(data.calls.begin(), data.calls.end(),
                            [this](const std::string& call) { return call.starts_with(on(".Add(")); }),
              1);
}

TEST_P(ListEditorTests, WhereTheNextCommandCannotBePreparedNothingIsSavedTwice)
{
    for (const std::string call : {"Root.OpenScope", "Scope.Close"})
    {
        SCOPED_TRACE(call);
        command = create<IAppCommand>(kind.command);
        showed(1);
        container.errors.clear();
        enterName(L"Frida");
        data.takeCalls();
        data.fail(call, locked);
        confirm();
        EXPECT_THAT(container.errors, ElementsAre(locked));
        EXPECT_EQ(Container::text(nameBox()), L"");
        EXPECT_EQ(id(), 0);
        EXPECT_EQ(name(), L"");
        EXPECT_NE(held().get(), command.get());
        container.close();
    }
}

TEST_P(ListEditorTests, ACommandThatTheHostGivesWhileTheNextOneIsPreparedStaysAsTheHostHasMadeIt)
{
    showed(1);
    enterName(L"Frida");
    command = create<IAppCommand>(kind.command);
    data.during = [this](const std::string& call) {
        if (!call.starts_with("Root.OpenScope"))
            return;
        data.during = nullptr;
        EXPECT_EQ(container.dialog->putref_Command(command.as<IDispatch>().get()), S_OK);
        let(kind.idOperand.c_str(), Variant(ben));
        let(kind.textOperand.c_str(), Variant(Bstr(L"Ben")));
    };
    confirm();
    EXPECT_EQ(held().get(), command.get());
    EXPECT_EQ(id(), ben);
    EXPECT_EQ(name(), L"Ben");
}

TEST_P(ListEditorTests, ReadyWhileTheContainerExecutesKeepsWhatWasEntered)
{
    showed(3);
    select(0);
    enterName(L"Anne");
    container.onSubmit = [this](IAppCommand& submitted) {
        EXPECT_TRUE(container.ready());
        VARIANT_BOOL executed = VARIANT_FALSE;
        call(ComPtr<IAppCommand>(&submitted), &IAppCommand::Execute, &executed);
        return true;
    };
    data.takeCalls();
    confirm();
    EXPECT_THAT(data.takeCalls(), Contains(StartsWith(on(".Update(5, \"Anne\""))));
}

TEST_P(ListEditorTests, WhatTheContainerIsExecutingIsNotExchanged)
{
    showed(3);
    select(0);
    enterName(L"Anne");
    questions.answerKey = 'Y';
    container.onSubmit = [this](IAppCommand& submitted) {
        select(1); // by a user who cannot wait
        EXPECT_EQ(selected(), 0);
        VARIANT_BOOL executed = VARIANT_FALSE;
        call(ComPtr<IAppCommand>(&submitted), &IAppCommand::Execute, &executed);
        return true;
    };
    data.takeCalls();
    confirm();
    EXPECT_THAT(questions.asked, IsEmpty());
    EXPECT_THAT(data.takeCalls(), Contains(StartsWith(on(".Update(5, \"Anne\""))));
}

TEST_P(ListEditorTests, WhatIsEnteredWhileTheContainerExecutesIsForTheNextOk)
{
    showed(3);
    select(0);
    enterName(L"Anne");
    data.fail(on(".Update"), locked);
    container.onSubmit = [this](IAppCommand& submitted) {
        enterName(L"Annie"); // by a user who cannot wait
        Container::click(swatch(5));
        EXPECT_EQ(colorOf(swatch(marked())), red);
        EXPECT_EQ(fillOf(shape()), red);
        fetch(ComPtr<IAppCommand>(&submitted), &IAppCommand::Execute);
        return true;
    };
    confirm();
    EXPECT_THAT(data.takeCalls(), Contains(StartsWith(on(".Update(5, \"Anne\", " + shown(red)))));
    EXPECT_EQ(Container::text(nameBox()), L"Annie");
    questions.answerKey = 'N';
    select(1); // it is not saved yet
    EXPECT_EQ(questions.asked.size(), 1U);
    confirm();
    EXPECT_THAT(data.takeCalls(), Contains(StartsWith(on(".Update(5, \"Annie\", " + shown(red)))));
}

// --- notifications and announcements

TEST_P(ListEditorTests, AnExecutionIsShownWithoutReadingTheItemAgain)
{
    showed(3);
    select(1);
    enterName(L"Benny");
    data.takeCalls();
    data.names.push_back({10, L"Frida", 4});
    data.types.push_back({10, L"Frida", 0, 4});
    EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_TRUE), S_OK);
    EXPECT_THAT(listed(), ElementsAre(L"Anna", L"Ben", L"Emil", L"Frida"));
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(Container::text(nameBox()), L"Benny");
    EXPECT_EQ(name(), L"Benny");
    EXPECT_EQ(id(), ben);
    const auto calls = data.takeCalls();
    EXPECT_THAT(calls, Contains(on(".Load(4)")));
    for (const char* other : {"Root.OpenScope", ".Fetch"})
        EXPECT_THAT(calls, testing::Each(Not(testing::HasSubstr(other))));
    questions.answerKey = 'N';
    select(0); // what was entered is not saved yet
    EXPECT_EQ(questions.asked.size(), 1U);
    EXPECT_EQ(Container::text(nameBox()), L"Benny");
}

TEST_P(ListEditorTests, TypingGoesOnWhereItWasInterrupted)
{
    showed(3);
    select(1);
    enterName(L"Ben Ny");
    SendMessageW(nameBox(), EM_SETSEL, 3, 3);
    notifier()->OnExecuted(nullptr, VARIANT_TRUE);
    container.type(L"ja");
    EXPECT_EQ(name(), L"Benja Ny");
}

TEST_P(ListEditorTests, AnItemThatIsGoneIsShownAsLongAsItIsAtHand)
{
    showed(3);
    select(1);
    std::erase_if(data.names, [](const Name& each) { return each.id == ben; });
    std::erase_if(data.types, [](const Type& each) { return each.id == ben; });
    notifier()->OnExecuted(nullptr, VARIANT_TRUE);
    EXPECT_EQ(selected(), -1);
    EXPECT_EQ(Container::text(nameBox()), L"Ben");
    EXPECT_EQ(id(), ben);
}

TEST_P(ListEditorTests, AFailureToLoadAgainIsTheCallers)
{
    showed(3);
    select(1);
    data.fail(on(".Load"), locked);
    EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_TRUE), locked.number);
    SetErrorInfo(0, nullptr);
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_EQ(Container::text(nameBox()), L"Ben");
    EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_TRUE), S_OK);
    EXPECT_EQ(selected(), 1);
}

TEST_P(ListEditorTests, WhatIsAnnouncedLaterIsListedToo)
{
    showed(3);
    select(1);
    enterName(L"Benny");
    announceClear();
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_EQ(Container::text(nameBox()), L"Benny");
    announce(6, L"Ben");
    announce(9, L"Dora"); // for whom nothing may be done
    announce(8, L"Emil");
    EXPECT_THAT(listed(), ElementsAre(L"Ben", L"Emil"));
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(name(), L"Benny");
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_P(ListEditorTests, BuiltInItemsAreNeverListed)
{
    showed(3);
    announceClear();
    const bool names = kind.name == "Names";
    announce(0, L"Zero");
    announce(1, L"One");
    EXPECT_EQ(listed(), names ? std::vector<std::wstring>{L"Zero"} : std::vector<std::wstring>{});
    if (names)
        return;
    data.types.push_back({1, L"One", 0, 4}); // one that the data layer knows of
    announce(1, L"One");
    EXPECT_THAT(listed(), ElementsAre(L"One"));
}

TEST_P(ListEditorTests, AnAnnouncementThatCannotBeHandledIsTold)
{
    showed(3);
    announceClear();
    data.fail(on(".HasAccess"), locked);
    announce(6, L"Ben");
    EXPECT_THAT(container.errors, ElementsAre(locked));
}

TEST_P(ListEditorTests, WithoutACommandAnAnnouncementIsPassedOver)
{
    showed(3);
    EXPECT_EQ(container.dialog->putref_Command(nullptr), S_OK);
    announceClear();
    announce(6, L"Ben");
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_P(ListEditorTests, WhatIsWrittenIsAnnouncedAndShown)
{
    data.announcesWrites = true;
    showed(1);
    enterName(L"Frida");
    confirm();
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_EQ(Container::text(nameBox()), L"");
    EXPECT_EQ(selected(), -1);
}

TEST_P(ListEditorTests, OfTheOtherNotificationsNothingComes)
{
    showed(3);
    EXPECT_EQ(notifier()->OnOperands(nullptr), S_OK);
    EXPECT_EQ(notifier()->OnTick(5), S_OK);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

// --- colours

TEST_P(ListEditorTests, ANewItemHasTheColourOfTheFirstSwatch)
{
    showed(1);
    EXPECT_EQ(color(), colorOf(swatch(0)));
    EXPECT_EQ(marked(), 0);
    EXPECT_EQ(fillOf(shape()), colorOf(swatch(0)));
}

TEST_P(ListEditorTests, AClickedSwatchIsFlatAndTheOthersAreRaised)
{
    showed(1);
    for (int index = 0; index < swatches; ++index)
    {
        Container::click(swatch(index));
        EXPECT_EQ(marked(), index);
        EXPECT_EQ(color(), colorOf(swatch(index)));
        EXPECT_EQ(fillOf(shape()), colorOf(swatch(index)));
    }
}

TEST_P(ListEditorTests, ASwatchIsChosenByKeyAndNamedByItsValue)
{
    showed(1);
    SetFocus(swatch(0));
    container.press(VK_RIGHT);
    container.press(VK_RIGHT);
    container.press(VK_LEFT);
    EXPECT_EQ(GetFocus(), swatch(1));
    EXPECT_EQ(marked(), 0); // the focus alone chooses nothing
    container.press(VK_SPACE);
    EXPECT_EQ(color(), colorOf(swatch(1)));
    for (int index = 2; index < swatches; ++index)
        container.press(VK_DOWN);
    EXPECT_EQ(GetFocus(), swatch(15));
    container.press(VK_RIGHT);
    EXPECT_EQ(GetFocus(), swatch(0)); // the arrows stay in the row
    for (int index = 0; index < swatches; ++index)
        EXPECT_THAT(accessibleName(swatch(index)), testing::StartsWith(L"#"));
}

TEST_P(ListEditorTests, AColourThatIsInNoSwatchMarksNone)
{
    showed(1);
    select(0);
    EXPECT_EQ(color(), own);
    EXPECT_EQ(marked(), -1);
    EXPECT_EQ(fillOf(shape()), own);
    EXPECT_EQ(fillOf(moreColors()), own);
    Container::click(swatch(2));
    EXPECT_NE(fillOf(moreColors()), own);
}

/// An item without a colour shows none, until the data are loaded the next time.
TEST_P(ListEditorTests, BlackAndNoColourAreReplacedByTheFirstSwatchWhenTheDataAreLoaded)
{
    for (const long none : {0L, -1L})
    {
        command = create<IAppCommand>(kind.command);
        for (auto& each : data.names)
            each.color = each.id == ben ? none : each.color;
        for (auto& each : data.types)
            each.color = each.id == ben ? none : each.color;
        showed(3);
        select(1);
        EXPECT_EQ(color(), none);
        EXPECT_EQ(marked(), -1);
        notifier()->OnExecuted(nullptr, VARIANT_TRUE);
        EXPECT_EQ(color(), colorOf(swatch(0)));
        EXPECT_EQ(marked(), 0);
        container.close();
    }
}

TEST_P(ListEditorTests, AnyColourIsChosenInThePlatformsDialog)
{
    showed(1);
    std::vector<bool> modeless;
    container.onModeless = [&](bool enable) { modeless.push_back(enable); };
    chooseColor(VK_RETURN, own);
    EXPECT_THAT(modeless, ElementsAre(false, true));
    EXPECT_EQ(color(), own);
    EXPECT_EQ(fillOf(shape()), own);
    EXPECT_EQ(fillOf(moreColors()), own);
    EXPECT_EQ(marked(), -1);
    EXPECT_EQ(questions.asked.back().owner, container.window());
    chooseColor(VK_RETURN); // begins with the colour at hand
    EXPECT_EQ(color(), own);
}

TEST_P(ListEditorTests, ThePlatformsDialogOpensWholeWithTheColourAtHand)
{
    showed(3);
    select(0);
    long color = 0;
    bool whole = false;
    inColorDialog(VK_ESCAPE, [&](HWND box) {
        color = typedColor(box);
        RECT dialog{};
        RECT field{};
        whole = GetWindowRect(box, &dialog) != FALSE &&
                GetWindowRect(GetDlgItem(box, COLOR_RED), &field) != FALSE && field.right < dialog.right;
    });
    EXPECT_EQ(color, red);
    EXPECT_TRUE(whole);
}

/// Also those that were put together before the user cancelled.
TEST_P(ListEditorTests, ColoursThatWerePutTogetherAreOfferedAgainAsLongAsTheApartmentLasts)
{
    const auto firstOwn = [](HWND box) {
        RECT field{};
        GetWindowRect(GetDlgItem(box, COLOR_CUSTOM1), &field);
        POINT inside{field.left + 6, field.top + 6};
        ScreenToClient(box, &inside);
        SendMessageW(box, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(inside.x, inside.y));
        SendMessageW(box, WM_LBUTTONUP, 0, MAKELPARAM(inside.x, inside.y));
    };
    showed(1);
    inColorDialog(VK_ESCAPE, [](HWND box) {
        typeColor(box, own);
        SendMessageW(box, WM_COMMAND, MAKEWPARAM(COLOR_ADD, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, COLOR_ADD)));
    });
    EXPECT_NE(color(), own);
    for (const bool lasts : {true, false})
    {
        container.close();
        command = nullptr;
        if (!lasts)
        {
            EXPECT_EQ(canUnload(), S_OK);
        }
        command = create<IAppCommand>(kind.command);
        showed(1);
        inColorDialog(VK_RETURN, firstOwn);
        EXPECT_EQ(color(), lasts ? own : static_cast<long>(RGB(255, 255, 255)));
    }
}

TEST_P(ListEditorTests, ACancelledColourDialogLeavesTheColourAndTellsNothing)
{
    showed(3);
    select(0);
    chooseColor(VK_ESCAPE, own);
    EXPECT_EQ(color(), red);
    EXPECT_EQ(fillOf(shape()), red);
    EXPECT_EQ(marked(), -1); // the agreed behaviour
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_THAT(container.done, IsEmpty());
    const auto asked = questions.asked.size();
    select(1); // nothing was edited
    EXPECT_EQ(questions.asked.size(), asked);
}

TEST_P(ListEditorTests, TheHostMayCloseItWhileTheColourDialogIsOpen)
{
    showed(1);
    questions.answerKey = VK_RETURN;
    questions.onAsked = [this] { container.close(); };
    Container::click(moreColors());
    EXPECT_FALSE(container.dialog);
}

namespace
{

struct Linear
{
    double red, green, blue;
};

double linear(unsigned part)
{
    const double value = part / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// How people see a colour who lack the cones for long, middle or short waves, by three rows of factors.
Linear seen(const Linear& color, const std::array<double, 9>& by)
{
    const auto row = [&](std::size_t first) {
        return std::clamp(by[first] * color.red + by[first + 1] * color.green + by[first + 2] * color.blue,
                          0.0, 1.0);
    };
    return {row(0), row(3), row(6)};
}

/// Lightness and the two contrasts of the eye (CIELAB), in which distances are what the eye makes of them.
std::array<double, 3> perceived(const Linear& color)
{
    const auto root = [](double value) {
        return value > 0.008856 ? std::cbrt(value) : 7.787 * value + 16.0 / 116;
    };
    const double x = root((0.4124 * color.red + 0.3576 * color.green + 0.1805 * color.blue) / 0.95047);
    const double y = root(0.2126 * color.red + 0.7152 * color.green + 0.0722 * color.blue);
    const double z = root((0.0193 * color.red + 0.1192 * color.green + 0.9505 * color.blue) / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

constexpr std::array<std::array<double, 9>, 4> eyes{{
    {1, 0, 0, 0, 1, 0, 0, 0, 1},
    {0.152286, 1.052583, -0.204868, 0.114503, 0.786281, 0.099216, -0.003882, -0.048116, 1.051998},
    {0.367322, 0.860646, -0.227968, 0.280085, 0.672501, 0.047413, -0.011820, 0.042940, 0.968881},
    {1.255528, -0.076749, -0.178779, -0.078411, 0.930809, 0.147602, 0.004733, 0.691367, 0.303900},
}};

} // namespace

TEST_P(ListEditorTests, EveryoneTellsTheSwatchesApart)
{
    constexpr double clearlyDifferent = 20; // a difference of 2.3 is one that can just be seen
    showed(1);
    for (const auto& eye : eyes)
        for (int left = 0; left < swatches; ++left)
            for (int right = 0; right < left; ++right)
            {
                const auto look = [&](int index) {
                    const auto color = static_cast<COLORREF>(colorOf(swatch(index)));
                    return perceived(seen(
                        {linear(GetRValue(color)), linear(GetGValue(color)), linear(GetBValue(color))}, eye));
                };
                const auto one = look(left);
                const auto other = look(right);
                EXPECT_GT(std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]),
                          clearlyDifferent)
                    << left << ' ' << right;
            }
}

// --- the keyboard

TEST_P(ListEditorTests, FromOpeningToOkTheKeyboardIsEnough)
{
    showed(3);
    SetFocus(list());
    container.press(VK_DOWN);
    container.press(VK_DOWN);
    EXPECT_EQ(id(), ben);
    container.press(VK_TAB);
    EXPECT_EQ(GetFocus(), nameBox());
    container.type(L"Benny");
    container.press(VK_TAB);
    container.press(VK_RIGHT);
    container.press(VK_SPACE);
    container.press(VK_RETURN);
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_THAT(data.calls, Contains(StartsWith(on(".Update(6, \"Benny\", " + shown(colorOf(swatch(1)))))));
    EXPECT_EQ(container.submitted, 1);
}

} // namespace korvane::test
