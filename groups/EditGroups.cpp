#include "groups/EditGroups.h"

namespace korvane
{

std::span<const Operand<EditGroups>> EditGroups::operands()
{
    static constexpr Operand<EditGroups> table[] = {
        operand<&EditGroups::Root>(L"Root"),
        operand<&EditGroups::GroupID>(L"GroupID"),
        operand<&EditGroups::GroupName>(L"GroupName"),
    };
    return table;
}

bool EditGroups::prepare()
{
    if (operation == operationAdd)
        PrepareNew();
    else
        PrepareEdit();
    return false; // neither preparation has a result: hosts show the dialog all the same
}

bool EditGroups::execute()
{
    switch (operation)
    {
    case operationAdd:
        // Always 3, not the flags of this command: those are only for a change.
        GroupID = fetch(groups(), &IGroups::Add, GroupName.get(), 3L);
        break;
    case operationDelete:
        GroupID = fetch(groups(), &IGroups::Remove, GroupID);
        break;
    case operationChange:
        GroupID = fetch(groups(), &IGroups::Update, GroupID, GroupName.get(), groupFlags_);
        break;
    default:
        break;
    }
    return false; // also after a successful write: hosts do not read a failure into it
}

void EditGroups::PrepareNew()
{
    GroupID = 0;
    fetchedName_ = GroupName = Bstr();
    fetchedFlags_ = groupFlags_ = 1;
}

void EditGroups::PrepareEdit()
{
    fetch(groups(), &IGroups::Fetch, GroupID, fetchedName_.inOut(), &fetchedFlags_);
    GroupName = fetchedName_;
    groupFlags_ = fetchedFlags_;
}

} // namespace korvane
