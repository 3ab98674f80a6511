#include "activities/ctlEditEvents.h"

namespace korvane
{

namespace
{

enum TextId : long
{
    textTitle = 25000,
    textChange = 25008,
    textEditAllOccurrences = 25102
};

/// Groups with this flag are built into the system and never shown.
constexpr long hiddenGroup = 1;

constexpr long allGroups = 0;

} // namespace

ctlEditEvents::ctlEditEvents() : Dialog(textTitle, 5640, 5550)
{
    tree.hasName = [this](long nameId) { return command().HasName(nameId); };
    tree.setName = [this](long nameId, bool checked) { command().SetName(nameId, checked); };
    dtpStart.onChange = [this] { command().T0 = dtpStart.Value(); };
    dtpStop.onChange = [this] { command().T1 = dtpStop.Value(); };
    txtText.onChange = [this] { command().Text = Bstr(txtText.Text()); };
    cboTypes.onClick = [this] { chooseType(); };
    cmdRemove.onClick = [this] { remove(); };
}

bool ctlEditEvents::load()
{
    subscribe();
    if (!isExecuting())
        askForOccurrence();
    const TreeView::Filling filling(tree.tvwNames);
    Init();
    showFields();
    return showHeading();
}

void ctlEditEvents::subscribe()
{
    const auto& root = command().Root;
    mGroups.connect(root, {.clear = [this] { tree.clearGroups(); },
                           .add = [this](const EventArguments& group) { addGroup(group); }});
    mNames.connect(root, {.clear = [this] { tree.clearNames(); },
                          .add = [this](const EventArguments& name) { addName(name); }});
    mTypes.connect(root, {.clear = [this] { clearTypes(); },
                          .add = [this](const EventArguments& type) { addType(type); }});
    mEvents.connect(root, {});
}

/// One occurrence of a repeating activity has been opened: is it the whole series that is meant?
void ctlEditEvents::askForOccurrence()
{
    auto& asked = command(); // the container may set another one meanwhile
    if (asked.Instance != 0 && ask(textEditAllOccurrences, MB_YESNO | MB_ICONQUESTION) == IDYES)
        asked.Instance = 0;
}

/// Reads the activity, then fills the tree and the types: the data layer announces them one by one.
void ctlEditEvents::Init()
{
    inScope(command().Root, L"ctlEditEvents.Init", [&] {
        if (!isExecuting())
            fetch(command().asCommand(), &IAppCommand::Prepare);
        mGroups.load(&IGroups::Load);
        mNames.load(&INames::Load, allGroups);
        tree.settleNames(command().GroupID);
        mTypes.load(&ITypes::Load, command().GroupID);
    });
    tree.showChoice();
}

void ctlEditEvents::addGroup(const EventArguments& group)
{
    if (group.number(2) != hiddenGroup)
        tree.addGroup(group.number(0), group.text(1).get());
}

/// A resource that is announced without a group, or only with groups that are not shown, stands in the command's group.
void ctlEditEvents::addName(const EventArguments& name)
{
    const bool hasGroup = name.count() > 2;
    tree.addName(name.number(0), name.text(1).get(), hasGroup ? name.number(2) : command().GroupID);
    if (!mNames.isLoading()) // else it may still be announced with a group that is
        tree.settleNames(command().GroupID);
}

void ctlEditEvents::clearTypes()
{
    cboTypes.Clear();
    typeColors_.clear();
    showTypeColor();
}

void ctlEditEvents::addType(const EventArguments& type)
{
    typeColors_.reserve(typeColors_.size() + 1);
    cboTypes.AddItem(type.text(1).get(), type.number(0));
    typeColors_.push_back(type.number(2));
    if (type.number(0) == command().TypeID)
    {
        cboTypes.setListIndex(cboTypes.ListCount() - 1);
        showTypeColor();
    }
}

void ctlEditEvents::showFields()
{
    dtpStart.setValue(command().T0);
    dtpStop.setValue(command().T1);
    txtText.setText(command().Text.view());

    // An occurrence edited by itself keeps its resources and cannot repeat.
    const bool single = command().Instance != 0 || command().ExceptionFlag() != 0;
    if (single)
        recurrence.lock();
    else
        recurrence.fill();
    tree.tvwNames.setEnabled(command().MayBookOthers() && !single);
    tree.select(command().NameID, command().GroupID);
}

bool ctlEditEvents::showHeading()
{
    const long operation = command().operation;
    lblPrompt.setVisible(operation == operationAdd);
    lblHeading.setVisible(operation != operationAdd);
    lblHeading.setCaption(resourceText(operation == operationChange ? textTitle : textChange).view());
    cmdRemove.setEnabled(operation == operationChange);
    return operation == operationAdd || operation == operationChange;
}

void ctlEditEvents::chooseType()
{
    showTypeColor();
    if (const int chosen = cboTypes.ListIndex(); chosen >= 0)
        command().TypeID = cboTypes.ItemData(chosen);
}

void ctlEditEvents::showTypeColor()
{
    const int chosen = cboTypes.ListIndex();
    shpType.setFillColor(chosen < 0 ? 0 : typeColors_.at(static_cast<std::size_t>(chosen)));
}

/// The buttons follow the panel, and the dialog's height follows the buttons.
void ctlEditEvents::layOut()
{
    fraCommands.setTop(recurrence.bottom());
    setSize(Width(), fraCommands.bottom());
    raiseResize();
}

/// Every change has gone to the command at once. What is left is a primary resource that was checked last and
/// unchecked again: executed like that, the command would not book the other resources that were added, or give the
/// activity to a resource that nobody has chosen.
void ctlEditEvents::takeValues()
{
    const NameSet& chosen = command().links.chosen;
    const NameSet& booked = command().links.booked;
    if (!chosen.empty() && !chosen.contains(command().NameID))
        command().SetName(chosen.first(), true);
    else if (chosen.empty() && !booked.empty())
        command().NameID = booked.first();
}

void ctlEditEvents::remove()
{
    if (!isReady())
        return;
    auto& removed = command(); // the container may set another one meanwhile
    const long former = std::exchange(removed.operation, operationDelete);
    undoOnFailure([&] { ok(); }, [&] { removed.operation = former; }); // the next OK is to save again
}

} // namespace korvane
