// Failures on their way in and out of COM.
#include "framework/com/Boundary.h"
#include "framework/com/Object.h"
#include "tests/support/Library.h"
#include "tests/support/PlainObject.h"

#include <KorvaneInterfaces.h>

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

namespace korvane::test
{

namespace
{

/// Fails as it is told, with error information or without.
class FailingSink final : public PlainObject<IAppDialogSink, ISupportErrorInfo>
{
public:
    explicit FailingSink(bool promises) : promises_(promises) {}

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override
    {
        return promises_ && iid == __uuidof(IAppDialogSink) ? S_OK : S_FALSE;
    }
    STDMETHODIMP Done(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP Error(long, BSTR, BSTR) override { return E_NOTIMPL; }

    /// Fails with an error object that has a help file and context too.
    STDMETHODIMP Resize() override
    {
        ComPtr<ICreateErrorInfo> maker;
        require(CreateErrorInfo(maker.put()));
        wchar_t source[] = L"data layer";
        wchar_t description[] = L"The database is locked.";
        wchar_t file[] = L"data.hlp";
        maker->SetGUID(__uuidof(IAppDialogSink));
        maker->SetSource(source);
        maker->SetDescription(description);
        maker->SetHelpFile(file);
        maker->SetHelpContext(4711);
        SetErrorInfo(0, maker.as<IErrorInfo>().get());
        return static_cast<HRESULT>(0x80040ABC);
    }

private:
    bool promises_;
};

void leaveStaleError()
{
    Failure(E_FAIL, L"somebody else", L"long ago").report();
}

bool errorIsLeft()
{
    ComPtr<IErrorInfo> information;
    return GetErrorInfo(0, information.put()) == S_OK;
}

} // namespace

TEST(BoundaryTests, SuccessIsPassedOn)
{
    EXPECT_EQ(guard([] {}), S_OK);
    EXPECT_EQ(guard([] { return S_FALSE; }), S_FALSE);
    EXPECT_EQ(guard([] { return E_NOTIMPL; }), E_NOTIMPL);
}

TEST(BoundaryTests, AFailureBecomesItsNumberAndErrorInformation)
{
    const HRESULT result =
        guard([] { throw Failure(static_cast<HRESULT>(0x80041000), L"source", L"description"); });
    EXPECT_EQ(errorOf(result), (ErrorInfo{static_cast<HRESULT>(0x80041000), L"source", L"description"}));
}

// A caller would take a number of success for success.
TEST(BoundaryTests, AFailureWhoseNumberMeansSuccessIsAnErrorAllTheSame)
{
    EXPECT_EQ(errorOf(guard([] { throw Failure(1, L"source", L"description"); })),
              (ErrorInfo{static_cast<HRESULT>(0x800A0001), L"source", L"description"}));
}

TEST(BoundaryTests, WantOfMemoryIsToldAsSuch)
{
    EXPECT_EQ(guard([] { throw std::bad_alloc(); }), E_OUTOFMEMORY);
    EXPECT_EQ(guard([] { throw std::bad_array_new_length(); }), E_OUTOFMEMORY);
}

TEST(BoundaryTests, WhatNobodyKnowsIsUnexpected)
{
    EXPECT_EQ(guard([] { throw std::runtime_error("unknown"); }), E_UNEXPECTED);
    EXPECT_EQ(guard([] { throw 17; }), E_UNEXPECTED);
}

TEST(BoundaryTests, AFailureWithoutTextDoesNotTakeOverTheTextOfAnother)
{
    leaveStaleError();
    const ErrorInfo denied = errorOf(guard([] { throw Failure(E_ACCESSDENIED); }));
    EXPECT_EQ(denied.number, E_ACCESSDENIED);
    EXPECT_NE(denied.source, L"somebody else");
    EXPECT_NE(denied.description, L"long ago");
    leaveStaleError();
    const ErrorInfo memory = errorOf(guard([] { throw std::bad_alloc(); }));
    EXPECT_EQ(memory.number, E_OUTOFMEMORY);
    EXPECT_NE(memory.description, L"long ago");
}

TEST(BoundaryTests, AnAttemptKeepsTheFailure)
{
    EXPECT_FALSE(attempt([] {}));
    const auto failure = attempt([] { throw Failure(E_FAIL, L"a", L"b"); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), E_FAIL);
    EXPECT_EQ(failure->source(), L"a");
    EXPECT_EQ(failure->description(), L"b");
    EXPECT_FALSE(errorIsLeft());
}

TEST(BoundaryTests, AResultIsCheckedAndClearedBeforeTheBodyRuns)
{
    bool ran = false;
    EXPECT_EQ(returns(static_cast<long*>(nullptr),
                      [&] {
                          ran = true;
                          return 1L;
                      }),
              E_POINTER);
    EXPECT_FALSE(ran);
    long number = 7;
    EXPECT_EQ(returns(&number,
                      [&]() -> long {
                          EXPECT_EQ(number, 0);
                          throw Failure(E_FAIL);
                      }),
              E_FAIL);
    EXPECT_EQ(number, 0);
    EXPECT_EQ(returns(&number, [] { return 5L; }), S_OK);
    EXPECT_EQ(number, 5);
}

TEST(BoundaryTests, AnEmptyTextLeavesAsATextAndNotAsNull)
{
    BSTR text = nullptr;
    EXPECT_EQ(returns(&text, [] { return Bstr(); }), S_OK);
    EXPECT_NE(text, nullptr);
    SysFreeString(text);
}

TEST(FailureTests, TheInformationOfACalleeIsPassedOnUnchanged)
{
    const ComPtr<IAppDialogSink> sink(new FailingSink(true));
    const HRESULT result = guard([&] { call(sink, &IAppDialogSink::Resize); });
    EXPECT_EQ(result, static_cast<HRESULT>(0x80040ABC));
    ComPtr<IErrorInfo> information;
    ASSERT_EQ(GetErrorInfo(0, information.put()), S_OK);
    Bstr text;
    EXPECT_EQ(information->GetSource(text.put()), S_OK);
    EXPECT_EQ(text, L"data layer");
    EXPECT_EQ(information->GetDescription(text.put()), S_OK);
    EXPECT_EQ(text, L"The database is locked.");
    EXPECT_EQ(information->GetHelpFile(text.put()), S_OK);
    EXPECT_EQ(text, L"data.hlp");
    DWORD context = 0;
    EXPECT_EQ(information->GetHelpContext(&context), S_OK);
    EXPECT_EQ(context, 4711U);
    GUID raisedBy = GUID_NULL;
    EXPECT_EQ(information->GetGUID(&raisedBy), S_OK);
    EXPECT_EQ(raisedBy, __uuidof(IAppDialogSink));
}

TEST(FailureTests, InformationIsNotTakenFromAnObjectThatPromisesNone)
{
    const ComPtr<IAppDialogSink> sink(new FailingSink(false));
    leaveStaleError();
    const auto failure = attempt([&] { call(sink, &IAppDialogSink::Done, VARIANT_TRUE); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), E_NOTIMPL);
    EXPECT_TRUE(failure->source().empty());
    EXPECT_NE(failure->description(), L"long ago");
}

// An object that promises information may all the same fail without any: what an earlier call left is not its.
TEST(FailureTests, InformationOfAnEarlierCallIsNotTaken)
{
    const ComPtr<IAppDialogSink> sink(new FailingSink(true));
    leaveStaleError();
    const auto failure = attempt([&] { call(sink, &IAppDialogSink::Done, VARIANT_TRUE); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), E_NOTIMPL);
    EXPECT_NE(failure->description(), L"long ago");
}

TEST(FailureTests, ACallOnNothingIsAPointerFailure)
{
    const auto failure = attempt([] { call(ComPtr<IAppDialogSink>(), &IAppDialogSink::Resize); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), E_POINTER);
}

// Some systems have no text for what a host meets most often.
TEST(FailureTests, WhatAHostMeetsMostOftenHasATextOnEverySystem)
{
    for (const HRESULT number :
         {DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW, DISP_E_BADVARTYPE, DISP_E_UNKNOWNNAME, DISP_E_MEMBERNOTFOUND,
          DISP_E_BADPARAMCOUNT, DISP_E_PARAMNOTOPTIONAL, E_POINTER, E_INVALIDARG, E_NOINTERFACE,
          REGDB_E_CLASSNOTREG, CO_E_CLASSSTRING, E_UNEXPECTED})
        EXPECT_FALSE(Failure(number).description().empty()) << std::hex << number;
}

TEST(FailureTests, TheSystemsWordsDescribeAPlatformError)
{
    const Bstr description = Failure(E_ACCESSDENIED).description();
    EXPECT_FALSE(description.empty());
    EXPECT_GT(description.view().back(), L' '); // without the line end
    EXPECT_TRUE(Failure(static_cast<HRESULT>(0x8004FFFF)).description().empty());
}

TEST(FailureTests, ASuccessfulCallReturnsItsResult)
{
    EXPECT_EQ(require(S_FALSE), S_FALSE);
    const auto failure = attempt([] { require(E_FAIL); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), E_FAIL);
}

} // namespace korvane::test
