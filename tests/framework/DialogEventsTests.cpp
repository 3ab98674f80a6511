// A dialog in a container of the platform's own, which hears of it through the dialog's events.
#include "tests/framework/Fakes.h"
#include "tests/framework/TestDialog.h"
#include "tests/support/AtlContainer.h"
#include "tests/support/Messages.h"
#include "tests/support/PlainObject.h"
#include "tests/support/RecordedValues.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

/// Hears a dialog's events, and answers to Submit as it is told.
class Listener final : public PlainObject<IDialogEvents>
{
public:
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                        EXCEPINFO* exception, UINT*) override
    {
        const EventArguments arguments(*parameters);
        if (onEvent)
            onEvent();
        switch (event)
        {
        case 1:
            heard.push_back(std::string("Done ") + (arguments.flag(0) ? "True" : "False"));
            return S_OK;
        case 2:
            heard.push_back("Error " + shown(arguments.number(0)) + ' ' +
                            quoted(view(arguments.text(1).get())) + ' ' +
                            quoted(view(arguments.text(2).get())));
            return S_OK;
        case 3:
            heard.push_back("Resize " + shown(arguments.number(0)) + ' ' + shown(arguments.number(1)));
            return S_OK;
        case 4:
            heard.emplace_back("Submit");
            return onSubmit ? onSubmit(parameters->rgvarg, *exception) : DISP_E_MEMBERNOTFOUND;
        default:
            return DISP_E_MEMBERNOTFOUND;
        }
    }

    std::vector<std::string> heard;
    std::function<void()> onEvent;
    /// With the arguments as they arrive, the last one first.
    std::function<HRESULT(VARIANT* arguments, EXCEPINFO& exception)> onSubmit;
};

HRESULT execute(VARIANT* arguments, EXCEPINFO&)
{
    VARIANT_BOOL result = VARIANT_FALSE;
    const HRESULT outcome = queryFor<IAppCommand>(arguments[4].pdispVal)->Execute(&result);
    *arguments[3].pboolVal = VARIANT_TRUE;
    return outcome;
}

class DialogEventsTests : public testing::Test
{
protected:
    void SetUp() override
    {
        container.attach(dialog.as<IUnknown>().get());
        call(dialog.as<IAppDialog>(), &IAppDialog::putref_Command, command.as<IDispatch>().get());
        subscribe(listener);
        ASSERT_TRUE(fetch(dialog.as<IAppDialog>(), &IAppDialog::get_Ready));
        pumpMessages();
    }

    void TearDown() override { setCurrentResources(nullptr); }

    DWORD subscribe(const ComPtr<Listener>& further) const
    {
        DWORD cookie = 0;
        call(point(), &IConnectionPoint::Advise, static_cast<IDispatch*>(further.get()), &cookie);
        return cookie;
    }

    ComPtr<IConnectionPoint> point() const
    {
        return fetch(dialog.as<IConnectionPointContainer>(), &IConnectionPointContainer::FindConnectionPoint,
                     __uuidof(IDialogEvents));
    }

    void press(WPARAM key) const
    {
        SetFocus(dialog->txtName.window());
        MSG message{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
        dialog->TranslateAccelerator(&message);
        pumpMessages();
    }

    AtlContainer container{{toPixels(TestDialog::designWidth, 96), toPixels(TestDialog::designHeight, 96)}};
    ComPtr<TestDialogCommand> command = make<TestDialogCommand>();
    ComPtr<TestDialog> dialog = make<TestDialog>();
    ComPtr<Listener> listener{new Listener};
};

} // namespace

TEST_F(DialogEventsTests, EnterSubmitsTheCommandAndTellsTheEnd)
{
    listener->onSubmit = execute;
    press(VK_RETURN);
    EXPECT_EQ(command->executions, 1);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Submit", "Done False"));
}

TEST_F(DialogEventsTests, EscapeTellsTheEndAlone)
{
    press(VK_ESCAPE);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Done True"));
}

TEST_F(DialogEventsTests, TheSizeIsToldInPixels)
{
    dialog->setSize(6000, 3000);
    dialog->raiseResize();
    EXPECT_THAT(listener->heard, testing::ElementsAre("Resize " + shown(toPixels(6000, dialog->dpi())) + ' ' +
                                                      shown(toPixels(3000, dialog->dpi()))));
}

TEST_F(DialogEventsTests, AnErrorOfTheDialogIsTold)
{
    dialog->onTake = [] { throw Failure(E_FAIL, L"test", L"refused"); };
    press(VK_RETURN);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Error " + shown(E_FAIL) + " \"test\" \"refused\""));
}

