// The dialog of the resource command.
#pragma once

#include "framework/control/CheckBox.h"
#include "framework/control/ComboBox.h"
#include "masterdata/EditNames.h"
#include "masterdata/ListEditor.h"

namespace korvane
{

class ctlEditNames final : public ListEditorOf<ctlEditNames, EditNames, INames>
{
public:
    static const GUID* classId() noexcept { return &__uuidof(::ctlEditNames); }

    ctlEditNames();

private:
    bool load() override;
    void loadFurther() override;
    void settle() override;
    void showFurther() override;
    void validate() const override;
    void holdFurther() override;
    std::optional<long> groupOf(const EventArguments& name) const override;
    long builtIn() const override { return 1; } // the super-user

    long role() const noexcept;
    void showLogin();

    Subscription<IAccounts> mAccounts{this};

    Label lblRole{*this, {.name = L"lblRole", .place = {120, bottom + 45, 1500, 210}, .text = L"22005"}};
    ComboBox cboNameRoles{*this,
                          {.name = L"cboNameRoles", .place = {1680, bottom, 2430, 315}, .toolTip = L"22063"}};
    Label lblLogin{*this, {.name = L"lblLogin", .place = {120, bottom + 435, 1500, 210}, .text = L"22007"}};
    ComboBox cboLoginNames{
        *this,
        {.name = L"cboLoginNames", .place = {1680, bottom + 390, 2430, 315}, .toolTip = L"22064"},
        ComboBox::Kind::edit};
    CheckBox chkSync{*this,
                     {.name = L"chkSync",
                      .place = {4230, bottom + 435, 1770, 225},
                      .text = L"22006",
                      .toolTip = L"22065"}};

    CommandFrame fraCommands{*this, {0, bottom + 765, editorWidth, 615}};
};

} // namespace korvane
