// The command that adds, renames and deletes groups.
#pragma once

#include "framework/AppCommand.h"
#include "framework/DataLayer.h"

#include <KorvaneDlg.h>

namespace korvane
{

class EditGroups final : public AppCommand<EditGroups, IEditGroups>
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlEditGroups";
    static const GUID* classId() noexcept { return &__uuidof(::EditGroups); }
    static std::span<const Operand<EditGroups>> operands();

    bool prepare();
    bool execute();

    /// Starts a new group: no id, no name, flags 1.
    void PrepareNew();
    /// Reads name and flags of the group that GroupID names.
    void PrepareEdit();

    STDMETHODIMP get_Root(IRoot** value) override { return read(value, Root); }
    STDMETHODIMP putref_Root(IRoot* value) override { return write(Root, value); }
    STDMETHODIMP get_GroupID(long* value) override { return read(value, GroupID); }
    STDMETHODIMP put_GroupID(long value) override { return write(GroupID, value); }
    STDMETHODIMP get_GroupName(BSTR* value) override { return read(value, GroupName); }
    STDMETHODIMP put_GroupName(BSTR value) override { return write(GroupName, value); }

    ComPtr<IRoot> Root;
    long GroupID = 0;
    Bstr GroupName;

private:
    ComPtr<IGroups> groups() const { return collection<IGroups>(Root); }

    long groupFlags_ = 0;
    Bstr fetchedName_;
    long fetchedFlags_ = 0;
};

} // namespace korvane
