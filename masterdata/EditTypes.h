// The command that creates, edits and removes activity types.
#pragma once

#include "masterdata/GroupItem.h"

#include <KorvaneDlg.h>

namespace korvane
{

class EditTypes final : public AppCommand<EditTypes, IEditTypes>, public GroupItem
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlEditTypes";
    static const GUID* classId() noexcept { return &__uuidof(::EditTypes); }
    static std::span<const Operand<EditTypes>> operands();

    bool prepare() const noexcept { return true; } // reads nothing: the dialog does, when a type is chosen
    bool execute();

    // For the dialog.
    /// Reads a type that the user may edit. Whose id TypeID is, is left to the caller.
    void PrepareEdit(long id);
    /// A command for a further new type of the same group and colour.
    ComPtr<EditTypes> CloneForNew() const;

    STDMETHODIMP get_Root(IRoot** value) override { return read(value, Root); }
    STDMETHODIMP putref_Root(IRoot* value) override { return write(Root, value); }
    STDMETHODIMP get_TypeID(long* value) override { return read(value, ItemID); }
    STDMETHODIMP put_TypeID(long value) override { return write(ItemID, value); }
    STDMETHODIMP get_GroupID(long* value) override { return read(value, GroupID); }
    STDMETHODIMP put_GroupID(long value) override { return write(GroupID, value); }
    STDMETHODIMP get_TypeText(BSTR* value) override { return read(value, ItemText); }
    STDMETHODIMP put_TypeText(BSTR value) override { return write(ItemText, value); }
    STDMETHODIMP get_TypeColor(long* value) override { return read(value, ItemColor); }
    STDMETHODIMP put_TypeColor(long value) override { return write(ItemColor, value); }
};

} // namespace korvane
