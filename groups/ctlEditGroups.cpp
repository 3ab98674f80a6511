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
    mGroups.onStrayFailure = [this](const Failure& failure) { raiseError(failure); };
}

bool ctlEditGroups::load()
{
    {
        DataScope scope(command().Root, L"ctlEditGroups.Prepare");
        VARIANT_BOOL ignored = VARIANT_FALSE; // the group command reports False in every case
        call(command().asCommand(), &IAppCommand::Prepare, &ignored);
        scope.Close();
    }
    switch (command().operation)
    {
    case operationAdd:
        layOut(resourceText(textNew).view(), {&fraEdit, &fraCommands});
        lblGroups.labels(txtName);
        resetForNew();
        return true;
    case operationDelete:
        layOut(resourceText(textDelete).view(), {&fraGroups, &fraCommands});
        lblGroups.labels(lstGroups);
        Init();
        return true;
    case operationChange:
        layOut(resourceText(textEdit).view(), {&fraEdit, &fraGroups, &fraCommands});
        lblGroups.labels(lstGroups);
        Init();
        return true;
    default:
        return false;
    }
}

/// Stacks the frames that the operation needs, and fits the dialog's height to them.
void ctlEditGroups::layOut(std::wstring_view caption, std::initializer_list<Frame*> frames)
{
    lblGroups.setCaption(caption);
    fraEdit.setVisible(false);
    fraGroups.setVisible(false);
    float height = 0;
    for (Frame* frame : frames)
    {
        frame->setVisible(true);
        frame->setTop(height);
        height += frame->Height();
    }
    setSize(Width(), height);
}

void ctlEditGroups::resetForNew()
{
    command().PrepareNew();
    txtName.setText(command().GroupName.view());
}

/// Fills the list: the data layer announces its groups one by one.
void ctlEditGroups::Init()
{
    DataScope scope(command().Root, L"ctlEditGroups.Init");
    call(command().Root, &IRoot::get_Groups, groups_.put());
    mGroups.connect(groups_.get(), __uuidof(IGroupsEvents),
                    [this](DISPID event, const EventArguments& arguments) {
                        if (event == eventClear)
                            lstGroups.Clear();
                        else if (event == eventAdd)
                            addGroup(arguments);
                    });
    mGroups.during([this] {
        const ListBox::Filling filling(lstGroups);
        VARIANT_BOOL ignored = VARIANT_FALSE;
        call(groups_, &IGroups::Load, &ignored);
    });
    scope.Close();
    txtName.setText(command().GroupName.view());
}

void ctlEditGroups::addGroup(const EventArguments& group)
{
    const long id = group.number(0);
    if (id <= lastBuiltInGroup)
        return;
    VARIANT_BOOL granted = VARIANT_FALSE;
    // The right to change is asked for in every layout, also where groups are deleted.
    call(groups_, &IGroups::HasAccess, static_cast<long>(operationChange), id, &granted);
    if (granted != VARIANT_FALSE)
        lstGroups.AddItem(group.text(1).get(), id);
}

void ctlEditGroups::selectGroup()
{
    const int selected = lstGroups.ListIndex();
    if (selected < 0)
        return;
    command().GroupID = lstGroups.ItemData(selected);
    DataScope scope(command().Root, L"EditGroups.FetchEdit");
    command().PrepareEdit();
    scope.Close();
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
