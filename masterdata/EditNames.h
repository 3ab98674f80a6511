// The command that creates, edits and removes resources, with their logins.
#pragma once

#include "masterdata/GroupItem.h"

#include <KorvaneDlg.h>

namespace korvane
{

/// The role of a resource that is no user.
constexpr long roleNoUser = -1;

class EditNames final : public AppCommand<EditNames, IEditNames>, public GroupItem
{
public:
    static constexpr const wchar_t* dialogClass = L"KorvaneDlg.ctlEditNames";
    static const GUID* classId() noexcept { return &__uuidof(::EditNames); }
    static std::span<const Operand<EditNames>> operands();

    bool prepare();
    bool execute();

    // For the dialog.
    /// Starts a new resource. Role, login, synchronisation and mailbox stay.
    void PrepareNew();
    /// Reads a resource that the user may edit. Whose id NameID is, is left to the caller.
    void PrepareEdit(long id);
    /// A command for a further new resource of the same group and colour.
    ComPtr<EditNames> CloneForNew() const;

    STDMETHODIMP get_Root(IRoot** value) override { return read(value, Root); }
    STDMETHODIMP putref_Root(IRoot* value) override { return write(Root, value); }
    STDMETHODIMP get_NameID(long* value) override { return read(value, ItemID); }
    STDMETHODIMP put_NameID(long value) override { return write(ItemID, value); }
    STDMETHODIMP get_GroupID(long* value) override { return read(value, GroupID); }
    STDMETHODIMP put_GroupID(long value) override { return write(GroupID, value); }
    STDMETHODIMP get_LoginID(long* value) override { return read(value, LoginID); }
    STDMETHODIMP put_LoginID(long value) override { return write(LoginID, value); }
    STDMETHODIMP get_NameText(BSTR* value) override { return read(value, ItemText); }
    STDMETHODIMP put_NameText(BSTR value) override { return write(ItemText, value); }
    STDMETHODIMP get_NameColor(long* value) override { return read(value, ItemColor); }
    STDMETHODIMP put_NameColor(long value) override { return write(ItemColor, value); }
    STDMETHODIMP get_NameRole(long* value) override { return read(value, NameRole); }
    STDMETHODIMP put_NameRole(long value) override { return write(NameRole, value); }
    STDMETHODIMP get_NameLogin(BSTR* value) override { return read(value, NameLogin); }
    STDMETHODIMP put_NameLogin(BSTR value) override { return write(NameLogin, value); }
    STDMETHODIMP get_NameSync(VARIANT_BOOL* value) override { return read(value, NameSync); }
    STDMETHODIMP put_NameSync(VARIANT_BOOL value) override { return write(NameSync, value); }
    STDMETHODIMP get_NameMailbox(BSTR* value) override { return read(value, NameMailbox); }
    // The mailbox belongs to the mail system: only the operand writes it, and hosts rely on that.
    STDMETHODIMP put_NameMailbox(BSTR) override { return S_OK; }

    long LoginID = 0; ///< the account that was found for the login; 0 for none
    long NameRole = 0;
    Bstr NameLogin; ///< empty for a resource without a login
    bool NameSync = false;
    Bstr NameMailbox;

private:
    struct Collections
    {
        ComPtr<INames> names;
        ComPtr<IAccounts> accounts;
    };
    void add(const Collections& data);
    void change(const Collections& data);
    void giveLogin(const Collections& data);
    void removeLogin(const Collections& data);
    void writeRights(const Collections& data) const;

    Bstr storedLogin_;       ///< the one that the resource has in the data layer
    bool lentLogin_ = false; ///< its account was there before it became the resource's
};

} // namespace korvane