TEST_F(DialogEventsTests, AFailureThatTheHandlerReportsKeepsTheDialogOpen)
{
    listener->onSubmit = [](VARIANT* arguments, EXCEPINFO&) {
        *arguments[2].plVal = static_cast<long>(0x80041234);
        *arguments[1].pbstrVal = Bstr(L"KorvaneData").detach();
        *arguments[0].pbstrVal = Bstr(L"The database is locked.").detach();
        return S_OK;
    };
    press(VK_RETURN);
    EXPECT_THAT(listener->heard,
                testing::ElementsAre("Submit", "Error " + shown(static_cast<long>(0x80041234)) +
                                                   " \"KorvaneData\" \"The database is locked.\""));
    listener->onSubmit = execute;
    press(VK_RETURN);
    EXPECT_EQ(command->executions, 1);
    EXPECT_EQ(listener->heard.back(), "Done False");
}

TEST_F(DialogEventsTests, AFailureThatTheHandlerRaisesIsUnderstoodToo)
{
    listener->onSubmit = [](VARIANT*, EXCEPINFO& exception) {
        exception.scode = static_cast<long>(0x80041234);
        exception.bstrSource = Bstr(L"KorvaneData").detach();
        exception.bstrDescription = Bstr(L"The database is locked.").detach();
        return DISP_E_EXCEPTION;
    };
    press(VK_RETURN);
    EXPECT_THAT(listener->heard,
                testing::ElementsAre("Submit", "Error " + shown(static_cast<long>(0x80041234)) +
                                                   " \"KorvaneData\" \"The database is locked.\""));
}

TEST_F(DialogEventsTests, AHandlerThatSaysExecutedAndFailsThenHasNotExecuted)
{
    listener->onSubmit = [](VARIANT* arguments, EXCEPINFO& exception) {
        *arguments[3].pboolVal = VARIANT_TRUE; // as a script does that says so first
        exception.scode = E_FAIL;
        return DISP_E_EXCEPTION;
    };
    press(VK_RETURN);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Submit", "Error " + shown(E_FAIL) + " \"\" \"\""));
}

// What a handler in C does, where Execute has failed: it passes the failure on.
TEST_F(DialogEventsTests, AFailureThatTheHandlerReturnsKeepsItsErrorInformation)
{
    listener->onSubmit = [](VARIANT*, EXCEPINFO&) {
        return Failure(static_cast<long>(0x80041234), L"KorvaneData", L"The database is locked.").report();
    };
    press(VK_RETURN);
    EXPECT_THAT(listener->heard,
                testing::ElementsAre("Submit", "Error " + shown(static_cast<long>(0x80041234)) +
                                                   " \"KorvaneData\" \"The database is locked.\""));
}

// The numbers of those who have no handler are failures all the same where there is one.
TEST_F(DialogEventsTests, AFailureOfTheExecutionIsToldWhateverItsNumber)
{
    for (const HRESULT number : {E_NOTIMPL, DISP_E_MEMBERNOTFOUND, DISP_E_UNKNOWNNAME})
    {
        command->onExecute = [&] { throw Failure(number, L"KorvaneData", L"No such member."); };
        for (const bool tells : {false, true}) // that it has executed
        {
            listener->heard.clear();
            listener->onSubmit = [&](VARIANT* arguments, EXCEPINFO& exception) {
                const HRESULT outcome = execute(arguments, exception);
                *arguments[3].pboolVal = tells ? VARIANT_TRUE : VARIANT_FALSE;
                if (tells)
                    SetErrorInfo(0, nullptr);
                return outcome;
            };
            press(VK_RETURN);
            EXPECT_THAT(listener->heard,
                        testing::ElementsAre("Submit", testing::StartsWith("Error " + shown(number))));
        }
    }
    listener->heard.clear();
    listener->onSubmit = [](VARIANT*, EXCEPINFO&) { return E_NOTIMPL; };
    press(VK_RETURN);
    EXPECT_THAT(listener->heard,
                testing::ElementsAre("Submit", testing::StartsWith("Error " + shown(E_NOTIMPL))));
}

TEST_F(DialogEventsTests, ErrorInformationThatAnotherSubscriberHasLeftIsNotTaken)
{
    const ComPtr<Listener> further(new Listener);
    subscribe(further);
    listener->onSubmit = [](VARIANT*, EXCEPINFO&) {
        Failure(E_FAIL, L"left", L"behind").report();
        return S_OK;
    };
    further->onSubmit = [](VARIANT*, EXCEPINFO&) { return E_FAIL; };
    press(VK_RETURN);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Submit", testing::Not(testing::HasSubstr("behind"))));
}

