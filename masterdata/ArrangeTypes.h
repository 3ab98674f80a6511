// The command that arranges the activity types of a group.
#pragma once

#include "masterdata/ArrangeCommand.h"

namespace korvane
{

class ArrangeTypes final : public ArrangeCommand<ArrangeTypes, IArrangeTypes, ITypes>
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlArrangeTypes";
    static const GUID* classId() noexcept { return &__uuidof(::ArrangeTypes); }

    void load(Subscription<ITypes>& mTypes) const { mTypes.load(&ITypes::Load, GroupID); }

    static void store(const ComPtr<ITypes>& types, long group, long id, long index)
    {
        fetch(types, &ITypes::AddToGroup, id, group, index + 1);
    }

    STDMETHODIMP get_TypeCount(long* value) override { return count(value); }
    STDMETHODIMP get_TypeKey(long index, long* value) override { return key(index, value); }
    STDMETHODIMP get_TypeText(long index, BSTR* value) override { return text(index, value); }
};

} // namespace korvane
