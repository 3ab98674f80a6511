// From Ready to the end: OK, Cancel, errors, and a container that does not behave.
#include "tests/framework/Fakes.h"
#include "tests/framework/TestDialog.h"
#include "tests/support/Questions.h"

#include <commctrl.h>
#include <gmock/gmock.h>

#include <algorithm>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class DialogLifeTests : public DialogTest
{
protected:
    void clickOk() { Container::click(dialog->fraCommands.cmdOk.window()); }
    void clickCancel() { Container::click(dialog->fraCommands.cmdCancel.window()); }

    bool hasToolTip(const Control& control) const
    {
        TOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.hwnd = dialog->window();
        tool.uId = reinterpret_cast<UINT_PTR>(control.window());
        return std::ranges::any_of(container.toolTips(), [&](HWND tips) {
            return SendMessageW(tips, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool)) != 0;
        });
    }
};

class PlainContainerTests : public DialogTest
{
protected:
    PlainContainerTests() : DialogTest({.font = false, .sink = false, .commandSite = false}) {}
};

} // namespace

TEST_F(DialogLifeTests, ReadyIsTheResultOfLoading)
{
    dialog->onLoad = [] { return false; };
    EXPECT_FALSE(show());
    dialog->onLoad = [] { return true; };
    EXPECT_TRUE(container.ready());
    EXPECT_EQ(dialog->loads, 2);
}

