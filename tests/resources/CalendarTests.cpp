#include "framework/com/Variant.h"
#include "tests/support/Library.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <gmock/gmock.h>

#include <vector>

namespace korvane::test
{

namespace
{

class CalendarTests : public testing::Test
{
protected:
    bool isLeapYear(long year)
    {
        VARIANT_BOOL result = 0x55;
        EXPECT_EQ(calendar->IsLeapYear(year, &result), S_OK) << year;
        EXPECT_TRUE(result == VARIANT_TRUE || result == VARIANT_FALSE) << year;
        return result == VARIANT_TRUE;
    }

    HRESULT failureOf(long year)
    {
        VARIANT_BOOL result = VARIANT_TRUE;
        const HRESULT outcome = calendar->IsLeapYear(year, &result);
        EXPECT_EQ(result, VARIANT_FALSE) << year;
        return outcome;
    }

    ComPtr<ICalendar> calendar = create<ICalendar>(__uuidof(::Resources));
};

} // namespace

// The member is named after the opposite of what it tells; hosts negate it.
TEST_F(CalendarTests, IsLeapYearIsTrueForCommonYears)
{
    for (const long year : {2023L, 2025L, 1900L, 2100L, 9999L})
        EXPECT_TRUE(isLeapYear(year)) << year;
}

TEST_F(CalendarTests, IsLeapYearIsFalseForLeapYears)
{
    for (const long year : {2024L, 2000L, 1996L, 9996L})
        EXPECT_FALSE(isLeapYear(year)) << year;
}

TEST_F(CalendarTests, AYearOfTwoDigitsIsInTheCenturyOfThePlatform)
{
    // 1900 was a common year and 2000 a leap year: 0 tells the centuries apart.
    EXPECT_FALSE(isLeapYear(0));
    EXPECT_FALSE(isLeapYear(24));
    EXPECT_TRUE(isLeapYear(23));
    EXPECT_FALSE(isLeapYear(96));
    EXPECT_TRUE(isLeapYear(99));
}

TEST_F(CalendarTests, AYearBeyond16BitsOverflows)
{
    for (const long year : {32768L, -32769L, 0x7fffffffL, 65536L + 2024L})
        EXPECT_EQ(failureOf(year), DISP_E_OVERFLOW) << year;
}

TEST_F(CalendarTests, AYearThatThePlatformDoesNotKnowIsItsError)
{
    for (const long year : {10000L, 32767L, -10000L, -32768L})
        EXPECT_EQ(failureOf(year), E_INVALIDARG) << year;
}

// The platform takes some years before the first one too; what it makes of them is its own.
TEST_F(CalendarTests, AYearBeforeTheFirstIsWhatThePlatformMakesOfIt)
{
    for (const long year : {-1L, -4L, -99L, -100L, -101L, -1900L, -9999L})
    {
        UDATE day{};
        day.st.wYear = static_cast<WORD>(year);
        day.st.wMonth = 2;
        day.st.wDay = 28;
        DATE date = 0;
        HRESULT known = VarDateFromUdate(&day, 0, &date);
        if (SUCCEEDED(known))
            known = VarUdateFromDate(date + 1, 0, &day); // its first days may lead beyond its own dates
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(calendar->IsLeapYear(year, &result), known) << year;
        EXPECT_EQ(result != VARIANT_FALSE, SUCCEEDED(known) && day.st.wMonth == 3) << year;
    }
}

TEST_F(CalendarTests, EasterIsRefused)
{
    DATE sunday = 45000;
    const HRESULT result = calendar->Easter(2024, &sunday);
    wchar_t path[MAX_PATH];
    const std::wstring file(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    const std::wstring program = file.substr(file.find_last_of(L'\\') + 1);
    const std::wstring title = program.substr(0, program.find_last_of(L'.'));
    EXPECT_EQ(errorOf(result), (ErrorInfo{static_cast<HRESULT>(0x80040001), title,
                                          L"The recurrence type Easter is not implemented"}));
    EXPECT_EQ(sunday, 0.0);
}

TEST_F(CalendarTests, EasterIsRefusedForEveryYear)
{
    for (const long year : {0L, -1L, 1900L, 99999L})
    {
        DATE sunday = 45000;
        EXPECT_EQ(calendar->Easter(year, &sunday), static_cast<HRESULT>(0x80040001)) << year;
    }
}

TEST_F(CalendarTests, ThereAreNoOccurrences)
{
    VARIANT_BOOL found = VARIANT_TRUE;
    EXPECT_EQ(calendar->GetFirst(Variant(3L).get(), 45000, &found), S_OK);
    EXPECT_EQ(found, VARIANT_FALSE);
    found = VARIANT_TRUE;
    EXPECT_EQ(calendar->GetFirst(Variant(Bstr(L"weekly")).get(), -1e300, &found), S_OK);
    EXPECT_EQ(found, VARIANT_FALSE);
    for (const DATE date : {0.0, 45000.5, -657435.0, 1e300})
    {
        found = VARIANT_TRUE;
        EXPECT_EQ(calendar->GetNext(date, &found), S_OK);
        EXPECT_EQ(found, VARIANT_FALSE);
    }
}

TEST_F(CalendarTests, AnArgumentIsLeftAsItIs)
{
    const Variant rule(Bstr(L"weekly"));
    const BSTR text = rule.get().bstrVal;
    VARIANT_BOOL found = VARIANT_TRUE;
    EXPECT_EQ(calendar->GetFirst(rule.get(), 45000, &found), S_OK);
    EXPECT_EQ(rule.type(), VT_BSTR);
    EXPECT_EQ(rule.get().bstrVal, text);
    EXPECT_EQ(view(text), L"weekly");
}

// Their arguments are declared by the host's library, whatever they are there.
TEST_F(CalendarTests, OccurrencesAreAskedForLateBoundWithAnyArguments)
{
    const auto late = calendar.as<IDispatch>();
    std::vector<Variant> arguments;
    for (int count = 0; count < 4; ++count)
    {
        std::vector<VARIANT> given;
        given.reserve(arguments.size());
        for (const Variant& argument : arguments)
            given.push_back(argument.get());
        DISPPARAMS parameters{given.data(), nullptr, static_cast<UINT>(given.size()), 0};
        for (const DISPID member : {41, 42}) // GetFirst, GetNext
        {
            Variant found;
            EXPECT_EQ(late->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT,
                                   DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters, found.put(), nullptr,
                                   nullptr),
                      S_OK);
            EXPECT_EQ(found.type(), VT_BOOL);
            EXPECT_FALSE(toBool(found.get()));
            EXPECT_EQ(late->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                   nullptr, nullptr, nullptr),
                      S_OK);
        }
        arguments.emplace_back(Bstr(L"no date"));
    }
}

} // namespace korvane::test
