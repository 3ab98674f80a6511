// The base of the dialogs that edit the items of a group one after the other: a list to choose from, a name, and a
// colour. What is shown is held by the command at once; OK submits it and goes on with a further new item, until Cancel.
#pragma once

#include "framework/NotifiedDialog.h"
#include "framework/control/ListBox.h"
#include "framework/control/TextBox.h"
#include "masterdata/ColorChoice.h"
#include "masterdata/GroupItem.h"

#include <optional>
#include <unordered_set>

namespace korvane
{

class ListEditor : public NotifiedDialog
{
protected:
    /// The texts of the layout by their ids, and the scopes of the steps.
    struct Texts
    {
        const wchar_t* list;
        const wchar_t* listToolTip;
        const wchar_t* nameToolTip;
        ColorChoice::Texts color;
        const wchar_t* prepareScope; ///< null where the host alone prepares the command
        const wchar_t* fetchScope;
        const wchar_t* queryScope;
        const wchar_t* nextScope;
    };

    static constexpr float editorWidth = 6120;
    static constexpr float bottom = 3390; ///< of what the base shows
    static constexpr long allGroups = 0;

    ListEditor(REFCLSID classId, long titleId, float dialogWidth, float height, const Texts& texts);

    bool load() override;
    void takeValues() override;
    void submitted(bool executed) override;
    void refresh() override;

    /// The command at hand.
    virtual GroupItem& item() const = 0;
    virtual long operation() const = 0;
    /// Makes the command at hand that of an item.
    virtual void readItem(long id) = 0;
    /// Goes on with a command for a further new item.
    virtual void goOn() = 0;

    virtual void connect() = 0;
    virtual void loadItems(long groupId) = 0;
    virtual bool isOffered(long id) = 0;
    void clearItems();
    /// @param group as whose member the item is announced, where that is said.
    void addItem(long id, BSTR text, std::optional<long> group);

    /// What an item has besides its name and colour.
    virtual void loadFurther() {}
    /// Makes the command hold what can be shown, when another item is shown.
    virtual void settle() {}
    virtual void showFurther() {}
    /// Throws for an item that cannot be saved like this.
    virtual void validate() const = 0;
    virtual void holdFurther() {}

    /// The user has entered something, which the command holds at once, or at the next OK where it is being executed.
    template <class Hold> void entered(Hold&& hold)
    {
        if (!isExecuting())
            hold();
        changed_ = true;
    }
    void okForItem();

    const Texts texts_;

    Label lblItems{*this, {.name = L"lblItems", .place = {120, 165, 1500, 210}, .text = texts_.list}};
    ListBox lstItems{*this,
                     {.name = L"lstItems", .place = {1680, 120, 4320, 1920}, .toolTip = texts_.listToolTip}};
    Label lblName{*this, {.name = L"lblName", .place = {120, 2205, 1500, 210}}};
    TextBox txtName{*this,
                    {.name = L"txtName", .place = {1680, 2160, 4320, 315}, .toolTip = texts_.nameToolTip}};
    ColorChoice colors{*this, {120, 2610, 1500, 210}, {1680, 2565, 4320, 315}, texts_.color};

private:
    bool adds() const { return operation() == operationAdd; }
    /// 0 for a new item, also where a failed attempt has created it.
    long itemId() const { return item().isNew() ? 0 : item().ItemID; }

    void begin();
    void loadData();
    void exclude(long id);
    void read(long id);
    void select();
    void selectItem();
    void setHeading(long text) { lblName.setCaption(resourceText(titleId() + text).view()); }
    void show();
    void useDefaultColor();

    bool changed_ = false;              ///< since an item was shown or saved
    bool isRefused_ = false;            ///< the last click on the list has not led to its item
    std::unordered_set<long> listed_;   ///< what stands in the list
    std::unordered_set<long> excluded_; ///< what is never offered: it is in the group already
    bool excluding_ = false;            ///< what is announced now is not to be offered
};

/// A list editor for the items of one collection.
template <class Class, class Command, class Collection>
class ListEditorOf : public Dialog<Class, Command, ListEditor, IXtExecuteEvents>
{
protected:
    using ListEditorOf::Dialog::Dialog;

    /// The group as whose member an item is announced, where that is said.
    virtual std::optional<long> groupOf(const EventArguments&) const { return std::nullopt; }
    /// An item that is built into the system, and never offered.
    virtual long builtIn() const = 0;

    Subscription<Collection> items_{this};

private:
    GroupItem& item() const final { return this->command(); }
    long operation() const final { return this->command().operation; }
    void readItem(long id) final
    {
        auto& read = this->command(); // another one may be at hand after a call
        read.PrepareEdit(id);
        read.ItemID = id;
    }
    void goOn() final { this->replaceCommand(this->command().CloneForNew()); }
    void connect() final
    {
        const auto add = [this](const EventArguments& added) {
            if (this->hasCommand()) // else there is nothing to list it for
                this->addItem(added.number(0), added.text(1).get(), groupOf(added));
        };
        items_.connect(this->command().Root, {.clear = [this] { this->clearItems(); }, .add = add});
    }
    void loadItems(long groupId) final { items_.load(&Collection::Load, groupId); }
    bool isOffered(long id) final
    {
        return id != builtIn() && fetch(items_.get(), &Collection::HasAccess, operation(), id);
    }
};

} // namespace korvane
