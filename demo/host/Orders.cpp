#include "demo/host/Orders.h"

namespace korvane::host
{

Order orderForGroup(const CommandEntry& entry, long group)
{
    return {entry.progId, entry.operation, {{L"GroupID", Variant(group)}}};
}

Order orderForMember(const CommandEntry& entry, long group, long resource)
{
    return {entry.progId, entry.operation, {{L"GroupID", Variant(group)}, {L"NameID", Variant(resource)}}};
}

Order orderForResource(const CommandEntry& entry, const Resource& resource)
{
    return {entry.progId,
            entry.operation,
            {{L"NameID", Variant(resource.id)}, {L"Name", Variant(Bstr(resource.name))}}};
}

Order orderForReader(const CommandEntry& entry, long resource)
{
    return {entry.progId, entry.operation, {{L"NameID", Variant(resource)}}};
}

Order orderForSlot(const CommandEntry& entry, long group, long resource, const Slot& slot)
{
    return {entry.progId,
            entry.operation,
            {{L"GroupID", Variant(group)},
             {L"N0", Variant(resource)},
             {L"T0", Variant(slot.start)},
             {L"T1", Variant(slot.end)}}};
}

Order orderForBar(const CommandEntry& entry, long group, const Bar& bar)
{
    return {entry.progId,
            entry.operation,
            {{L"EventID", Variant(bar.id.event)},
             {L"Instance", Variant(bar.id.instance)},
             {L"GroupID", Variant(group)},
             {L"N0", Variant(bar.resource)}}};
}

Order orderForLanding(const CommandEntry& entry, long group, const Bar& bar, long resource,
                      const Slot& landing)
{
    Order order = orderForBar(entry, group, bar);
    order.operands.push_back({L"N1", Variant(resource)});
    order.operands.push_back({L"T0", Variant(landing.start)});
    order.operands.push_back({L"T1", Variant(landing.end)});
    return order;
}

std::wstring shown(const Order& order)
{
    std::wstring text =
        std::wstring(order.progId) + L", operation " + std::to_wstring(order.operation) + L": Root";
    for (const OperandValue& operand : order.operands)
        text +=
            std::wstring(L", ") + operand.name + L" = " + std::wstring(toText(operand.value.get()).view());
    return text;
}

std::wstring questionBeforeDeletion(const Bar& bar, bool isShared)
{
    const std::wstring when =
        shownDay(bar.start, L"ddd d MMM yyyy") + L", " + shownTime(bar.start) + L" - " + shownTime(bar.end);
    return std::wstring(bar.id.instance != 0 ? L"Delete this occurrence of the activity"
                                             : L"Delete this activity") +
           (isShared ? L" for all of its resources?" : L"?") + L"\n\n" +
           (bar.text.empty() ? when : bar.text + L"\n" + when);
}

} // namespace korvane::host
