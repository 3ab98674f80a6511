// What holds for every dialog: it opens, fails, is tried again and closes at any time, and leaves nothing open.
#include "demo/host/tour/Captions.h"
#include "framework/com/Boundary.h"
#include "tests/classes/Cases.h"
#include "tests/framework/Fakes.h"
#include "tests/support/ComRules.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class DialogTests : public testing::TestWithParam<DialogCase>, public DialogOnCase
{
protected:
    DialogTests() : DialogOnCase(GetParam()) {}

    /// What the command makes of the calls of a confirmation: a dialog that goes on prepares the next command.
    static std::vector<FailingCall> ofCommand(std::vector<FailingCall> calls)
    {
        const auto next = std::find_if(calls.begin(), calls.end(), [](const FailingCall& each) {
            return each.upToTheFailure.back().starts_with("Root.OpenScope(-1");
        });
        calls.erase(next, calls.end());
        return calls;
    }

    /// The calls that a step of the use makes.
    template <class Step> std::vector<FailingCall> callsOf(Step step)
    {
        data.takeCalls();
        step();
        return eachOf(data.takeCalls());
    }

    /// Nothing has been called after the failure but the closing of scopes.
    void expectNothingAfter(const FailingCall& failing)
    {
        auto calls = data.takeCalls();
        while (calls.size() > failing.upToTheFailure.size() && calls.back() == "Scope.Close(0, 0)")
            calls.pop_back();
        EXPECT_EQ(calls, failing.upToTheFailure);
        EXPECT_EQ(data.openScopes, 0);
    }

    void fail(const FailingCall& failing) { data.failAfter(failing.name, failing.passed, locked); }
};

/// Those that a user fills in and confirms.
class FilledDialogTests : public DialogTests
{
};

std::vector<DialogCase> filledDialogs()
{
    auto cases = dialogCases();
    std::erase_if(cases, [](const DialogCase& each) { return each.runsByItself(); });
    return cases;
}

INSTANTIATE_TEST_SUITE_P(EveryDialog, DialogTests, testing::ValuesIn(dialogCases()),
                         [](const auto& tested) { return tested.param.name; });
INSTANTIATE_TEST_SUITE_P(EveryDialog, FilledDialogTests, testing::ValuesIn(filledDialogs()),
                         [](const auto& tested) { return tested.param.name; });

} // namespace

TEST_P(DialogTests, NameIsItsTitle)
{
    place();
    const auto title = fetch(container.dialog, &IAppDialog::get_Name);
    EXPECT_EQ(title, tested.title);
}

TEST_P(DialogTests, TakesItsOwnCommandOnly)
{
    place();
    std::vector<ComPtr<IDispatch>> others{create<IDispatch>(__uuidof(::Resources)),
                                          container.dialog.as<IDispatch>()};
    for (const CommandCase& each : commandCases())
        if (each.classId != tested.commandClass)
            others.push_back(create<IDispatch>(each.classId));
    for (const auto& other : others)
        EXPECT_EQ(container.dialog->putref_Command(other.get()), DISP_E_TYPEMISMATCH);
    const auto held = fetch(container.dialog, &IAppDialog::get_Command);
    EXPECT_EQ(held.get(), command.get());
}

TEST_P(DialogTests, ReadyWithoutACommandFails)
{
    container.place(tested.dialogClass, nullptr);
    VARIANT_BOOL ready = VARIANT_TRUE;
    EXPECT_EQ(container.dialog->get_Ready(&ready), E_POINTER);
    EXPECT_EQ(ready, VARIANT_FALSE);
}

TEST_P(DialogTests, ReadyReadsWithinScopesAndTellsNothing)
{
    show();
    EXPECT_EQ(data.openScopes, 0);
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_EQ(container.submitted, 0);
}

TEST_P(DialogTests, ReadAgainItShowsTheSame)
{
    show();
    const auto before = look();
    EXPECT_TRUE(container.ready());
    EXPECT_EQ(look(), before);
}

