// The command that arranges the groups.
#pragma once

#include "masterdata/ArrangeCommand.h"

namespace korvane
{

class ArrangeGroups final : public ArrangeCommand<ArrangeGroups, IArrangeGroups, IGroups>
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlArrangeGroups";
    static const GUID* classId() noexcept { return &__uuidof(::ArrangeGroups); }

    /// A group with the flags 1 has no place of its own.
    static bool arranges(const EventArguments& group) { return group.number(2) != 1; }

    static void load(Subscription<IGroups>& mGroups) { mGroups.load(&IGroups::Load); }

    /// Places count from 3, after the groups that are built into the system.
    static void store(const ComPtr<IGroups>& groups, long, long id, long index)
    {
        call(groups, &IGroups::SetPosition, id, index + 3);
    }

    STDMETHODIMP get_GroupCount(long* value) override { return count(value); }
    STDMETHODIMP get_GroupKey(long index, long* value) override { return key(index, value); }
    STDMETHODIMP get_GroupText(long index, BSTR* value) override { return text(index, value); }
};

} // namespace korvane
