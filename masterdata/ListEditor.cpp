#include "masterdata/ListEditor.h"

#include "framework/control/Keys.h"

namespace korvane
{

namespace
{

/// The texts that every list editor has, counted from its title.
enum Text : long
{
    textNew = 1,
    textEdit = 2,
    textDelete = 3,
    textAskCaption = 50,
    textAskToDiscard = 51,
    textNothingToDelete = 96
};

} // namespace

ListEditor::ListEditor(REFCLSID classId, long titleId, float dialogWidth, float height, const Texts& texts)
    : NotifiedDialog(classId, titleId, dialogWidth, height), texts_(texts)
{
    lstItems.onClick = [this] { select(); };
    lstItems.onKeyDown = [this](WORD key, DWORD modifiers) {
        const bool deselects = key == VK_SPACE && modifiers == controlKey;
        if (deselects)
        {
            lstItems.setListIndex(-1);
            select();
        }
        return deselects;
    };
    txtName.onGotFocus = [this] { txtName.selectAll(); };
    txtName.onChange = [this] { entered([this] { item().ItemText = Bstr(txtName.Text()); }); };
    colors.onChoose = [this](long color) {
        if (isExecuting())
            return colors.show(item().ItemColor);
        entered([&] { item().ItemColor = color; });
    };
}

bool ListEditor::load()
{
    if (texts_.prepareScope)
        inScope(item().Root, texts_.prepareScope, [this] { fetch(commandView(), &IAppCommand::Prepare); });
    connect();
    inScope(item().Root, texts_.fetchScope, [this] { loadData(); });
    if (!isExecuting())
        begin();
    useDefaultColor();
    show();
    switch (operation())
    {
    case operationAdd:
        setHeading(textNew);
        return true;
    case operationDelete:
        setHeading(textDelete);
        return true;
    case operationChange:
        setHeading(textEdit);
        return true;
    default:
        lblName.setCaption({});
        return false;
    }
}

/// Begins with the item that the host has named, or a new one.
void ListEditor::begin()
{
    if (const long id = itemId())
        read(id);
    else
        settle();
    changed_ = false;
}

/// Fills the lists: the data layer announces its items one by one.
void ListEditor::loadData()
{
    loadFurther();
    const ListBox::Filling filling(lstItems);
    excluded_.clear();
    const long group = item().GroupID;
    if (!adds())
        return loadItems(group);
    // Whatever exists can be added to the group, but for what is in it already.
    if (group != allGroups)
    {
        excluding_ = true;
        undoOnFailure([&] { loadItems(group); }, [this] { excluding_ = false; });
        excluding_ = false;
    }
    loadItems(allGroups);
}

void ListEditor::clearItems()
{
    lstItems.Clear();
    listed_.clear();
}

void ListEditor::addItem(long id, BSTR text, std::optional<long> group)
{
    const long ownGroup = item().GroupID;
    if (excluding_ || (adds() && ownGroup != allGroups && group == ownGroup))
        exclude(id);
    // Others who use the collection may load other groups than this dialog.
    const bool foreign = !adds() && group && ownGroup != allGroups && *group != ownGroup;
    if (foreign || excluded_.contains(id) || listed_.contains(id) || !isOffered(id))
        return;
    listed_.insert(id);
    lstItems.AddItem(text, id);
    if (id != 0 && id == itemId())
        lstItems.setListIndex(lstItems.ListCount() - 1);
}

/// It may have been announced as a member of another group before.
void ListEditor::exclude(long id)
{
    excluded_.insert(id);
    if (listed_.erase(id) > 0)
        lstItems.RemoveItem(lstItems.indexOf(id));
}

/// Makes the list show which item is at hand.
void ListEditor::selectItem()
{
    const long id = itemId();
    lstItems.setListIndex(id == 0 ? -1 : lstItems.indexOf(id));
}

void ListEditor::read(long id)
{
    inScope(item().Root, texts_.queryScope, [&] {
        readItem(id);
        settle(); // also where the scope does not close
    });
}

void ListEditor::select()
{
    isRefused_ = true;
    if (!isReady()) // what the container is executing is not exchanged
        return selectItem();
    const int index = lstItems.ListIndex();
    const long id = index < 0 ? 0 : lstItems.ItemData(index);
    isRefused_ = id != itemId();
    if (!isRefused_)
        return;
    if (changed_ &&
        ask(titleId() + textAskToDiscard, MB_YESNO | MB_ICONQUESTION, titleId() + textAskCaption) != IDYES)
        return selectItem();
    if (!isReady() || !window()) // any more: the container has gone on while the question was open
        return;
    const auto failure = attempt([&] {
        if (id == 0)
        {
            goOn();
            settle();
        }
        else
            read(id);
    });
    // Also where that failed, what is held is shown.
    isRefused_ = id != itemId();
    changed_ = changed_ && isRefused_;
    selectItem();
    show();
    if (!isRefused_)
        setHeading(id == 0 ? textNew : textEdit);
    if (failure)
        throw *failure;
}

/// OK by a double click, which is for the item that the list marks: where its first click has not led there, the one at
/// hand stays as it is.
void ListEditor::okForItem()
{
    const int index = lstItems.ListIndex();
    if (isRefused_ || (index >= 0 && lstItems.ItemData(index) != itemId()))
        return selectItem();
    ok();
}

void ListEditor::show()
{
    txtName.setText(item().ItemText.view());
    colors.show(item().ItemColor);
    showFurther();
}

/// Black counts as no colour too: the agreed behaviour.
void ListEditor::useDefaultColor()
{
    if (item().ItemColor < 1)
        item().ItemColor = ColorChoice::defaultColor();
}

void ListEditor::takeValues()
{
    if (operation() == operationDelete && item().ItemID == 0)
        RaiseAppError(titleId() + textNothingToDelete);
    if (adds() || operation() == operationChange)
        validate();
    item().ItemText = Bstr(txtName.Text());
    holdFurther();
}

/// The next one is new, in the colour of the one before.
void ListEditor::submitted(bool)
{
    const long color = item().ItemColor;
    auto next = commandView();
    const auto failure = attempt([&] {
        goOn();
        next = commandView();
        inScope(item().Root, texts_.nextScope, [&] { fetch(next, &IAppCommand::Prepare); }, -1);
    });
    if (commandView().get() != next.get())
        return; // the host has begun anew with another one
    // Also where that failed: nothing is saved twice.
    item().ItemID = 0;
    item().ItemText = Bstr();
    item().ItemColor = color;
    settle();
    changed_ = false;
    lstItems.setListIndex(-1);
    show();
    setHeading(textNew);
    if (failure)
        throw *failure;
}

void ListEditor::refresh()
{
    loadData();
    useDefaultColor();
    show();
}

} // namespace korvane
