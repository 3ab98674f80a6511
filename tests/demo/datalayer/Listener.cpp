#include "tests/demo/datalayer/Listener.h"

#include "framework/com/Variant.h"

#include <cwchar>

namespace korvane::store::test
{

namespace
{

std::wstring written(const VARIANT& argument)
{
    switch (argument.vt)
    {
    case VT_I4:
        return std::to_wstring(argument.lVal);
    case VT_BSTR:
        return std::wstring(view(argument.bstrVal));
    case VT_BOOL:
        return argument.boolVal ? L"True" : L"False";
    case VT_DATE:
        return test::written(argument.date);
    default:
        ADD_FAILURE() << "an argument of type " << argument.vt;
        return L"?";
    }
}

} // namespace

HRESULT Listener::Invoke(DISPID event, REFIID iid, LCID, WORD flags, DISPPARAMS* arguments, VARIANT*,
                         EXCEPINFO*, UINT*)
{
    EXPECT_EQ(IID_NULL, iid);
    EXPECT_EQ(DISPATCH_METHOD, flags);
    EXPECT_EQ(0u, arguments->cNamedArgs);
    static constexpr const wchar_t* names[] = {L"OnClear", L"OnAdd", L"OnInfoClear", L"OnInfoAdd"};
    const bool clears = event == 1 || event == 3;
    EXPECT_TRUE(event >= 1 && event <= 4 && clears == (arguments->cArgs == 0));
    std::wstring line = names[event - 1];
    for (UINT index = arguments->cArgs; index > 0; --index) // the last one comes first
        line += (index == arguments->cArgs ? L" " : L", ") + written(arguments->rgvarg[index - 1]);
    events_.push_back(line);
    arguments_ = arguments->rgvarg;
    onEvent();
    return answer;
}

std::wstring written(DATE date)
{
    SYSTEMTIME time{};
    EXPECT_TRUE(VariantTimeToSystemTime(date, &time));
    wchar_t text[40];
    if (time.wHour == 0 && time.wMinute == 0)
        std::swprintf(text, ARRAYSIZE(text), L"%04u-%02u-%02u", time.wYear, time.wMonth, time.wDay);
    else
        std::swprintf(text, ARRAYSIZE(text), L"%04u-%02u-%02u %02u:%02u", time.wYear, time.wMonth, time.wDay,
                      time.wHour, time.wMinute);
    return text;
}

} // namespace korvane::store::test