TEST_F(DialogEventsTests, EverySubscriberHearsAndOneThatExecutesIsEnough)
{
    const ComPtr<Listener> further(new Listener);
    subscribe(further);
    listener->onSubmit = [](VARIANT*, EXCEPINFO&) { return E_FAIL; };
    further->onSubmit = [](VARIANT* arguments, EXCEPINFO& exception) {
        EXPECT_EQ(*arguments[3].pboolVal, VARIANT_FALSE);
        return execute(arguments, exception);
    };
    press(VK_RETURN);
    EXPECT_EQ(command->executions, 1);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Submit", "Done False"));
    EXPECT_THAT(further->heard, testing::ElementsAre("Submit", "Done False"));
}

TEST_F(DialogEventsTests, ASubscriberThatDoesNotHandleSubmitExecutesNothing)
{
    std::optional<bool> executed;
    dialog->onSubmitted = [&](bool answer) { executed = answer; };
    press(VK_RETURN);
    EXPECT_EQ(executed, false);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Submit"));
}

TEST_F(DialogEventsTests, TheHandlerMayEndTheDialogWithinTheEvent)
{
    listener->onSubmit = execute;
    listener->onEvent = [&] {
        if (!listener->heard.empty()) // the end follows the submission
            DestroyWindow(container.window());
    };
    press(VK_RETURN);
    pumpMessages();
    EXPECT_EQ(dialog->window(), nullptr);
    EXPECT_EQ(dialog->referenceCount(), 1U);
}

TEST_F(DialogEventsTests, TheHandlerMayEndTheDialogWhileItSubmits)
{
    listener->onSubmit = [&](VARIANT* arguments, EXCEPINFO& exception) {
        DestroyWindow(container.window());
        return execute(arguments, exception);
    };
    press(VK_RETURN);
    EXPECT_EQ(command->executions, 1);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Submit"));
    EXPECT_EQ(dialog->window(), nullptr);
    EXPECT_EQ(dialog->referenceCount(), 1U);
}

TEST_F(DialogEventsTests, ASubscriberMayUnsubscribeItselfAndTheNextOneWithinTheEvent)
{
    const ComPtr<Listener> leaving(new Listener);
    const ComPtr<Listener> next(new Listener);
    const DWORD own = subscribe(leaving);
    const DWORD nextOne = subscribe(next);
    leaving->onEvent = [&] {
        call(point(), &IConnectionPoint::Unadvise, own);
        call(point(), &IConnectionPoint::Unadvise, nextOne);
    };
    listener->onSubmit = execute;
    press(VK_RETURN);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Submit", "Done False"));
    EXPECT_THAT(leaving->heard, testing::ElementsAre("Submit"));
    EXPECT_TRUE(next->heard.empty());
    EXPECT_EQ(leaving->references(), 1U);
}

TEST_F(DialogEventsTests, NobodyHearsAfterUnsubscribing)
{
    const ComPtr<Listener> further(new Listener);
    const DWORD cookie = subscribe(further);
    EXPECT_EQ(further->references(), 2U);
    call(point(), &IConnectionPoint::Unadvise, cookie);
    press(VK_ESCAPE);
    EXPECT_TRUE(further->heard.empty());
    EXPECT_EQ(further->references(), 1U);
}

namespace
{

/// A dialog that is not placed yet, in a container without a sink.
class PlainSiteTests : public testing::Test
{
protected:
    ~PlainSiteTests() override
    {
        dialog->SetClientSite(nullptr);
        setCurrentResources(nullptr);
    }

    void confirm() const
    {
        call(dialog.as<IAppDialog>(), &IAppDialog::putref_Command, command.as<IDispatch>().get());
        ASSERT_TRUE(fetch(dialog.as<IAppDialog>(), &IAppDialog::get_Ready));
        dialog->ok();
    }

