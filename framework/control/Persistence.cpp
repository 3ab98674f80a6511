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
    setEnabled(true);
    dirty_ = false;
    return S_OK;
}

STDMETHODIMP OleControl::Load(IStream* stream)
{
    return held([&] {
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
    return held([&] {
        const Stored stored{currentVersion, enabled_ ? 1UL : 0UL};
        ULONG written = sizeof stored; // unless the stream says otherwise
        require(notNull(stream)->Write(&stored, sizeof stored, &written));
        if (written != sizeof stored)
            throw Failure(STG_E_MEDIUMFULL);
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
    return held([&] {
        Variant value(false); // of the type that the bag is to convert to, which not every bag does
        const HRESULT result = notNull(bag)->Read(enabledName, value.inOut(), log);
        // A property that is missing has its default.
        setEnabled(FAILED(result) || value.isEmpty() || toBool(value.get()));
        dirty_ = false;
    });
}

STDMETHODIMP OleControl::Save(IPropertyBag* bag, BOOL clearDirty, BOOL)
{
    return held([&] {
        VARIANT value = Variant(enabled_).get();
        require(notNull(bag)->Write(enabledName, &value));
        dirty_ = dirty_ && !clearDirty;
    });
}

} // namespace korvane
