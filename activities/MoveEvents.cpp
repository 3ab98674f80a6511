#include "activities/MoveEvents.h"

namespace korvane
{

std::span<const Operand<MoveEvents>> MoveEvents::operands()
{
    static constexpr auto table = activityOperands<MoveEvents>(operand<&MoveEvents::SourceName>(L"N0"),
                                                               operand<&MoveEvents::TargetName>(L"N1"));
    return table;
}

bool MoveEvents::prepare()
{
    links.connect(Root);
    if (operation != operationMove && operation != operationCopy)
        return true; // an unknown operation fails when it is executed

    // Type and text as they are stored; the times are those that the activity goes to.
    stored_ = fetchStored({stored_.nameId, TypeID, stored_.T0, stored_.T1, Text});
    TypeID = stored_.typeId;
    Text = std::move(stored_.text);
    if (SourceName == 0)
        SourceName = stored_.nameId;
    if (TargetName == 0)
        TargetName = SourceName;
    links.load(EventID);
    return true;
}

bool MoveEvents::execute()
{
    orderTimes();
    switch (operation)
    {
    case operationMove:
        move();
        break;
    case operationCopy:
        // Always a single activity, without link group and without repetition.
        add(TargetName);
        Instance = 0;
        break;
    default:
        raiseBadCommandNumber(operation);
    }
    return true;
}

void MoveEvents::move()
{
    if (links.isLinked() && UpdateAll)
    {
        links.updateLinked(Instance, TypeID, T0, T1, Text);
        return;
    }
    // A single occurrence moves without leaving the group.
    if (links.isLinked() && Instance == 0)
        links.detach(SourceName);
    update(TargetName);
}

void MoveEvents::SetName(long nameId, bool checked)
{
    if (checked)
        links.chosen.add(nameId);
    else
        links.chosen.remove(nameId);
}

} // namespace korvane
