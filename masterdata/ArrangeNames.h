// The command that arranges the resources of a group.
#pragma once

#include "masterdata/ArrangeCommand.h"

namespace korvane
{

class ArrangeNames final : public ArrangeCommand<ArrangeNames, IArrangeNames, INames>
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlArrangeNames";
    static const GUID* classId() noexcept { return &__uuidof(::ArrangeNames); }

    void load(Subscription<INames>& mNames) const { mNames.load(&INames::Load, GroupID); }

    static void store(const ComPtr<INames>& names, long group, long id, long index)
    {
        fetch(names, &INames::AddToGroup, id, group, index + 1);
    }

    STDMETHODIMP get_NameCount(long* value) override { return count(value); }
    STDMETHODIMP get_NameKey(long index, long* value) override { return key(index, value); }
    STDMETHODIMP get_NameText(long index, BSTR* value) override { return text(index, value); }
};

} // namespace korvane
