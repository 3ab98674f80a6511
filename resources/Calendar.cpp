// The calendar contract, of which the library computes only the leap-year test: occurrences are the business
// of the data layer.
#include "resources/Resources.h"

#include "framework/modKorvaneDlg.h"

#include <limits>

namespace korvane
{

namespace
{

constexpr DISPID idOfGetFirst = 41;
constexpr DISPID idOfGetNext = 42;

} // namespace

/// What GetFirst and GetNext are given is declared by the host's library: a late-bound caller may give them anything.
STDMETHODIMP Resources::Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                               VARIANT* result, EXCEPINFO* exception, UINT* badArgument)
{
    if ((id != idOfGetFirst && id != idOfGetNext) || (flags & DISPATCH_METHOD) == 0 || reserved != IID_NULL)
        return Object::Invoke(id, reserved, locale, flags, arguments, result, exception, badArgument);
    return guard([&] {
        if (result)
            *result = Variant(false).detach();
    });
}

STDMETHODIMP Resources::GetFirst(VARIANT, DATE, VARIANT_BOOL* found)
{
    return returns(found, [] { return false; });
}

STDMETHODIMP Resources::GetNext(DATE, VARIANT_BOOL* found)
{
    return returns(found, [] { return false; });
}

STDMETHODIMP Resources::Easter(long, DATE* sunday)
{
    return returns(sunday, []() -> OleDate {
        RaiseAppError(1, {}, L"The recurrence type Easter is not implemented");
        return {};
    });
}

STDMETHODIMP Resources::IsLeapYear(long year, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        if (year < std::numeric_limits<SHORT>::min() || year > std::numeric_limits<SHORT>::max())
            throw Failure(DISP_E_OVERFLOW);

        UDATE day{};
        day.st.wYear = static_cast<WORD>(year); // a two-digit year gets its century from the platform
        day.st.wMonth = 2;
        day.st.wDay = 28;
        DATE date = 0;
        require(VarDateFromUdate(&day, 0, &date));
        require(VarUdateFromDate(date + 1, 0, &day));
        // True where the day after 28 February is in March, that is for common years. Hosts negate the result;
        // the name promises the opposite, and both are part of the contract.
        return day.st.wMonth == 3;
    });
}

} // namespace korvane