TEST_F(DialogLifeTests, AFailureOfLoadingIsThatOfReady)
{
    dialog->onLoad = []() -> bool { throw Failure(static_cast<HRESULT>(0x80041111), L"data", L"locked"); };
    place();
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(errorOf(container.dialog->get_Ready(&result)),
              (ErrorInfo{static_cast<HRESULT>(0x80041111), L"data", L"locked"}));
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_F(DialogLifeTests, TheFrameAnswersForEveryDialog)
{
    place();
    VARIANT_BOOL changed = VARIANT_FALSE;
    EXPECT_EQ(container.dialog->get_Changed(&changed), S_OK);
    EXPECT_EQ(changed, VARIANT_TRUE);
    ComPtr<IXtExecuteEvents> notifier;
    EXPECT_EQ(container.dialog->get_Notifier(notifier.put()), S_OK);
    EXPECT_FALSE(notifier);
    ComPtr<IAppCommand> edited;
    EXPECT_EQ(container.dialog->get_Command(edited.put()), S_OK);
    EXPECT_EQ(edited.get(), command->asCommand().get());
}

TEST_F(DialogLifeTests, ACommandOfAnotherClassIsATypeMismatch)
{
    place();
    const ComPtr<IDispatch> other(new NumberObject(1));
    EXPECT_EQ(container.dialog->putref_Command(other.get()), DISP_E_TYPEMISMATCH);
    ComPtr<IAppCommand> edited;
    EXPECT_EQ(container.dialog->get_Command(edited.put()), S_OK);
    EXPECT_EQ(edited.get(), command->asCommand().get());
    EXPECT_EQ(container.dialog->putref_Command(nullptr), S_OK);
    EXPECT_EQ(container.dialog->get_Command(edited.put()), S_OK);
    EXPECT_FALSE(edited);
}

TEST_F(DialogLifeTests, ResourcesAreThoseOfTheThread)
{
    const ComPtr<IResources> own(make<HostResources>().get());
    EXPECT_EQ(dialog->putref_Resources(own.get()), S_OK);
    EXPECT_EQ(CurrentResources().get(), own.get());
    ComPtr<IResources> read;
    EXPECT_EQ(make<TestDialog>()->get_Resources(read.put()), S_OK);
    EXPECT_EQ(read.get(), own.get());
}

TEST_F(DialogLifeTests, TheLibrarysResourcesComeIntoBeingWhenATextIsNeeded)
{
    place();
    ComPtr<IResources> resources;
    EXPECT_EQ(container.dialog->get_Resources(resources.put()), S_OK);
    EXPECT_FALSE(resources);
    Bstr title;
    EXPECT_EQ(container.dialog->get_Name(title.put()), S_OK);
    EXPECT_EQ(container.dialog->get_Resources(resources.put()), S_OK);
    EXPECT_TRUE(resources);
}

TEST_F(DialogLifeTests, OkTakesTheValuesSubmitsAndEnds)
{
    ASSERT_TRUE(show());
    SetWindowTextW(dialog->txtName.window(), L"Drivers");
    clickOk();
    EXPECT_EQ(command->name, L"Drivers");
    EXPECT_EQ(command->executions, 1);
    EXPECT_EQ(container.submitted, 1);
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_F(DialogLifeTests, CancelEndsAndDoesNotTouchTheCommand)
{
    ASSERT_TRUE(show());
    clickCancel();
    EXPECT_EQ(dialog->taken, 0);
    EXPECT_EQ(container.submitted, 0);
    EXPECT_EQ(command->executions, 0);
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_F(DialogLifeTests, AContainerThatRefusesTheCommandEndsTheDialogAllTheSame)
{
    container.onSubmit = [](IAppCommand&) { return false; };
    ASSERT_TRUE(show());
    clickOk();
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(DialogLifeTests, AnErrorOfTakingTheValuesIsToldAndTheDialogStays)
{
    dialog->onTake = [] { throw Failure(static_cast<HRESULT>(0x8004564C), L"ctlTest", L"no name"); };
    ASSERT_TRUE(show());
    clickOk();
    EXPECT_THAT(container.errors,
                ElementsAre(ErrorInfo{static_cast<HRESULT>(0x8004564C), L"ctlTest", L"no name"}));
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_EQ(container.submitted, 0);
    EXPECT_FALSE(errorIsLeft());

    dialog->onTake = nullptr;
    clickOk();
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_EQ(container.errors.size(), 1U);
}

TEST_F(DialogLifeTests, AnErrorOfTheExecutionIsToldAndTheDialogStays)
{
    command->onExecute = [] { throw Failure(static_cast<HRESULT>(0x80042222), L"data", L"in use"); };
    ASSERT_TRUE(show());
    clickOk();
    EXPECT_THAT(container.errors,
                ElementsAre(ErrorInfo{static_cast<HRESULT>(0x80042222), L"data", L"in use"}));
    EXPECT_THAT(container.done, IsEmpty());
    clickCancel();
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_F(DialogLifeTests, AContainerThatFailsAtTheEndIsAskedAgain)
{
    ASSERT_TRUE(show());
    const auto end = container.site->onDone;
    const auto failAtTheEnd = [](bool) { throw Failure(static_cast<HRESULT>(0x80043333), L"host", L"busy"); };
    container.site->onDone = failAtTheEnd;
    clickCancel();
    EXPECT_THAT(container.errors, ElementsAre(ErrorInfo{static_cast<HRESULT>(0x80043333), L"host", L"busy"}));
    container.site->onDone = end;
    clickCancel();
    EXPECT_THAT(container.done, ElementsAre(true));
    EXPECT_EQ(container.submitted, 0);
}

TEST_F(DialogLifeTests, WhatIsExecutedIsNotExecutedAgainForAContainerThatFailsAtTheEnd)
{
    ASSERT_TRUE(show());
    const auto end = container.site->onDone;
    container.site->onDone = [](bool) { throw Failure(E_FAIL); };
    clickOk();
    clickOk();
    EXPECT_EQ(container.errors.size(), 2U);
    container.site->onDone = end;
    clickCancel(); // the command is done, whichever way the user leaves
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_EQ(command->executions, 1);
}

TEST_F(DialogLifeTests, NothingCanBeEnteredAfterAnExecutionWhoseEndTheContainerFailsIn)
{
    ASSERT_TRUE(show());
    const auto end = container.site->onDone;
    container.site->onDone = [](bool) { throw Failure(E_FAIL); };
    SetFocus(dialog->txtName.window());
    clickOk();
    for (const Control* field :
         {static_cast<const Control*>(&dialog->txtName), static_cast<const Control*>(&dialog->cmdPlain),
          static_cast<const Control*>(&dialog->lstInner)})
        EXPECT_FALSE(IsWindowEnabled(field->window())) << field->name();
    EXPECT_TRUE(IsWindowEnabled(dialog->fraCommands.cmdOk.window()));
    EXPECT_EQ(GetFocus(), dialog->fraCommands.cmdCancel.window()); // the keyboard leads out
    dialog->cmdPlain.setEnabled(false);
    dialog->cmdPlain.setEnabled(true); // as an announcement that comes late might
    EXPECT_FALSE(IsWindowEnabled(dialog->cmdPlain.window()));
    EXPECT_EQ(dialog->taken, 1);
    clickOk();
    EXPECT_EQ(dialog->taken, 1);

    container.site->onDone = end;
    ASSERT_TRUE(container.ready()); // the host begins anew
    EXPECT_TRUE(IsWindowEnabled(dialog->txtName.window()));
    clickOk();
    EXPECT_EQ(command->executions, 2);
}

TEST_F(DialogLifeTests, ADialogThatGoesOnSubmitsAsOftenAsOkIsPressed)
{
    ASSERT_TRUE(show());
    std::vector<bool> answers;
    dialog->onSubmitted = [&](bool executed) { answers.push_back(executed); };
    clickOk();
    container.onSubmit = [](IAppCommand&) { return false; };
    clickOk();
    container.onSubmit = [](IAppCommand&) -> bool { throw Failure(E_ACCESSDENIED); };
    clickOk();
    EXPECT_THAT(answers, ElementsAre(true, false));
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_EQ(container.submitted, 3);
    clickCancel();
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_F(DialogLifeTests, AFailureOfWhatFollowsASubmissionLeavesTheDialogToTheUser)
{
    ASSERT_TRUE(show());
    dialog->onSubmitted = [](bool) { throw Failure(E_ACCESSDENIED); };
    clickOk();
    EXPECT_EQ(container.errors.size(), 1U);
    EXPECT_TRUE(IsWindowEnabled(dialog->txtName.window()));
    clickOk();
    EXPECT_EQ(container.submitted, 2);
}

TEST_F(DialogLifeTests, NothingIsSubmittedUntilAReadyHasSucceeded)
{
    dialog->onLoad = []() -> bool { throw Failure(E_ACCESSDENIED); };
    EXPECT_THROW(show(), Failure);
    clickOk();
    container.press(VK_RETURN);
    EXPECT_EQ(container.submitted, 0);
    EXPECT_EQ(dialog->taken, 0);
    clickCancel();
    EXPECT_THAT(container.done, ElementsAre(true));

    dialog->onLoad = [] { return true; };
    ASSERT_TRUE(container.ready());
    clickOk();
    EXPECT_EQ(container.submitted, 1);
}

TEST_F(DialogLifeTests, AnotherCommandBeginsAnew)
{
    ASSERT_TRUE(show());
    clickOk();
    const auto next = make<TestDialogCommand>();
    call(container.dialog, &IAppDialog::putref_Command, next.as<IDispatch>().get());
    clickOk(); // nobody has read Ready for it
    EXPECT_EQ(container.submitted, 1);
    ASSERT_TRUE(container.ready());
    clickOk();
    EXPECT_EQ(next->executions, 1);
    EXPECT_THAT(container.done, ElementsAre(false, false));
}

TEST_F(DialogLifeTests, ACommandThatIsSetWithinAReadyWantsAReadyOfItsOwn)
{
    const auto next = make<TestDialogCommand>();
    place();
    for (const bool readied : {false, true}) // at once, before the first Ready is over
    {
        bool sets = true;
        dialog->onLoad = [&] {
            if (!std::exchange(sets, false))
                return true;
            call(container.dialog, &IAppDialog::putref_Command, next.as<IDispatch>().get());
            return !readied || container.ready();
        };
        call(container.dialog, &IAppDialog::putref_Command, command.as<IDispatch>().get());
        VARIANT_BOOL result = VARIANT_TRUE;
        EXPECT_EQ(container.dialog->get_Ready(&result), E_ABORT);
        clickOk();
        EXPECT_EQ(container.submitted, 0);
    }
    dialog->onLoad = [] { return true; };
    ASSERT_TRUE(container.ready());
    clickOk();
    EXPECT_EQ(command->executions, 0);
    EXPECT_EQ(next->executions, 1);
}

TEST_F(DialogLifeTests, CommandsThatTheContainerReplacesLiveUntilWhatIsHandledIsOver)
{
    const auto next = make<TestDialogCommand>();
    const auto references = [&] { return std::pair(command->referenceCount(), next->referenceCount()); };
    const auto unheld = references();
    auto meanwhile = unheld;
    const auto replaceBoth = [&] {
        call(container.dialog, &IAppDialog::putref_Command, next.as<IDispatch>().get());
        call(container.dialog, &IAppDialog::putref_Command, nullptr);
        meanwhile = references();
    };
    const std::pair held(unheld.first + 1, unheld.second + 1);

    ASSERT_TRUE(show());
    dialog->onTake = [&] {
        replaceBoth();
        throw Failure(E_FAIL);
    };
    clickOk();
    EXPECT_EQ(meanwhile, held);
    EXPECT_EQ(references(), unheld);

    call(container.dialog, &IAppDialog::putref_Command, command.as<IDispatch>().get());
    dialog->onLoad = [&] {
        replaceBoth();
        return true;
    };
    EXPECT_THROW(container.ready(), Failure);
    EXPECT_EQ(meanwhile, held);
    EXPECT_EQ(references(), unheld);
}

TEST_F(DialogLifeTests, ACommandThatTheContainerSetsWhileItExecutesIsNotEndedWithTheFirst)
{
    ASSERT_TRUE(show());
    const auto next = make<TestDialogCommand>();
    command->onExecute = [&] {
        call(container.dialog, &IAppDialog::putref_Command, next.as<IDispatch>().get());
        container.ready();
    };
    clickOk();
    EXPECT_THAT(container.done, IsEmpty());
    clickOk();
    EXPECT_EQ(next->executions, 1);
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(DialogLifeTests, ItIsShownOnceForEachReady)
{
    ASSERT_TRUE(show());
    EXPECT_EQ(dialog->shows, 0); // not before Ready has told its result
    container.pump();
    ShowWindow(container.dialogWindow(), SW_HIDE);
    ShowWindow(container.dialogWindow(), SW_SHOWNA);
    container.pump();
    EXPECT_EQ(dialog->shows, 1);
    container.ready();
    container.pump();
    EXPECT_EQ(dialog->shows, 2);
}

TEST_F(DialogLifeTests, AQuestionHasTheDialogsTitleUnlessItHasItsOwn)
{
    ASSERT_TRUE(show());
    Questions questions;
    questions.answerKey = L'N';
    EXPECT_EQ(dialog->ask(22092, MB_YESNO), IDNO);
    EXPECT_EQ(dialog->ask(22092, MB_YESNO, 21000), IDNO);
    ASSERT_EQ(questions.asked.size(), 2U);
    EXPECT_EQ(questions.asked[0].title, L"Resource");
    EXPECT_EQ(questions.asked[1].title, L"Group");
    EXPECT_EQ(questions.asked[1].text, L"The text box name must be entered.");
}

TEST_F(DialogLifeTests, TheContainersModelessWindowsAreDisabledWhileAQuestionIsOpen)
{
    ASSERT_TRUE(show());
    std::vector<std::string> order;
    container.onModeless = [&](bool enable) { order.emplace_back(enable ? "enabled" : "disabled"); };
    Questions questions;
    questions.onAsked = [&] { order.emplace_back("asked"); };
    dialog->ask(22092, MB_OK);
    EXPECT_THAT(order, ElementsAre("disabled", "asked", "enabled"));
}

TEST_F(DialogLifeTests, AContainerThatEndsTheDialogBeforeItsQuestionIsNotAskedAnyMore)
{
    ASSERT_TRUE(show());
    container.onModeless = [this](bool) { container.close(); };
    const Questions questions;
    EXPECT_THROW(dialog->ask(22092, MB_OK), Failure);
    EXPECT_TRUE(questions.asked.empty());
}

TEST_F(DialogLifeTests, NothingIsSubmittedTwice)
{
    ASSERT_TRUE(show());
    command->onExecute = [this] {
        clickOk();
        clickCancel();
    };
    clickOk();
    EXPECT_EQ(command->executions, 1);
    EXPECT_EQ(container.submitted, 1);
    EXPECT_THAT(container.done, ElementsAre(false));
    clickOk();
    clickCancel();
    EXPECT_EQ(container.submitted, 1);
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(DialogLifeTests, AReadiedDialogMayBeSubmittedAgain)
{
    ASSERT_TRUE(show());
    clickOk();
    ASSERT_TRUE(container.ready());
    clickOk();
    EXPECT_EQ(container.submitted, 2);
    EXPECT_THAT(container.done, ElementsAre(false, false));
}

TEST_F(DialogLifeTests, AContainerMayCloseTheDialogWhenItIsDone)
{
    ASSERT_TRUE(show());
    container.site->onDone = [this](bool) { container.close(); };
    const HWND button = dialog->fraCommands.cmdCancel.window();
    dialog.reset();
    Container::click(button);
    EXPECT_FALSE(IsWindow(button));
}

TEST_F(DialogLifeTests, AContainerMayCloseTheDialogWhileItExecutes)
{
    ASSERT_TRUE(show());
    command->onExecute = [this] { container.close(); };
    const HWND button = dialog->fraCommands.cmdOk.window();
    dialog.reset();
    Container::click(button);
    EXPECT_FALSE(IsWindow(button));
    EXPECT_EQ(command->executions, 1);
}

TEST_F(DialogLifeTests, ADialogMayBeReadiedBeforeItIsActive)
{
    container.dialog = ComPtr<IAppDialog>(dialog.get());
    require(dialog->putref_Command(command.as<IDispatch>().get()));
    require(dialog->SetClientSite(container.site.get()));
    VARIANT_BOOL ready = VARIANT_FALSE;
    EXPECT_EQ(dialog->get_Ready(&ready), S_OK);
    EXPECT_EQ(ready, VARIANT_TRUE);
    const HWND box = dialog->txtName.window();
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(IsWindowVisible(box));
    SetWindowTextW(box, L"Drivers");

    container.site->host(container.dialog.as<IUnknown>());
    EXPECT_EQ(dialog->txtName.window(), box);
    EXPECT_TRUE(IsWindowVisible(box));
    EXPECT_EQ(text(dialog->txtName), L"Drivers");
    EXPECT_TRUE(IsChild(container.window(), box));
    EXPECT_TRUE(hasToolTip(dialog->txtName));
}

TEST_F(DialogLifeTests, TheToolTipsGoWithTheWindowAlsoWhereTheOneAtTheTopStays)
{
    ASSERT_TRUE(show());
    ASSERT_FALSE(container.toolTips().empty());
    DestroyWindow(dialog->window());
    EXPECT_TRUE(container.toolTips().empty());
}

TEST_F(DialogLifeTests, NothingIsPostedToAWindowThatHasGone)
{
    ASSERT_TRUE(show());
    container.pump();
    container.close();
    dialog->post(dialog->txtName, 1);
    MSG message; // of no window, it would be the host's
    EXPECT_FALSE(PeekMessageW(&message, reinterpret_cast<HWND>(-1), 0, 0, PM_REMOVE));
}

TEST_F(DialogLifeTests, WhatWasTypedSurvivesDeactivation)
{
    ASSERT_TRUE(show());
    SetWindowTextW(dialog->txtName.window(), L"Drivers");
    EXPECT_EQ(dialog->InPlaceDeactivate(), S_OK);
    EXPECT_FALSE(IsWindowVisible(dialog->txtName.window()));
    EXPECT_EQ(dialog->txtName.Text(), L"Drivers");
    const RECT place{0, 0, 100, 100};
    EXPECT_EQ(dialog->DoVerb(OLEIVERB_SHOW, nullptr, container.site.get(), 0, container.window(), &place),
              S_OK);
    EXPECT_TRUE(IsWindowVisible(dialog->txtName.window()));
    EXPECT_EQ(text(dialog->txtName), L"Drivers");
}

TEST_F(DialogLifeTests, TheWindowsGoWithTheDialog)
{
    ASSERT_TRUE(show());
    const HWND window = container.dialogWindow();
    EXPECT_TRUE(IsWindow(window));
    container.close();
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(PlainContainerTests, ADialogWorksWhereNobodyListens)
{
    ASSERT_TRUE(show());
    SetWindowTextW(dialog->txtName.window(), L"Drivers");
    Container::click(dialog->fraCommands.cmdOk.window());
    EXPECT_EQ(command->name, L"Drivers");
    EXPECT_EQ(command->executions, 0);
    EXPECT_TRUE(container.ready());
    Container::click(dialog->fraCommands.cmdCancel.window());
    EXPECT_THAT(container.done, IsEmpty());
}

TEST_F(PlainContainerTests, WithoutAFontTheLayoutIsAsDesigned)
{
    ASSERT_TRUE(show());
    EXPECT_TRUE(size() == designSize());
}

TEST_F(PlainContainerTests, OtherSizesSnapBack)
{
    ASSERT_TRUE(show());
    const RECT larger{10, 20, 900, 800};
    EXPECT_EQ(dialog->SetObjectRects(&larger, &larger), S_OK);
    EXPECT_TRUE(size() == designSize());
    const RECT smaller{0, 0, 20, 10};
    EXPECT_EQ(dialog->SetObjectRects(&smaller, &smaller), S_OK);
    EXPECT_TRUE(size() == designSize());
    EXPECT_TRUE(container.extent == designSize());
    SIZEL wanted{100, 100};
    container.extent = {};
    EXPECT_EQ(dialog->SetExtent(DVASPECT_CONTENT, &wanted), S_OK);
    EXPECT_TRUE(size() == designSize());
    EXPECT_TRUE(container.extent == designSize());
    SIZEL own{};
    EXPECT_EQ(dialog.as<IOleObject>()->GetExtent(DVASPECT_CONTENT, &own), S_OK);
    EXPECT_EQ(own.cx, toHimetric(TestDialog::designWidth));
    EXPECT_EQ(own.cy, toHimetric(TestDialog::designHeight));
}

TEST_F(PlainContainerTests, AStubbornContainerIsAskedOnceAndNoMore)
{
    int asked = 0;
    container.site->onExtent = [&](SIZE) {
        ASSERT_LT(++asked, 10) << "the dialog and its container do not come to an end";
        const RECT wrong{0, 0, 50, 50};
        dialog->SetObjectRects(&wrong, &wrong);
    };
    ASSERT_TRUE(show());
    asked = 0;
    const RECT wrong{0, 0, 50, 50};
    EXPECT_EQ(dialog->SetObjectRects(&wrong, &wrong), S_OK);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(size() == designSize());
}

} // namespace korvane::test
