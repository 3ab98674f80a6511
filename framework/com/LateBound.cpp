#include "framework/com/LateBound.h"

namespace korvane
{

namespace
{

DISPID idOf(const ComPtr<IDispatch>& object, std::wstring_view member)
{
    Bstr name(member);
    LPOLESTR names[] = {name.get()};
    DISPID id = DISPID_UNKNOWN;
    call(object, &IDispatch::GetIDsOfNames, IID_NULL, names, 1U, LOCALE_USER_DEFAULT, &id);
    return id;
}

Variant callByName(const ComPtr<IDispatch>& object, std::wstring_view member, WORD kind,
                   std::initializer_list<Variant> arguments)
{
    const ComPtr<IDispatch> held(object.get()); // the pointer may be emptied in either call
    const DISPID id = idOf(held, member);
    std::vector<VARIANT> values = lastFirst(arguments);
    DISPPARAMS parameters{values.data(), nullptr, static_cast<UINT>(values.size()), 0};
    EXCEPINFO exception{};
    VARIANT result{};
    const HRESULT outcome =
        held->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, &result, &exception, nullptr);
    if (FAILED(outcome))
        throw failureOfInvoke(outcome, exception);
    return owned(result);
}

} // namespace

std::vector<VARIANT> lastFirst(std::initializer_list<Variant> arguments)
{
    std::vector<VARIANT> values(arguments.size());
    auto place = values.rbegin();
    for (const Variant& argument : arguments)
        *place++ = argument.get();
    return values;
}

Failure failureOfInvoke(HRESULT outcome, EXCEPINFO& exception)
{
    if (exception.pfnDeferredFillIn)
        exception.pfnDeferredFillIn(&exception);
    const Bstr source = Bstr::adopt(std::exchange(exception.bstrSource, nullptr));
    const Bstr description = Bstr::adopt(std::exchange(exception.bstrDescription, nullptr));
    const Bstr help = Bstr::adopt(std::exchange(exception.bstrHelpFile, nullptr));
    if (outcome != DISP_E_EXCEPTION)
        return Failure(outcome);
    const HRESULT number =
        exception.scode != 0 ? exception.scode : MAKE_HRESULT(1, FACILITY_CONTROL, exception.wCode);
    return {number, source.view(), description.view()};
}

Variant get(const ComPtr<IDispatch>& object, std::wstring_view property,
            std::initializer_list<Variant> arguments)
{
    return callByName(object, property, DISPATCH_PROPERTYGET, arguments);
}

Variant getIfAny(const ComPtr<IDispatch>& object, std::wstring_view property)
{
    Bstr name(property);
    LPOLESTR names[] = {name.get()};
    DISPID id = DISPID_UNKNOWN;
    if (!object || FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)))
        return {};
    DISPPARAMS none{};
    VARIANT value{};
    const HRESULT outcome = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                           &value, nullptr, nullptr);
    return owned(SUCCEEDED(outcome) ? value : VARIANT{});
}

Variant invoke(const ComPtr<IDispatch>& object, std::wstring_view method,
               std::initializer_list<Variant> arguments)
{
    return callByName(object, method, DISPATCH_METHOD, arguments);
}

ComPtr<IUnknown> objectIn(const Variant& value)
{
    return value.type() == VT_DISPATCH || value.type() == VT_UNKNOWN ? toObject(value.get()) : nullptr;
}

ComPtr<IUnknown> createObject(std::wstring_view progId)
{
    CLSID classId{};
    require(CLSIDFromProgID(Bstr(progId).get(), &classId));
    ComPtr<IUnknown> object;
    require(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.putVoid()));
    return object;
}

} // namespace korvane
