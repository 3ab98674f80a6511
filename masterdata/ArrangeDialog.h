// The base of the dialogs in which the user puts a list into an order of his own: with buttons, with Alt and the arrow
// keys, or by dragging.
#pragma once

#include "framework/AppDialog.h"
#include "framework/control/Label.h"
#include "framework/control/ListBox.h"
#include "framework/control/OrderButtons.h"
#include "masterdata/Arrangement.h"

#include <optional>

namespace korvane
{

class ArrangeDialog : public AppDialog
{
protected:
    static constexpr float designWidth = 4200;
    static constexpr float designHeight = 3900;

    /// @param list text id of the list's label. @param scope source of the step of loading: hosts know it as that of
    /// the edit dialogs.
    ArrangeDialog(REFCLSID classId, long titleId, float width, float height, const wchar_t* list,
                  const wchar_t* scope);

    /// What the command holds.
    virtual Arrangement& arrangement() const = 0;

private:
    bool load() override;
    void takeValues() override;
    void shown() override;
    bool resizable() const noexcept override { return true; }
    void resized() override;
    Extent minimumSize() const noexcept override;

    void fill(const ItemTable& items);
    bool showsAll() const;
    bool moveByKey(WORD key, DWORD modifiers);
    void move(OrderButtons::Move to);
    void moveEntry(int target);

    static constexpr float commandsWidth = 2610;
    static constexpr float commandsHeight = 615;

    const wchar_t* scope_;
    std::optional<Failure> failure_; ///< of the last attempt to load

    Label lblArrange;
    ListBox lstArrange{*this, {.name = L"lstArrange", .place = {120, 375, 3465, 2910}}};
    OrderButtons cmdMove{*this, {3705, 375, 375, 375}, 60};
    CommandFrame fraCommands{
        *this, {designWidth - commandsWidth, designHeight - commandsHeight, commandsWidth, commandsHeight}};
};

/// The dialog for one arrange command.
template <class Class, class Command> class ArrangeDialogOf : public Dialog<Class, Command, ArrangeDialog>
{
protected:
    ArrangeDialogOf(long titleId, const wchar_t* list, const wchar_t* scope)
        : ArrangeDialogOf::Dialog(titleId, ArrangeDialog::designWidth, ArrangeDialog::designHeight, list,
                                  scope)
    {
    }

private:
    Arrangement& arrangement() const override { return this->command(); }
};

} // namespace korvane
