// A dialog keeps one design-time property, Enabled: its size is its own, and its font comes from the container.
#include "framework/control/OleControl.h"

namespace korvane
{

namespace
{

/// What is in a stream.
struct Stored
{
    DWORD version;
    DWORD enabled;
};

constexpr DWORD currentVersion = 1;
constexpr const wchar_t* enabledName = L"Enabled";

} // namespace

STDMETHODIMP OleControl::GetClassID(CLSID* classId)
{
    if (!classId)
        return E_POINTER;
    *classId = classId_;
    return S_OK;
}

STDMETHODIMP OleControl::IsDirty()
{
    return dirty_ ? S_OK : S_FALSE;
}

STDMETHODIMP OleControl::InitNew()
{
    enabled_ = true;
    dirty_ = false;
    return S_OK;
}

STDMETHODIMP OleControl::Load(IStream* stream)
{
    return guard([&] {
        Stored stored{};
        ULONG read = 0;
        require(notNull(stream)->Read(&stored, sizeof stored, &read));
        if (read != sizeof stored || stored.version != currentVersion)
            throw Failure(STG_E_INVALIDHEADER);
        setEnabled(stored.enabled != 0);
        dirty_ = false;
    });
}

STDMETHODIMP OleControl::Save(IStream* stream, BOOL clearDirty)
{
    return guard([&] {
        const Stored stored{currentVersion, enabled_ ? 1UL : 0UL};
        require(notNull(stream)->Write(&stored, sizeof stored, nullptr));
        dirty_ = dirty_ && !clearDirty;
    });
}

STDMETHODIMP OleControl::GetSizeMax(ULARGE_INTEGER* size)
{
    if (!size)
        return E_POINTER;
    size->QuadPart = sizeof(Stored);
    return S_OK;
}

STDMETHODIMP OleControl::Load(IPropertyBag* bag, IErrorLog* log)
{
    return guard([&] {
        VARIANT value;
        VariantInit(&value);
        value.vt = VT_BOOL; // the type that the bag is to convert to
        const HRESULT result = notNull(bag)->Read(enabledName, &value, log);
        setEnabled(FAILED(result) ||
                   value.boolVal != VARIANT_FALSE); // a property that is missing has its default
        dirty_ = false;
    });
}

STDMETHODIMP OleControl::Save(IPropertyBag* bag, BOOL clearDirty, BOOL)
{
    return guard([&] {
        VARIANT value = Variant(enabled_).get();
        require(notNull(bag)->Write(enabledName, &value));
        dirty_ = dirty_ && !clearDirty;
    });
}

} // namespace korvane