TEST_P(DialogTests, ConfirmedItSubmitsOnceAndEnds)
{
    fillIn();
    container.onSubmit = [&](IAppCommand& submitted) {
        EXPECT_EQ(&submitted, command.get());
        // What a user does who cannot wait.
        container.press(VK_RETURN);
        container.press(VK_ESCAPE);
        if (okButton())
            Container::click(okButton());
        fetch(command, &IAppCommand::Execute);
        return true;
    };
    confirm();
    if (!tested.staysOpen)
        container.press(VK_RETURN);
    container.press(VK_ESCAPE);
    EXPECT_EQ(container.submitted, 1);
    EXPECT_THAT(container.done, ElementsAre(tested.staysOpen));
    EXPECT_THAT(container.errors, IsEmpty());
}

TEST_P(DialogTests, AFailureOfReadyIsItsErrorAndNothingCanBeConfirmed)
{
    const auto calls = callsOf([&] { show(); });
    const auto whole = look();
    for (const FailingCall& failing : calls)
    {
        SCOPED_TRACE(failing.upToTheFailure.back());
        renew();
        place();
        fail(failing);
        VARIANT_BOOL ready = VARIANT_TRUE;
        const HRESULT outcome = container.dialog->get_Ready(&ready);
        EXPECT_EQ(ready, VARIANT_FALSE);
        EXPECT_EQ(SUCCEEDED(outcome), tested.relaysFailureOfLoading);
        EXPECT_EQ(failureOfReady(outcome, ready != VARIANT_FALSE), locked);
        expectNothingAfter(failing);

        // By the default key, by button and by the button's key.
        container.site->activateUi();
        container.pump();
        container.press(VK_RETURN);
        if (okButton())
        {
            Container::click(okButton());
            SetFocus(okButton());
            container.press(VK_SPACE);
        }
        EXPECT_EQ(container.submitted, 0);
        EXPECT_THAT(data.takeCalls(), IsEmpty());
        EXPECT_THAT(container.done, IsEmpty());
        // Whoever can see the dialog is told once more why he cannot confirm.
        EXPECT_EQ(std::exchange(container.errors, {}),
                  std::vector<ErrorInfo>(tested.relaysFailureOfLoading ? 3 : 0, locked));

        EXPECT_TRUE(container.ready()); // the cause is gone, and the dialog is as good as new
        EXPECT_EQ(look(), whole);
    }
}

TEST_P(DialogTests, AFailedReadyCanBeCancelled)
{
    const auto calls = callsOf([&] { show(); });
    for (const FailingCall& failing : calls)
    {
        renew();
        place();
        fail(failing);
        VARIANT_BOOL ready = VARIANT_TRUE;
        EXPECT_EQ(SUCCEEDED(container.dialog->get_Ready(&ready)), tested.relaysFailureOfLoading);
        EXPECT_EQ(ready, VARIANT_FALSE);
        container.site->activateUi();
        container.pump();
        container.press(VK_ESCAPE);
        if (!tested.runsByItself())
        {
            EXPECT_THAT(container.done, ElementsAre(true)) << failing.upToTheFailure.back();
        }
        EXPECT_EQ(container.submitted, 0);
    }
}

TEST_P(DialogTests, AFailureOfItsCommandIsToldAndLeavesEverythingAsItWas)
{
    fillIn();
    const auto calls = ofCommand(callsOf([&] { confirm(); }));
    const auto written = data.content();
    EXPECT_FALSE(calls.empty());
    for (const FailingCall& failing : calls)
    {
        SCOPED_TRACE(failing.upToTheFailure.back());
        renew();
        fillIn();
        data.takeCalls();
        const auto before = look();
        fail(failing);
        confirm();
        EXPECT_THAT(container.errors, ElementsAre(locked));
        expectNothingAfter(failing);
        if (tested.runsByItself())
        {
            EXPECT_THAT(container.done, ElementsAre(true));
            continue;
        }
        EXPECT_THAT(container.done, IsEmpty());
        EXPECT_EQ(look(), before);
        confirm();
        EXPECT_EQ(container.done, tested.doneAfterOk());
        EXPECT_EQ(container.errors.size(), 1U);
        EXPECT_EQ(data.content(), written); // as if it had not failed
    }
}

TEST_P(DialogTests, ItCanBeClosedInAnyState)
{
    const auto closes = [this](auto step) {
        step();
        end();
        EXPECT_FALSE(data.hasSubscribers());
        EXPECT_EQ(canUnload(), S_OK);
        renew();
    };
    closes([] {});
    closes([this] { place(); });
    closes([this] { show(); });
    closes([this] { activate(); });
    closes([this] { fillIn(); });
    closes([this] {
        fillIn();
        confirm();
    });
}

