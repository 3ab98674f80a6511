#include "masterdata/EditTypes.h"

#include "framework/modKorvaneDlg.h"

namespace korvane
{

std::span<const Operand<EditTypes>> EditTypes::operands()
{
    static constexpr Operand<EditTypes> table[] = {
        operand<&GroupItem::Root, EditTypes>(L"Root"),
        operand<&GroupItem::GroupID, EditTypes>(L"GroupID"),
        operand<&GroupItem::ItemID, EditTypes>(L"TypeID"),
        operand<&GroupItem::ItemText, EditTypes>(L"TypeText"),
        operand<&GroupItem::ItemColor, EditTypes>(L"Color"),
    };
    return table;
}

bool EditTypes::execute()
{
    const auto types = collection<ITypes>(Root);
    switch (operation)
    {
    case operationAdd:
        if (isNew())
            create(types, 3); // whatever the flags of a type read before
        join(types);          // TypeID stays the new type's
        break;
    case operationDelete:
        leave(types);
        break;
    case operationChange:
        update(types);
        break;
    default:
        break;
    }
    return false; // also after a successful write: hosts do not read a failure into it
}

void EditTypes::PrepareEdit(long id)
{
    const auto types = collection<ITypes>(Root);
    Stored read = stored_;
    long ignored = 0;
    call(types, &ITypes::Fetch, id, read.text.inOut(), &read.color, &read.flags, &ignored);
    if (!fetch(types, &ITypes::HasAccess, static_cast<long>(operationChange), id))
        RaiseAppError(4391); // "You are not authorized to edit this activity type."
    takeOver(read);
}

ComPtr<EditTypes> EditTypes::CloneForNew() const
{
    auto clone = make<EditTypes>();
    clone->operation = operation;
    clone->GroupID = GroupID;
    clone->ItemColor = ItemColor;
    clone->Root = Root;
    return clone;
}

} // namespace korvane
