#include "masterdata/ctlEditNames.h"

#include <algorithm>
#include <array>

namespace korvane
{

namespace
{

enum TextId : long
{
    textTitle = 22000,
    errorSyncNeedsLogin = 22090,
    errorRoleNeedsLogin = 22091,
    errorNameMissing = 22092,
    errorLoginNeedsRole = 22095
};

struct Role
{
    long text;
    long role;
};

constexpr std::array roles{Role{22011, 1}, Role{22012, 2}, Role{22013, 3}, Role{22014, roleNoUser}};

} // namespace

ctlEditNames::ctlEditNames()
    : ListEditorOf(textTitle, editorWidth, bottom + 1380,
                   Texts{.list = L"22009",
                         .listToolTip = L"22066",
                         .nameToolTip = L"22061",
                         .color = {L"22008", L"22004", L"22062"},
                         .prepareScope = nullptr,
                         .fetchScope = L"ctlEditNames.FetchData",
                         .queryScope = L"EditNames.QueryByID",
                         .nextScope = L"EditNames.Next"})
{
    cboNameRoles.onClick = [this] { entered([this] { command().NameRole = role(); }); };
    cboLoginNames.onChange = [this] {
        entered([this] { command().NameLogin = Bstr(cboLoginNames.Text()); });
    };
    cboLoginNames.onClick = [this] {
        entered([this] {
            if (const int chosen = cboLoginNames.ListIndex(); chosen >= 0)
                command().NameLogin = Bstr(cboLoginNames.List(chosen));
        });
    };
    chkSync.onClick = [this] { entered([this] { command().NameSync = chkSync.Value(); }); };
}

bool ctlEditNames::load()
{
    cboNameRoles.Clear();
    for (const Role& each : roles)
        cboNameRoles.AddItem(resourceText(each.text).get(), each.role);
    mAccounts.connect(command().Root, {.clear = [this] { cboLoginNames.ClearList(); },
                                       .add =
                                           [this](const EventArguments& account) {
                                               if (const LentText login = account.text(1);
                                                   !login.view().empty())
                                                   cboLoginNames.AddItem(login.get(), account.number(0));
                                           }});
    return ListEditor::load();
}

void ctlEditNames::loadFurther()
{
    const ComboBox::Filling filling(cboLoginNames);
    mAccounts.load(&IAccounts::Load);
}

std::optional<long> ctlEditNames::groupOf(const EventArguments& name) const
{
    return name.count() > 2 ? std::optional(name.number(2)) : std::nullopt;
}

/// A role that is not offered is none, and a resource with a mailbox is synchronised with it.
void ctlEditNames::settle()
{
    const bool offered = std::any_of(roles.begin(), roles.end(),
                                     [this](const Role& each) { return each.role == command().NameRole; });
    if (!offered)
        command().NameRole = roleNoUser;
    command().NameSync = !command().NameMailbox.empty();
    if (command().NameSync)
        command().NameLogin = command().NameMailbox;
}

void ctlEditNames::showFurther()
{
    cboNameRoles.setListIndex(cboNameRoles.indexOf(command().NameRole));
    showLogin();
    chkSync.setValue(command().NameSync);
}

/// What the user is typing is left alone: the caret would be lost.
void ctlEditNames::showLogin()
{
    const std::wstring_view login = command().NameLogin.view();
    if (cboLoginNames.hasFocus() && cboLoginNames.Text() == login)
        return;
    if (const int index = cboLoginNames.indexOf(login); index >= 0)
        cboLoginNames.setListIndex(index);
    else
        cboLoginNames.setText(login);
}

long ctlEditNames::role() const noexcept
{
    const int chosen = cboNameRoles.ListIndex();
    return chosen < 0 ? roleNoUser : cboNameRoles.ItemData(chosen);
}

void ctlEditNames::validate() const
{
    if (txtName.Text().empty())
        RaiseAppError(errorNameMissing);
    if (command().operation == operationAdd && !command().isNew())
        return; // an existing resource is added to the group as it is
    const bool hasLogin = !cboLoginNames.Text().empty();
    if (chkSync.Value() && !hasLogin)
        RaiseAppError(errorSyncNeedsLogin);
    if (role() != roleNoUser && !hasLogin)
        RaiseAppError(errorRoleNeedsLogin);
    if (hasLogin && role() == roleNoUser && !chkSync.Value())
        RaiseAppError(errorLoginNeedsRole);
}

/// Platforms differ on whether they tell of an item that the user has chosen and then not taken.
void ctlEditNames::holdFurther()
{
    command().NameRole = role();
    command().NameLogin = Bstr(cboLoginNames.Text());
    command().NameSync = chkSync.Value();
}

} // namespace korvane