TEST_P(DialogTests, TheHostMayCloseItWhileItIsToldSomething)
{
    const auto failing = [this] {
        fillIn();
        const auto calls = ofCommand(callsOf([&] { confirm(); }));
        renew();
        return calls.back();
    }();
    const auto toHost = container.site->onDone;
    const auto toError = container.site->onError;
    const auto close = [this] { container.close(); };

    fillIn();
    container.site->onDone = [&](bool) { close(); };
    attempt([this] { confirm(); }); // the host ended what it was about to activate
    EXPECT_EQ(container.submitted, 1);
    if (tested.staysOpen)
        container.press(VK_ESCAPE);
    EXPECT_FALSE(container.dialog);
    container.site->onDone = toHost;

    renew();
    fillIn();
    container.site->onError = [&](HRESULT, std::wstring_view, std::wstring_view) { close(); };
    fail(failing);
    attempt([this] { confirm(); }); // the host ended what it was about to activate
    EXPECT_FALSE(container.dialog);
    container.site->onError = toError;

    renew();
    fillIn();
    container.onSubmit = [&](IAppCommand&) {
        close();
        return true;
    };
    attempt([this] { confirm(); }); // the host ended what it was about to activate
    EXPECT_FALSE(container.dialog);
}

TEST_P(DialogTests, TheHostMayCloseItWhileTheDataLayerIsAsked)
{
    const auto begin = [this] { tested.runsByItself() ? show() : activate(); };
    const auto use = [this] {
        if (!tested.runsByItself())
            tested.use(container);
        confirm();
    };
    begin();
    const auto calls = callsOf(use);
    for (std::size_t index = 0; index < calls.size(); ++index)
    {
        SCOPED_TRACE(calls[index].upToTheFailure.back());
        renew();
        begin();
        std::size_t made = 0;
        data.during = [&](const std::string&) {
            if (made++ == index)
                container.close();
        };
        attempt(use); // the user finds no dialog any more
        data.during = nullptr;
        EXPECT_FALSE(container.dialog);
    }
}

TEST_P(DialogTests, AHostsOwnTextsStandInItAndACaptionThatWasReadStays)
{
    place();
    for (const wchar_t* word : {L"first", L"second"})
    {
        const auto texts = make<HostResources>();
        texts->word = word;
        call(container.dialog, &IAppDialog::putref_Resources, texts.get());
        ASSERT_TRUE(container.ready());
        const auto title = fetch(container.dialog, &IAppDialog::get_Name);
        EXPECT_THAT(std::wstring(title.view()), testing::StartsWith(word));
        int captions = 0;
        for (const HWND window : windowsOn(container.dialogWindow()))
            if (const auto kind = classOf(window); kind == L"Static" || kind == L"Button")
                if (const std::wstring caption = Container::text(window);
                    !caption.empty() && !caption.starts_with(L'#') && !numberIn(caption)) // a colour, a count
                {
                    EXPECT_THAT(caption,
                                testing::AnyOf(testing::StartsWith(word), testing::StartsWith(L"first")));
                    ++captions;
                }
        EXPECT_GT(captions, 0);
    }
    call(container.dialog, &IAppDialog::putref_Resources, nullptr);
}

TEST_P(DialogTests, ReadyItObeysTheRulesOfCom)
{
    show();
    const auto object = container.dialog.as<IUnknown>();
    expectOneIdentity(object.get());
    expectBalancedReferences(object.get());
    expectErrorSupport(object.get());
}

TEST_P(FilledDialogTests, CancelNeverTouchesTheCommandOrTheData)
{
    fillIn();
    data.takeCalls();
    const std::string before = operands();
    container.press(VK_ESCAPE);
    EXPECT_THAT(container.done, ElementsAre(true));
    EXPECT_EQ(container.submitted, 0);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_EQ(operands(), before);
}

