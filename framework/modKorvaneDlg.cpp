#include "framework/modKorvaneDlg.h"

#include "framework/Pictures.h"
#include "framework/com/Apartment.h"
#include "framework/com/ClassFactory.h"
#include "framework/com/Decimal.h"
#include "framework/com/Module.h"
#include "framework/com/Variant.h"

#include <KorvaneDlg.h>

#include <cstdint>
#include <limits>

namespace korvane
{

namespace
{

/// Whether an object is of the library's own Resources class: that alone answers for its class id.
bool areOwn(const ComPtr<IUnknown>& resources)
{
    void* object = nullptr; // the C++ object
    if (!resources || FAILED(resources->QueryInterface(__uuidof(::Resources), &object)))
        return false;
    resources->Release();
    return true;
}

} // namespace

void RaiseAppError(long code, std::wstring_view source, std::wstring_view description)
{
    const Bstr effectiveSource = source.empty() ? Bstr(module::programName()) : Bstr(source);
    const Bstr effectiveDescription = description.empty() ? resourceText(code) : Bstr(description);

    constexpr std::int64_t objectErrorBase = static_cast<std::int32_t>(0x80040000);
    const std::int64_t number = objectErrorBase + code;
    if (number < std::numeric_limits<std::int32_t>::min())
        throw Failure(DISP_E_OVERFLOW);
    if (number !=
        0) // number 0 is no error, so the code that leads to it raises none: hosts rely on the return
        throw Failure(static_cast<HRESULT>(number), effectiveSource.view(), effectiveDescription.view());
}

Bstr MakeKey(long id)
{
    return Bstr(decimal(id) + L'~');
}

long KeyToID(std::wstring_view key)
{
    if (key.empty())
        throw Failure(E_INVALIDARG);
    return toLong(key.substr(0, key.size() - 1)); // the last character is not looked at
}

ComPtr<IResources> CurrentResources()
{
    const auto* state = existingApartment();
    return state ? state->resources.as<IResources>() : nullptr;
}

void setCurrentResources(const ComPtr<IResources>& resources)
{
    apartment().resources = resources.as<IUnknown>();
}

ComPtr<IResources> requireResources()
{
    if (auto current = CurrentResources())
        return current;
    // Through the catalogue and not the registry: the library may be in use without registration.
    ComPtr<IClassFactory> factory;
    require(classObject(__uuidof(::Resources), IID_IClassFactory, factory.putVoid()));
    ComPtr<IResources> own;
    require(factory->CreateInstance(nullptr, __uuidof(IResources), own.putVoid()));
    setCurrentResources(own);
    return own;
}

Bstr resourceText(long id)
{
    return fetch(requireResources(), &IResources::GetString, id);
}

ComPtr<IPictureDisp> resourceBitmap(long id, int dpi)
{
    const auto resources = requireResources();
    if (areOwn(resources.as<IUnknown>()))
        return loadBitmap(id, dpi);
    return fetch(resources, &IResources::GetBitmap, id);
}

HICON resourceIcon(long id, int size)
{
    const auto resources = requireResources();
    if (areOwn(resources.as<IUnknown>()))
        return static_cast<HICON>(
            LoadImageW(module::instance(), MAKEINTRESOURCEW(id), IMAGE_ICON, size, size, 0));
    const auto picture = fetch(resources, &IResources::GetIcon, id).as<IPicture>();
    short type = PICTYPE_NONE;
    OLE_HANDLE handle = 0;
    if (!picture || FAILED(picture->get_Type(&type)) || type != PICTYPE_ICON ||
        FAILED(picture->get_Handle(&handle)))
        return nullptr;
    return static_cast<HICON>(
        CopyImage(reinterpret_cast<HICON>(static_cast<UINT_PTR>(handle)), IMAGE_ICON, size, size, 0));
}

long liveObjects() noexcept
{
    const auto* state = existingApartment();
    if (!state)
        return module::lockCount();
    long held = 1; // the state itself
    if (areOwn(state->resources))
    {
        state->resources->AddRef();
        held += state->resources->Release() == 1 ? 1 : 0;
    }
    return module::lockCount() - held;
}

} // namespace korvane
