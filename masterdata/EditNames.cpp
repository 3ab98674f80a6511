#include "masterdata/EditNames.h"

#include "framework/modKorvaneDlg.h"

namespace korvane
{

namespace
{

constexpr long superUser = 1; ///< the resource that is built into the system

constexpr long newFlags = 2;

enum ErrorId : long
{
    errorEdit = 4291,     ///< "You are not authorized to edit this ressource."
    errorSuperUser = 4899 ///< "The 'SuperUser' account cannot be mapped to user groups."
};

} // namespace

std::span<const Operand<EditNames>> EditNames::operands()
{
    static constexpr Operand<EditNames> table[] = {
        operand<&GroupItem::Root, EditNames>(L"Root"),
        operand<&GroupItem::GroupID, EditNames>(L"GroupID"),
        operand<&GroupItem::ItemID, EditNames>(L"NameID"),
        operand<&GroupItem::ItemText, EditNames>(L"NameText"),
        operand<&EditNames::NameRole>(L"Role"),
        operand<&EditNames::NameLogin>(L"Login"),
        operand<&EditNames::LoginID>(L"LoginID"),
        operand<&EditNames::NameSync>(L"Sync"),
        operand<&EditNames::NameMailbox>(L"Mailbox"),
        operand<&GroupItem::ItemColor, EditNames>(L"Color"),
    };
    return table;
}

bool EditNames::prepare()
{
    if (operation == operationAdd)
        PrepareNew();
    else
        PrepareEdit(ItemID);
    return true;
}

void EditNames::PrepareNew()
{
    takeOver({Bstr(), -1, newFlags});
    ItemID = 0;
}

void EditNames::PrepareEdit(long id)
{
    const auto names = collection<INames>(Root);
    Stored read = stored_;
    Bstr login = storedLogin_;
    long ignored = 0;
    call(names, &INames::Fetch, id, read.text.inOut(), &read.color, &ignored, login.inOut(), &read.flags,
         &ignored);
    if (!fetch(names, &INames::HasAccess, static_cast<long>(operationChange), id))
        RaiseAppError(errorEdit);
    const long role = fetch(names, &INames::GetRole, id);
    // All is read before any of it is taken over: a failure leaves what the user sees.
    Bstr mailbox = fetch(names, &INames::GetMailbox, id);
    Bstr nameLogin = login;
    takeOver(read);
    NameRole = role;
    NameLogin = std::move(nameLogin);
    NameMailbox = std::move(mailbox);
    storedLogin_ = std::move(login);
    lentLogin_ = false;
}

ComPtr<EditNames> EditNames::CloneForNew() const
{
    auto clone = make<EditNames>();
    clone->PrepareNew();
    clone->operation = operation;
    clone->GroupID = GroupID;
    clone->ItemColor = ItemColor;
    clone->Root = Root;
    return clone;
}

bool EditNames::execute()
{
    const Collections data{collection<INames>(Root), collection<IAccounts>(Root)};
    long found = 0;
    long ignored = 0;
    if (!NameLogin.empty()) // also for a removal, which does nothing with it
        call(data.accounts, &IAccounts::Lookup, NameLogin.get(), &found, &ignored, &ignored);
    LoginID = found;
    switch (operation)
    {
    case operationAdd:
        add(data);
        break;
    case operationDelete:
        leave(data.names);
        break;
    case operationChange:
        change(data);
        break;
    default:
        break;
    }
    return false; // also after a successful write: hosts do not read a failure into it
}

void EditNames::add(const Collections& data)
{
    if (ItemID == superUser)
        RaiseAppError(errorSuperUser);
    if (!isNew())
        return join(data.names);
    if (ItemID == 0)
        storedLogin_ = Bstr();
    create(data.names, newFlags);
    if (NameLogin.empty())
        removeLogin(data);
    else
        giveLogin(data);
    writeRights(data);
    join(data.names);
    ItemID = 0; // the command describes a new resource again
}

void EditNames::change(const Collections& data)
{
    if (LoginID != 0 || (!NameLogin.empty() && NameRole != roleNoUser))
        giveLogin(data);
    else
    {
        if (NameLogin.empty())
            removeLogin(data);
        NameRole = std::max(NameRole, roleNoUser);
    }
    update(data.names);
    writeRights(data);
}

/// The account with the login becomes the resource's; one that is not there is made.
void EditNames::giveLogin(const Collections& data)
{
    Bstr given = NameLogin;
    const bool exists = LoginID != 0;
    if (exists)
        fetch(data.accounts, &IAccounts::Attach, ItemID, NameLogin.get());
    else
        LoginID = fetch(data.accounts, &IAccounts::Add, NameLogin.get(), 3L, Variant(ItemID).get());
    if (given.view() != storedLogin_.view())
        lentLogin_ = exists;
    storedLogin_ = std::move(given); // what a further attempt may have to remove
}

/// The account of a login that the resource had goes with it. One that a failed attempt has lent it stays. A further
/// attempt has nothing left to remove.
void EditNames::removeLogin(const Collections& data)
{
    if (storedLogin_.empty())
        return;
    fetch(data.accounts, &IAccounts::Detach, ItemID);
    if (!lentLogin_)
        fetch(data.accounts, &IAccounts::Remove, storedLogin_.get());
    storedLogin_ = Bstr();
    lentLogin_ = false;
}

void EditNames::writeRights(const Collections& data) const
{
    call(data.names, &INames::SetSyncLogin, ItemID, NameSync ? NameLogin.get() : nullptr);
    call(data.names, &INames::SetRole, ItemID, NameRole);
}

} // namespace korvane