TEST_P(FilledDialogTests, AFailureWhileItIsFilledInIsToldAndItStaysUsable)
{
    activate();
    for (const FailingCall& failing : callsOf([&] { tested.use(container); }))
    {
        SCOPED_TRACE(failing.upToTheFailure.back());
        renew();
        activate();
        data.takeCalls();
        fail(failing);
        tested.use(container);
        EXPECT_THAT(container.errors, ElementsAre(locked));
        EXPECT_EQ(data.openScopes, 0);
        EXPECT_THAT(container.done, IsEmpty());
        if (tested.staysOpen)
            tested.use(container); // an item that could not be read is not chosen
        confirm();
        EXPECT_EQ(container.done, tested.doneAfterOk());
        EXPECT_EQ(container.errors.size(), 1U);
    }
}

class PlainContainerTests : public testing::TestWithParam<DialogCase>, public DialogOnCase
{
protected:
    PlainContainerTests() : DialogOnCase(GetParam(), {.font = false, .sink = false, .commandSite = false}) {}
};

TEST_P(PlainContainerTests, ItWorksAndRelaysNothing)
{
    fillIn();
    data.takeCalls();
    const auto content = data.content();
    confirm();
    container.press(VK_ESCAPE);
    if (!tested.staysOpen)
    {
        EXPECT_THAT(data.takeCalls(), IsEmpty());
    }
    EXPECT_EQ(data.content(), content);
    EXPECT_THAT(container.done, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(EveryDialog, PlainContainerTests, testing::ValuesIn(dialogCases()),
                         [](const auto& tested) { return tested.param.name; });

// --- the keyboard

namespace
{

/// Where a text is typed in a combo box, it is typed in a box within it.
HWND focusedControl()
{
    const HWND focus = GetFocus();
    return focus && classOf(GetParent(focus)) == L"ComboBox" ? GetParent(focus) : focus;
}

} // namespace

TEST_P(FilledDialogTests, TabReachesEveryControlAndLeadsBack)
{
    fillIn();
    // Of options, the one that is chosen can be reached.
    auto expected = usable();
    std::erase_if(expected, [](HWND window) {
        const LONG kind = GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK;
        return classOf(window) == L"Button" && (kind == BS_AUTORADIOBUTTON || kind == BS_RADIOBUTTON) &&
               SendMessageW(window, BM_GETCHECK, 0, 0) != BST_CHECKED;
    });
    ASSERT_FALSE(expected.empty());
    for (const bool back : {false, true})
    {
        std::vector<HWND> reached;
        SetFocus(expected.front());
        for (std::size_t step = 0; step < expected.size(); ++step)
        {
            reached.push_back(focusedControl());
            container.press(VK_TAB, back);
        }
        EXPECT_EQ(focusedControl(), expected.front());
        if (back)
            std::reverse(reached.begin() + 1, reached.end());
        EXPECT_EQ(reached, expected);
    }
}

TEST_P(FilledDialogTests, AccessKeysAreUniqueAndLeadToTheirControls)
{
    fillIn();
    std::map<wchar_t, std::vector<HWND>> keys;
    for (const HWND window : windowsOn(container.dialogWindow()))
    {
        const std::wstring text = Container::text(window);
        const wchar_t key = host::accessKeyOf(text);
        const bool hasCaption = classOf(window) == L"Static" || classOf(window) == L"Button";
        if (hasCaption && IsWindowVisible(window) && IsWindowEnabled(window) && key != 0)
            keys[key].push_back(window);
    }
    for (const auto& [key, windows] : keys)
    {
        SCOPED_TRACE(narrow(std::wstring(1, key)));
        if (tested.sharedKeys.find(key) != std::wstring::npos)
            continue;
        ASSERT_EQ(windows.size(), 1U);
        if (classOf(windows.front()) != L"Static")
            continue; // a button does something
        HWND named = GetWindow(windows.front(), GW_HWNDNEXT);
        while (classOf(named) == L"Static")
            named = GetWindow(named, GW_HWNDNEXT);
        SetFocus(okButton());
        container.press(static_cast<WORD>(key), false, true);
        EXPECT_EQ(focusedControl(), IsWindowEnabled(named) ? named : okButton());
    }
}

TEST_P(FilledDialogTests, ScreenReadersNameEveryTextBox)
{
    activate();
    for (const HWND window : usable())
        if (classOf(window) == L"Edit")
        {
            EXPECT_FALSE(accessibleName(window).empty());
        }
}

} // namespace korvane::test
