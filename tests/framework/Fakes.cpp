#include "tests/framework/Fakes.h"

#include "framework/com/Decimal.h"

namespace korvane::test
{

HRESULT HostResources::nothing(IPictureDisp** picture)
{
    *picture = nullptr;
    return S_OK;
}

STDMETHODIMP HostResources::GetString(long id, BSTR* text)
{
    return returns(text, [&] {
        if (id == failing)
            throw Failure(E_FAIL, L"host", L"no such text");
        return Bstr(word + L" text " + decimal(id));
    });
}

STDMETHODIMP HostResources::get_LocaleID(long* locale)
{
    return returns(locale, [] { return 1030L; });
}

STDMETHODIMP Sink::Done(VARIANT_BOOL cancelled)
{
    done.push_back(cancelled != VARIANT_FALSE);
    return answer();
}

STDMETHODIMP Sink::Error(long number, BSTR source, BSTR description)
{
    errors.push_back({number, std::wstring(view(source)), std::wstring(view(description))});
    return answer();
}

STDMETHODIMP Sink::Resize()
{
    ++resizes;
    return answer();
}

STDMETHODIMP CommandSink::Accepts(IAppCommand* candidate, VARIANT_BOOL* result)
{
    return noted("Accepts", candidate, result);
}

STDMETHODIMP CommandSink::Offer(IAppCommand* candidate, VARIANT_BOOL* result)
{
    return noted("Offer", candidate, result);
}

STDMETHODIMP CommandSink::Submit(IAppCommand* candidate, VARIANT_BOOL* result)
{
    return noted("Submit", candidate, result);
}

HRESULT CommandSink::noted(const char* call, IAppCommand* candidate, VARIANT_BOOL* result)
{
    calls.emplace_back(call, candidate);
    *result = answer;
    if (beforeAnswer)
    {
        beforeAnswer();
        return outcome;
    }
    return FAILED(outcome) ? Failure(outcome, L"host", L"refused").report() : outcome;
}

STDMETHODIMP NumberObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                  UINT*)
{
    if (id != DISPID_VALUE || !result)
        return DISP_E_MEMBERNOTFOUND;
    *result = Variant(number_).detach();
    return S_OK;
}

void leaveError(HRESULT number, const wchar_t* source, const wchar_t* description)
{
    Failure(number, source, description).report();
}

bool errorIsLeft()
{
    ComPtr<IErrorInfo> information;
    return GetErrorInfo(0, information.put()) == S_OK;
}

} // namespace korvane::test
