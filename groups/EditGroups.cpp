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
    // The group's id is taken over only from a call that succeeded.
    long id = 0;
    switch (operation)
    {
    case operationAdd:
        // Always 3, not the flags of this command: those are only for a change.
        call(groups(), &IGroups::Add, GroupName.get(), 3L, &id);
        break;
    case operationDelete:
        call(groups(), &IGroups::Remove, GroupID, &id);
        break;
    case operationChange:
        call(groups(), &IGroups::Update, GroupID, GroupName.get(), groupFlags_, &id);
        break;
    default:
        return false;
    }
    GroupID = id;
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
    VARIANT_BOOL ignored = VARIANT_FALSE;
    call(groups(), &IGroups::Fetch, GroupID, fetchedName_.inOut(), &fetchedFlags_, &ignored);
    GroupName = fetchedName_;
    groupFlags_ = fetchedFlags_;
}

ComPtr<IGroups> EditGroups::groups() const
{
    ComPtr<IGroups> collection;
    call(Root, &IRoot::get_Groups, collection.put());
    return collection;
}

STDMETHODIMP EditGroups::get_Root(IRoot** value)
{
    return returns(value, [&] { return Root; });
}

STDMETHODIMP EditGroups::putref_Root(IRoot* value)
{
    Root = ComPtr<IRoot>(value);
    return S_OK;
}

STDMETHODIMP EditGroups::get_GroupID(long* value)
{
    return returns(value, [&] { return GroupID; });
}

STDMETHODIMP EditGroups::put_GroupID(long value)
{
    GroupID = value;
    return S_OK;
}

STDMETHODIMP EditGroups::get_Command(IAppCommand** value)
{
    return returns(value, [&] { return asCommand(); });
}

STDMETHODIMP EditGroups::get_GroupName(BSTR* value)
{
    return returns(value, [&] { return GroupName; });
}

STDMETHODIMP EditGroups::put_GroupName(BSTR value)
{
    return guard([&] { GroupName = Bstr(view(value)); });
}

} // namespace korvane
