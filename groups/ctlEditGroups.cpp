#include "groups/ctlEditGroups.h"

namespace korvane
{

namespace
{

enum TextId : long
{
    textTitle = 21000,
    textNew = 21001,
    textEdit = 21002,
    textDelete = 21003
};

/// Groups 1 to 3 are built into the system and never offered, whatever the rights say.
constexpr long lastBuiltInGroup = 3;

} // namespace

ctlEditGroups::ctlEditGroups() : Dialog(textTitle, 5040, 3285)
{
    lstGroups.onClick = [this] { selectGroup(); };
    lstGroups.onDblClick = [this] { confirmDeletion(); };
}

bool ctlEditGroups::load()
{
    inScope(command().Root, L"ctlEditGroups.Prepare", [this] {
        fetch(command().asCommand(), &IAppCommand::Prepare); // reports False in every case
    });
    const bool known = prepareLayout();
    setSize(Width(), fraCommands.bottom());
    return known;
}

bool ctlEditGroups::prepareLayout()
{
    switch (command().operation)
    {
    case operationAdd:
        layOut(textNew, {&fraEdit, &fraCommands});
        lblGroups.labels(txtName);
        resetForNew();
        return true;
    case operationDelete:
        layOut(textDelete, {&fraGroups, &fraCommands});
        lblGroups.labels(lstGroups);
        Init();
        return true;
    case operationChange:
        layOut(textEdit, {&fraEdit, &fraGroups, &fraCommands});
        lblGroups.labels(lstGroups);
        Init();
        return true;
    default:
        return false;
    }
}

/// Stacks the frames that the operation needs.
void ctlEditGroups::layOut(long caption, std::initializer_list<Frame*> frames)
{
    lblGroups.setCaption(resourceText(caption).view());
    fraEdit.setVisible(false);
    fraGroups.setVisible(false);
    float top = 0;
    for (Frame* frame : frames)
    {
        frame->setVisible(true);
        frame->setTop(top);
        top = frame->bottom();
    }
}

void ctlEditGroups::resetForNew()
{
    command().PrepareNew();
    txtName.setText(command().GroupName.view());
}

/// Fills the list: the data layer announces its groups one by one.
void ctlEditGroups::Init()
{
    inScope(command().Root, L"ctlEditGroups.Init", [this] {
        mGroups.connect(command().Root, {.clear = [this] { lstGroups.Clear(); },
                                         .add = [this](const EventArguments& group) { addGroup(group); }});
        const ListBox::Filling filling(lstGroups);
        mGroups.load(&IGroups::Load);
    });
    txtName.setText(command().GroupName.view());
}

void ctlEditGroups::addGroup(const EventArguments& group)
{
    const long id = group.number(0);
    // The right to change is asked for in every layout, also where groups are deleted.
    if (id > lastBuiltInGroup &&
        fetch(mGroups.get(), &IGroups::HasAccess, static_cast<long>(operationChange), id))
        lstGroups.AddItem(group.text(1).get(), id);
}

void ctlEditGroups::selectGroup()
{
    const int selected = lstGroups.ListIndex();
    if (selected < 0)
        return;
    command().GroupID = lstGroups.ItemData(selected);
    inScope(command().Root, L"EditGroups.FetchEdit", [this] { command().PrepareEdit(); });
    txtName.setText(lstGroups.List(selected));
}

/// A double click confirms only where groups are deleted, and does not take the name.
void ctlEditGroups::confirmDeletion()
{
    if (command().operation == operationDelete)
        confirm();
}

void ctlEditGroups::takeValues()
{
    // Also when deleting, where the box is hidden and holds the name of the chosen group.
    command().GroupName = Bstr(txtName.Text());
}

} // namespace korvane
