// The command that adds, renames and deletes groups.
#pragma once

#include "framework/AppCommand.h"

#include <KorvaneData.h>
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

    STDMETHODIMP get_Root(IRoot** value) override;
    STDMETHODIMP putref_Root(IRoot* value) override;
    STDMETHODIMP get_GroupID(long* value) override;
    STDMETHODIMP put_GroupID(long value) override;
    STDMETHODIMP get_Command(IAppCommand** value) override;
    STDMETHODIMP get_GroupName(BSTR* value) override;
    STDMETHODIMP put_GroupName(BSTR value) override;

    ComPtr<IRoot> Root;
    long GroupID = 0;
    Bstr GroupName;

private:
    ComPtr<IGroups> groups() const;

    long groupFlags_ = 0;
    Bstr fetchedName_;
    long fetchedFlags_ = 0;
};

} // namespace korvane