    Container container{{.sink = false}};
    ComPtr<TestDialogCommand> command = make<TestDialogCommand>();
    ComPtr<TestDialog> dialog = make<TestDialog>();
    ComPtr<Listener> listener{new Listener};
};

/// What a form calls the control: it knows its container by a name.
class ExtendedControl final : public PlainObject<>
{
public:
    ExtendedControl(std::wstring_view name, IUnknown* named) : name_(name), named_(named) {}

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override
    {
        *id = 1;
        return name_ == names[0] ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override
    {
        result->vt = VT_UNKNOWN;
        result->punkVal = ComPtr(named_).detach();
        return S_OK;
    }

private:
    std::wstring name_;
    ComPtr<IUnknown> named_;
};

class FormSite final : public host::ControlSite
{
public:
    explicit FormSite(ComPtr<IDispatch> control) : ControlSite(nullptr), extended_(std::move(control))
    {
        offersSink = false;
    }
    STDMETHODIMP GetExtendedControl(IDispatch** control) override
    {
        *control = ComPtr(extended_).detach();
        return S_OK;
    }

private:
    ComPtr<IDispatch> extended_;
};

} // namespace

TEST_F(PlainSiteTests, AContainerConnectsSiteAndSinkInOneCall)
{
    QACONTAINER given{};
    given.pClientSite = container.site.get();
    given.pUnkEventSink = static_cast<IDispatch*>(listener.get());
    QACONTROL told{};
    ASSERT_EQ(dialog->QuickActivate(&given, &told), S_OK);
    EXPECT_EQ(told.cbSize, sizeof told);
    EXPECT_EQ(told.dwMiscStatus, OleControl::miscStatus);
    EXPECT_NE(told.dwEventCookie, 0U);
    EXPECT_EQ(told.dwPropNotifyCookie, 0U);
    listener->onSubmit = execute;
    confirm();
    EXPECT_EQ(command->executions, 1);
    EXPECT_THAT(listener->heard, testing::ElementsAre("Submit", "Done False"));
}

TEST_F(PlainSiteTests, ASinkThatHearsNoEventsGetsNoCookie)
{
    QACONTAINER given{};
    given.pClientSite = container.site.get();
    const auto deaf = fetch(dialog.as<IConnectionPointContainer>(),
                            &IConnectionPointContainer::FindConnectionPoint, __uuidof(IDialogEvents));
    given.pUnkEventSink = deaf.get();
    QACONTROL told{};
    told.dwEventCookie = 0xdeadbeef;
    EXPECT_EQ(dialog->QuickActivate(&given, &told), S_OK);
    EXPECT_EQ(told.dwEventCookie, 0U);
    EXPECT_EQ(dialog->QuickActivate(nullptr, &told), E_POINTER);
    EXPECT_EQ(dialog->QuickActivate(&given, nullptr), E_POINTER);
}

TEST_F(PlainSiteTests, TheContentsExtentIsTheDialogs)
{
    SIZEL content{};
    SIZEL whole{};
    EXPECT_EQ(dialog->GetContentExtent(&content), S_OK);
    call(dialog.as<IOleObject>(), &IOleObject::GetExtent, DVASPECT_CONTENT, &whole);
    EXPECT_EQ(content.cx, whole.cx);
    EXPECT_EQ(content.cy, whole.cy);
    EXPECT_EQ(dialog->SetContentExtent(&content), S_OK);
    EXPECT_EQ(dialog->GetContentExtent(nullptr), E_POINTER);
    EXPECT_EQ(dialog->SetContentExtent(nullptr), E_POINTER);
}

// Programs differ in what they call the object on which they have placed a control.
TEST_F(PlainSiteTests, TheContainerIsAskedForByTheNamesOfTheExtendedControl)
{
    for (const wchar_t* name : {L"Container", L"Parent"})
    {
        const auto form = make<CommandSink>();
        const ComPtr<ExtendedControl> extended(
            new ExtendedControl(name, static_cast<IAppDialogSink*>(form.get())));
        const auto site = make<FormSite>(ComPtr<IDispatch>(extended.get()));
        dialog->SetClientSite(site.get());
        confirm();
        EXPECT_EQ(form->calls.size(), 1U);
        dialog->SetClientSite(nullptr);
    }
}

// A container with a sink of its own would else execute twice.
TEST(DialogEventsInAContainerWithASinkTests, AreNotRaised)
{
    Container container;
    const auto command = make<TestDialogCommand>();
    const auto dialog = make<TestDialog>();
    const ComPtr<Listener> listener(new Listener);
    DWORD cookie = 0;
    const auto point = fetch(dialog.as<IConnectionPointContainer>(),
                             &IConnectionPointContainer::FindConnectionPoint, __uuidof(IDialogEvents));
    call(point, &IConnectionPoint::Advise, static_cast<IDispatch*>(listener.get()), &cookie);
    container.place(dialog.as<IAppDialog>(), command->asCommand().get());
    ASSERT_TRUE(container.ready());
    dialog->ok();
    EXPECT_EQ(container.submitted, 1);
    EXPECT_EQ(container.done.size(), 1U);
    EXPECT_TRUE(listener->heard.empty());
    call(point, &IConnectionPoint::Unadvise, cookie);
    container.close();
    setCurrentResources(nullptr);
}

} // namespace korvane::test
