// A dialog that stays open and is told what is executed, and scopes of the data layer.
#include "framework/NotifiedDialog.h"

#include "tests/framework/TestDialog.h"
#include "tests/support/RecordingData.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;

class OpenDialog final : public Dialog<OpenDialog, TestDialogCommand, NotifiedDialog, IXtExecuteEvents>
{
public:
    static const GUID* classId() noexcept { return &IID_IPersistFile; }

    OpenDialog() : Dialog(22000, 4500, 1200) {}

    using Dialog::command;
    using Dialog::replaceCommand;

    int refreshes = 0;
    std::function<void()> onRefresh = [] {};
    ComPtr<TestDialogCommand> next;
    CommandFrame fraCommands{*this, {0, 585, 4500, 615}};

private:
    bool load() override { return true; }
    void takeValues() override {}
    void submitted(bool) override
    {
        if (next)
            replaceCommand(std::move(next));
    }
    void refresh() override
    {
        ++refreshes;
        onRefresh();
    }
};

class NotifiedDialogTests : public DialogTestOf<OpenDialog>
{
protected:
    ComPtr<IXtExecuteEvents> notifier() const { return fetch(container.dialog, &IAppDialog::get_Notifier); }
};

} // namespace

TEST_F(NotifiedDialogTests, ADialogOfItsOwnIsItsNotifier)
{
    ASSERT_TRUE(show());
    ASSERT_TRUE(notifier());
    EXPECT_EQ(notifier().as<IUnknown>().get(), container.dialog.as<IUnknown>().get());
}

TEST_F(NotifiedDialogTests, WhatIsExecutedUndoneAndRedoneIsShown)
{
    ASSERT_TRUE(show());
    EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_TRUE), S_OK);
    EXPECT_EQ(notifier()->OnUndone(nullptr, VARIANT_TRUE), S_OK);
    EXPECT_EQ(notifier()->OnRedone(nullptr, VARIANT_FALSE), S_OK);
    EXPECT_EQ(dialog->refreshes, 3);
    EXPECT_EQ(notifier()->OnOperands(nullptr), S_OK);
    EXPECT_EQ(notifier()->OnTick(10), S_OK);
    EXPECT_TRUE(
        fetch(notifier(), &IXtExecuteEvents::Request, Bstr(L"topic").get(), Variant().get()).isEmpty());
    EXPECT_EQ(dialog->refreshes, 3);
}

TEST_F(NotifiedDialogTests, NothingIsShownBeforeReadyAndAfterTheEnd)
{
    place();
    EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_TRUE), S_OK);
    ASSERT_TRUE(container.ready());
    const auto told = notifier();
    Container::click(dialog->fraCommands.cmdCancel.window());
    EXPECT_EQ(told->OnExecuted(nullptr, VARIANT_TRUE), S_OK);
    EXPECT_EQ(dialog->refreshes, 0);
}

TEST_F(NotifiedDialogTests, ItsOwnExecutionIsShownToo)
{
    ASSERT_TRUE(show());
    command->onExecute = [this] { notifier()->OnExecuted(nullptr, VARIANT_TRUE); };
    Container::click(dialog->fraCommands.cmdOk.window());
    EXPECT_EQ(dialog->refreshes, 1);
}

TEST_F(NotifiedDialogTests, AFailureToShowIsTheCallers)
{
    ASSERT_TRUE(show());
    dialog->onRefresh = [] { throw Failure(E_ACCESSDENIED); };
    EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_TRUE), E_ACCESSDENIED);
}

TEST_F(NotifiedDialogTests, ADialogMayGoOnWithACommandOfItsOwn)
{
    ASSERT_TRUE(show());
    const auto next = make<TestDialogCommand>();
    dialog->next = next;
    Container::click(dialog->fraCommands.cmdOk.window());
    Container::click(dialog->fraCommands.cmdOk.window());
    EXPECT_EQ(command->executions, 1);
    EXPECT_EQ(next->executions, 1);
    EXPECT_EQ(fetch(container.dialog, &IAppDialog::get_Command).as<IUnknown>().get(),
              next.as<IUnknown>().get());
}

TEST_F(NotifiedDialogTests, CommandsThatGiveWayWhileItIsToldLiveUntilThatIsOver)
{
    const auto next = make<TestDialogCommand>();
    const auto references = [&] { return std::pair(command->referenceCount(), next->referenceCount()); };
    const auto unheld = references();
    auto meanwhile = unheld;
    ASSERT_TRUE(show());
    dialog->onRefresh = [&] {
        dialog->replaceCommand(next);
        call(container.dialog, &IAppDialog::putref_Command, nullptr);
        meanwhile = references();
    };
    EXPECT_EQ(notifier()->OnExecuted(nullptr, VARIANT_TRUE), S_OK);
    EXPECT_EQ(meanwhile, std::pair(unheld.first + 1, unheld.second + 1));
    EXPECT_EQ(references(), unheld);
}

TEST(ScopeTests, AScopeIsClosedAtTheEndOfItsStepAlsoWhereTheStepFails)
{
    RecordingData data;
    EXPECT_EQ(inScope(data.root, L"Class.Step", [] { return 7; }), 7);
    EXPECT_THROW(inScope(data.root, L"Class.Failing", [] { throw Failure(E_FAIL); }, -1), Failure);
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.OpenScope(0, \"Class.Step\")", "Scope.Close(0, 0)",
                                              "Root.OpenScope(-1, \"Class.Failing\")", "Scope.Close(-1, 0)"));
}

TEST(ScopeTests, AScopeThatCannotBeClosedIsAFailureUnlessTheStepHasFailed)
{
    RecordingData data;
    data.fail("Scope.Close", locked);
    const auto failure = attempt([&] { inScope(data.root, L"Class.Step", [] {}); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), locked.number);
    data.fail("Scope.Close", locked);
    EXPECT_EQ(attempt([&] { inScope(data.root, L"Class.Step", [] { throw Failure(E_FAIL); }); })->number(),
              E_FAIL);
}

} // namespace korvane::test
