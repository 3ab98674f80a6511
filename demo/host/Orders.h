// What the commands are told, for each thing that the user asks for.
#pragma once

#include "demo/host/CommandTable.h"
#include "demo/host/PreparedCommand.h"
#include "demo/host/schedule/ScheduleLayout.h"

namespace korvane::host
{

Order orderForGroup(const CommandEntry& entry, long group);

/// A command on a member of a group; 0 where none is meant yet.
Order orderForMember(const CommandEntry& entry, long group, long resource);

/// What concerns a resource by itself.
Order orderForResource(const CommandEntry& entry, const Resource& resource);

/// What concerns the resource that reads.
Order orderForReader(const CommandEntry& entry, long resource);

/// A new activity in a slot.
Order orderForSlot(const CommandEntry& entry, long group, long resource, const Slot& slot);

/// A change or deletion of what a bar stands for.
Order orderForBar(const CommandEntry& entry, long group, const Bar& bar);

/// A move or copy to another time or resource.
Order orderForLanding(const CommandEntry& entry, long group, const Bar& bar, long resource,
                      const Slot& landing);

/// The order in words: command, operation and operands.
std::wstring shown(const Order& order);

/// The question that a deletion without a dialog begins with.
/// @param isShared whether the activity goes for other resources, too.
std::wstring questionBeforeDeletion(const Bar& bar, bool isShared);

} // namespace korvane::host
