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
    fraCommands.cmdOk.onClick = [this] {
        if (click_ != Click::pending) // one group would be mixed with another
            ok();
    };
}

bool ctlEditGroups::load()
{
    if (!isExecuting())
        begin();
    const bool known = prepareLayout();
    setSize(Width(), fraCommands.bottom());
    return known;
}

void ctlEditGroups::begin()
{
    selected_ = 0;
    inScope(command().Root, L"ctlEditGroups.Prepare", [this] {
        fetch(command().asCommand(), &IAppCommand::Prepare); // reports False in every case
    });
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
    if (!isExecuting())
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
    if (id <= lastBuiltInGroup ||
        !fetch(mGroups.get(), &IGroups::HasAccess, static_cast<long>(operationChange), id))
        return;
    lstGroups.AddItem(group.text(1).get(), id);
    if (id == selected_)
        markSelected();
}

/// Makes the list show which group is selected.
void ctlEditGroups::markSelected()
{
    lstGroups.setListIndex(lstGroups.indexOf(selected_));
}

void ctlEditGroups::selectGroup()
{
    const int index = lstGroups.ListIndex();
    // Neither what the container is executing nor what is being read is exchanged.
    if (index < 0 || !isReady() || click_ == Click::pending)
        return markSelected();
    const std::wstring name = lstGroups.List(index);
    auto& group = command(); // another one may be at hand after a call
    const long former = std::exchange(group.GroupID, lstGroups.ItemData(index));
    const long formerlySelected = std::exchange(selected_, group.GroupID);
    click_ = Click::pending;
    bool isRead = false;
    const auto failure = attempt([&] {
        inScope(group.Root, L"EditGroups.FetchEdit", [&] {
            group.PrepareEdit();
            isRead = true; // also where the scope does not close
        });
    });
    click_ = Click::refused;
    if (!isRead)
        group.GroupID = former;
    if (hasCommand() && &command() == &group)
    {
        if (isRead)
        {
            click_ = Click::led;
            txtName.setText(name);
        }
        else
        {
            selected_ = formerlySelected;
            markSelected();
        }
    }
    if (failure)
        throw *failure;
}

/// A double click confirms only where groups are deleted, and does not take the name. Where its first click has not
/// led to the group, no other one is deleted instead.
void ctlEditGroups::confirmDeletion()
{
    if (command().operation != operationDelete || !isReady())
        return;
    const int index = lstGroups.ListIndex();
    if (click_ != Click::led || (index >= 0 && lstGroups.ItemData(index) != selected_))
        return markSelected();
    requireSelected();
    confirm();
}

/// What the user has selected, and the list does not show any more, is not submitted.
void ctlEditGroups::requireSelected() const
{
    if (selected_ != 0 && lstGroups.ListIndex() < 0)
        throw Failure(DISP_E_BADINDEX);
}

void ctlEditGroups::takeValues()
{
    requireSelected();
    // Also when deleting, where the box is hidden and holds the name of the chosen group.
    command().GroupName = Bstr(txtName.Text());
}

} // namespace korvane
