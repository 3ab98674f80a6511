#include "framework/AppDialogEvents.h"

#include "framework/com/Apartment.h"
#include "tests/framework/Fakes.h"
#include "tests/support/ComRules.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class AppDialogEventsTests : public testing::Test
{
protected:
    static void setCurrentError(HRESULT number, const wchar_t* source, const wchar_t* description)
    {
        apartment().currentError = Failure(number, source, description);
    }

    template <class Container> void connect(const ComPtr<Container>& container)
    {
        require(events->putref_Sink(static_cast<IAppDialogSink*>(container.get())));
    }

    ComPtr<IAppDialogEvents> events{make<AppDialogEvents>().get()};
    ComPtr<Sink> sink = make<Sink>();
};

} // namespace

TEST_F(AppDialogEventsTests, WithoutASinkNothingHappens)
{
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(events->RaiseDone(VARIANT_TRUE), S_OK);
    EXPECT_EQ(events->RaiseResize(), S_OK);
    EXPECT_EQ(events->RaiseError(), S_OK);
    EXPECT_EQ(events->SubmitCommand(nullptr, &result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
    result = VARIANT_TRUE;
    EXPECT_EQ(events->OfferCommand(nullptr, &result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
}

TEST_F(AppDialogEventsTests, TheSinkIsReadSetAndCleared)
{
    ComPtr<IAppDialogSink> held;
    EXPECT_EQ(events->get_Sink(held.put()), S_OK);
    EXPECT_FALSE(held);
    const ULONG before = sink->referenceCount();
    EXPECT_EQ(events->putref_Sink(sink.get()), S_OK);
    EXPECT_EQ(sink->referenceCount(), before + 1);
    EXPECT_EQ(events->get_Sink(held.put()), S_OK);
    EXPECT_EQ(held.get(), sink.get());
    held.reset();
    EXPECT_EQ(events->put_Sink(sink.get()), S_OK);
    EXPECT_EQ(sink->referenceCount(), before + 1);
    EXPECT_EQ(events->putref_Sink(nullptr), S_OK);
    EXPECT_EQ(sink->referenceCount(), before);
}

TEST_F(AppDialogEventsTests, DoneTellsTheFlag)
{
    connect(sink);
    EXPECT_EQ(events->RaiseDone(VARIANT_TRUE), S_OK);
    EXPECT_EQ(events->RaiseDone(VARIANT_FALSE), S_OK);
    EXPECT_THAT(sink->done, ElementsAre(true, false));
    EXPECT_THAT(sink->errors, IsEmpty());
    EXPECT_EQ(sink->resizes, 0);
}

TEST_F(AppDialogEventsTests, ResizeTellsTheChange)
{
    connect(sink);
    EXPECT_EQ(events->RaiseResize(), S_OK);
    EXPECT_EQ(sink->resizes, 1);
}

TEST_F(AppDialogEventsTests, WithoutAnErrorNothingIsTold)
{
    connect(sink);
    EXPECT_EQ(events->RaiseError(), S_OK);
    EXPECT_THAT(sink->errors, IsEmpty());
}

TEST_F(AppDialogEventsTests, AnErrorOfTheLibraryIsToldOnce)
{
    connect(sink);
    setCurrentError(static_cast<HRESULT>(0x8004564C), L"ctlEditNames", L"The text box name must be entered.");
    EXPECT_EQ(events->RaiseError(), S_OK);
    EXPECT_EQ(events->RaiseError(), S_OK);
    EXPECT_THAT(sink->errors, ElementsAre(ErrorInfo{static_cast<HRESULT>(0x8004564C), L"ctlEditNames",
                                                    L"The text box name must be entered."}));
}

TEST_F(AppDialogEventsTests, AnErrorWithoutOwnTextIsToldInTheSystemsWords)
{
    connect(sink);
    apartment().currentError = Failure(E_ACCESSDENIED);
    EXPECT_EQ(events->RaiseError(), S_OK);
    ASSERT_EQ(sink->errors.size(), 1U);
    EXPECT_EQ(sink->errors[0].number, E_ACCESSDENIED);
    EXPECT_FALSE(sink->errors[0].description.empty());
}

TEST_F(AppDialogEventsTests, AnErrorObjectOfTheThreadIsToldOnce)
{
    connect(sink);
    leaveError(E_FAIL, L"a host's dialog", L"It did not work.");
    EXPECT_EQ(events->RaiseError(), S_OK);
    EXPECT_EQ(events->RaiseError(), S_OK);
    ASSERT_EQ(sink->errors.size(), 1U);
    EXPECT_TRUE(FAILED(sink->errors[0].number));
    EXPECT_EQ(sink->errors[0].source, L"a host's dialog");
    EXPECT_EQ(sink->errors[0].description, L"It did not work.");
}

TEST_F(AppDialogEventsTests, LateBoundItTellsTheSameErrors)
{
    connect(sink);
    const auto raiseError = [&] {
        DISPPARAMS none{};
        return events->Invoke(2, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr,
                              nullptr);
    };
    leaveError(E_FAIL, L"a host's dialog", L"It did not work.");
    EXPECT_EQ(raiseError(), S_OK);
    EXPECT_EQ(raiseError(), S_OK);
    ASSERT_EQ(sink->errors.size(), 1U);
    EXPECT_EQ(sink->errors[0].description, L"It did not work.");
}

TEST_F(AppDialogEventsTests, WithoutASinkTheErrorStays)
{
    setCurrentError(E_FAIL, L"source", L"kept");
    EXPECT_EQ(events->RaiseError(), S_OK);
    connect(sink);
    EXPECT_EQ(events->RaiseError(), S_OK);
    EXPECT_EQ(sink->errors.size(), 1U);
}

TEST_F(AppDialogEventsTests, AFailureOfTheSinkReachesTheCaller)
{
    connect(sink);
    sink->answer = [] { return Failure(static_cast<HRESULT>(0x80040777), L"host", L"no").report(); };
    EXPECT_EQ(errorOf(events->RaiseDone(VARIANT_TRUE)),
              (ErrorInfo{static_cast<HRESULT>(0x80040777), L"host", L"no"}));
    EXPECT_EQ(errorOf(events->RaiseResize()), (ErrorInfo{static_cast<HRESULT>(0x80040777), L"host", L"no"}));
    setCurrentError(E_FAIL, L"source", L"told");
    EXPECT_EQ(events->RaiseError(), static_cast<HRESULT>(0x80040777));
}

TEST_F(AppDialogEventsTests, ASinkMayLetGoOfTheRelayInItsCall)
{
    connect(sink);
    sink->answer = [&] {
        events->putref_Sink(nullptr);
        return S_OK;
    };
    EXPECT_EQ(events->RaiseDone(VARIANT_FALSE), S_OK);
    EXPECT_EQ(events->RaiseDone(VARIANT_FALSE), S_OK);
    EXPECT_THAT(sink->done, ElementsAre(false));
}

TEST_F(AppDialogEventsTests, ASinkWithoutACommandSiteExecutesNothing)
{
    connect(sink);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(events->SubmitCommand(nullptr, &result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
}

TEST_F(AppDialogEventsTests, ACommandIsSubmittedByTheThirdMemberAndOfferedByTheSecond)
{
    const auto container = make<CommandSink>();
    connect(container);
    VARIANT_BOOL result = VARIANT_FALSE;
    auto* const command = reinterpret_cast<IAppCommand*>(this); // only passed on
    EXPECT_EQ(events->SubmitCommand(command, &result), S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    container->answer = VARIANT_FALSE;
    EXPECT_EQ(events->OfferCommand(command, &result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_THAT(container->calls, ElementsAre(std::pair{std::string("Submit"), command},
                                              std::pair{std::string("Offer"), command}));
}

TEST_F(AppDialogEventsTests, AnAnswerOtherThanTrueIsTrueToo)
{
    const auto container = make<CommandSink>();
    connect(container);
    container->answer = 1;
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(events->SubmitCommand(nullptr, &result), S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
}

TEST_F(AppDialogEventsTests, AFailedSubmissionReachesTheCallerWithItsText)
{
    const auto container = make<CommandSink>();
    connect(container);
    container->outcome = static_cast<HRESULT>(0x80041234);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(errorOf(events->SubmitCommand(nullptr, &result)),
              (ErrorInfo{static_cast<HRESULT>(0x80041234), L"host", L"refused"}));
    EXPECT_EQ(result, VARIANT_FALSE);
}

TEST_F(AppDialogEventsTests, ASubmissionThatFailsKeepsItsTextThoughTheHostDoesNotSayThatItHasOne)
{
    const auto container = make<CommandSink>();
    connect(container);
    container->tellsOfErrors = false;
    container->outcome = static_cast<HRESULT>(0x80041234);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(errorOf(events->SubmitCommand(nullptr, &result)),
              (ErrorInfo{static_cast<HRESULT>(0x80041234), L"host", L"refused"}));
}

TEST_F(AppDialogEventsTests, ATextFromBeforeTheSubmissionIsNotTakenForItsOwn)
{
    const auto container = make<CommandSink>();
    connect(container);
    leaveError(static_cast<HRESULT>(0x80041111), L"earlier", L"another failure");
    container->tellsOfErrors = false;
    container->outcome = E_FAIL;
    container->beforeAnswer = [] {};
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(errorOf(events->SubmitCommand(nullptr, &result)), (ErrorInfo{E_FAIL, L"", L""}));
}

TEST_F(AppDialogEventsTests, AFailureThatTheHostHasDealtWithWithinIsNotTakenForTheSubmissions)
{
    apartment(); // the state is there, as it is wherever a dialog is
    const auto container = make<CommandSink>();
    connect(container);
    container->tellsOfErrors = false;
    container->outcome = E_FAIL;
    container->beforeAnswer = [] {
        leaveError(static_cast<HRESULT>(0x80041111), L"within", L"another failure");
    };
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(errorOf(events->SubmitCommand(nullptr, &result)), (ErrorInfo{E_FAIL, L"", L""}));
}

// What the library has reported is known by its error object: another one is not to come to stand in its place.
TEST_F(AppDialogEventsTests, TheErrorObjectThatWasReportedIsHeld)
{
    apartment();
    leaveError(E_FAIL, L"within", L"a failure");
    ComPtr<IErrorInfo> information;
    ASSERT_EQ(GetErrorInfo(0, information.put()), S_OK);
    EXPECT_EQ(references(information.get()), 2U);
    leaveError(E_FAIL, L"within", L"the next failure");
    EXPECT_EQ(references(information.get()), 1U);
    SetErrorInfo(0, nullptr);
}

} // namespace korvane::test
