#include "framework/com/Failure.h"

#include "framework/com/Apartment.h"
#include "framework/com/Boundary.h"
#include "framework/com/Module.h"

#include <new>

namespace korvane
{

namespace
{

/// What hosts meet most often, for systems that have no text for it.
std::wstring_view ownText(HRESULT number) noexcept
{
    switch (number)
    {
    case DISP_E_TYPEMISMATCH:
        return L"The value is of a type that cannot be converted.";
    case DISP_E_OVERFLOW:
        return L"The value is out of range.";
    case DISP_E_BADVARTYPE:
        return L"The value is of an unknown type.";
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
        return L"The object has no such member.";
    case DISP_E_BADPARAMCOUNT:
    case DISP_E_PARAMNOTOPTIONAL:
        return L"The number of arguments is wrong.";
    case E_POINTER:
        return L"An object, or a place for the result, is missing.";
    case E_INVALIDARG:
        return L"An argument is wrong.";
    case E_NOINTERFACE:
        return L"The object does not have the interface that is needed.";
    case REGDB_E_CLASSNOTREG:
    case CO_E_CLASSSTRING:
        return L"The class is not registered.";
    case E_UNEXPECTED:
        return L"An unexpected error occurred.";
    default:
        return {};
    }
}

/// The system's text for an HRESULT, without its line end; the library's own one where the system has none,
/// and empty where neither has.
Bstr systemText(HRESULT number)
{
    wchar_t buffer[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(number), 0, buffer, ARRAYSIZE(buffer), nullptr);
    while (length > 0 && buffer[length - 1] <= L' ')
        --length;
    return Bstr(length > 0 ? std::wstring_view(buffer, length) : ownText(number));
}

ComPtr<IErrorInfo> makeInformation(const Bstr& source, const Bstr& description)
{
    ComPtr<ICreateErrorInfo> maker;
    if (FAILED(CreateErrorInfo(maker.put())))
        throw std::bad_alloc();
    maker->SetSource(source.get());
    maker->SetDescription(description.get());
    return maker.as<IErrorInfo>();
}

} // namespace

Failure::Failure(HRESULT number, std::wstring_view source, std::wstring_view description)
    : number_(number), information_(makeInformation(Bstr(source), Bstr(description)))
{
}

Failure Failure::ofCall(HRESULT number, IUnknown* object, REFIID calledInterface) noexcept
{
    // Error information is taken only where the object answers for it: otherwise it could be a leftover
    // of an earlier call on this thread.
    Failure failure(number);
    failure.ofCall_ = true;
    const auto support = queryFor<ISupportErrorInfo>(object);
    if (support && support->InterfaceSupportsErrorInfo(calledInterface) == S_OK)
        GetErrorInfo(0, failure.information_.put());
    return failure;
}

Failure Failure::ofHost(HRESULT number) noexcept
{
    Failure failure(number);
    failure.ofCall_ = true;
    GetErrorInfo(0, failure.information_.put());
    // A failure of the library's own that the host has met in the call, and dealt with, is known by its number.
    const auto* state = existingApartment();
    if (state && failure.information_ && failure.information_.get() == state->reported.get() &&
        state->reportedNumber != number)
        failure.information_.reset();
    return failure;
}

void throwFailure(HRESULT number)
{
    throw Failure(number);
}

void throwFailureOfCall(HRESULT number, IUnknown* object, REFIID calledInterface)
{
    throw Failure::ofCall(number, object, calledInterface);
}

Bstr Failure::source() const
{
    return isOfPlatform() ? Bstr(module::programName()) : fetchIfAny(information_, &IErrorInfo::GetSource);
}

Bstr Failure::description() const
{
    return isOfPlatform() ? systemText(number_) : fetchIfAny(information_, &IErrorInfo::GetDescription);
}

HRESULT Failure::report() const noexcept
{
    ComPtr<IErrorInfo> information = information_;
    // A lack of memory is told by its number alone.
    if (isOfPlatform() && number_ != E_OUTOFMEMORY)
        attempt([&] { information = makeInformation(source(), description()); });
    SetErrorInfo(0, information.get());
    // A number that means success would not arrive as an error.
    const HRESULT number =
        FAILED(number_) ? number_ : MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number_ & 0xFFFF);
    if (auto* state = existingApartment())
    {
        state->reportedNumber = number;
        state->reported = std::move(information); // last: the former one may be the host's
    }
    return number;
}

} // namespace korvane
