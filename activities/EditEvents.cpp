#include "activities/EditEvents.h"

#include "framework/modKorvaneDlg.h"

namespace korvane
{

namespace
{

/// "You are not authorized to edit activity-bars for other ressources."
constexpr long errorEditOthers = 4691;

} // namespace

std::span<const Operand<EditEvents>> EditEvents::operands()
{
    static constexpr auto table = activityOperands<EditEvents>(operand<&EditEvents::NameID>(L"N0"));
    return table;
}

bool EditEvents::prepare()
{
    links.connect(Root);
    added_ = leavesGroup_ = false;
    if (operation == operationAdd)
        prepareNew();
    else
        prepareStored();
    return true;
}

/// Nothing is left of another activity that the command was for.
void EditEvents::prepareNew()
{
    links.clear();
    links.id = Variant();
    Rule.reset();
    exceptionFlag_ = 0;
}

void EditEvents::prepareStored()
{
    auto stored = fetchStored({NameID, TypeID, T0, T1, Text});
    NameID = stored.nameId;
    TypeID = stored.typeId;
    T0 = stored.T0;
    T1 = stored.T1;
    Text = std::move(stored.text);

    links.load(EventID);
    const bool mayEditOthers = links.hasAccess(LinkAccess::edit, EventID);
    if (!mayEditOthers && links.isLinked())
        RaiseAppError(errorEditOthers);

    Rule = copyOf(fetch(events(), &IEvents::GetRecurrence, EventID));
    exceptionFlag_ = fetch(events(), &IEvents::IsException, EventID);
}

/// What the user does to the copy does not touch the stored rule.
ComPtr<IRecurrence> EditEvents::copyOf(const ComPtr<IRecurrence>& rule) const
{
    if (!rule)
        return nullptr;
    auto copy = fetch(Root, &IRoot::NewRecurrence, fetch(rule, &IRecurrence::get_Kind));
    call(copy, &IRecurrence::put_Count, fetch(rule, &IRecurrence::get_Count));
    call(copy, &IRecurrence::put_Interval, fetch(rule, &IRecurrence::get_Interval));
    call(copy, &IRecurrence::put_Anchor, fetch(rule, &IRecurrence::get_Anchor));
    return copy;
}

bool EditEvents::execute()
{
    orderTimes();
    switch (operation)
    {
    case operationAdd:
        addActivity();
        Instance = 0;
        if (Rule) // again, after it was written already: harmless, and part of the agreed order of calls
            writeRule(links.chosen.size() > 1);
        added_ = false;
        break;
    case operationDelete:
        removeActivity();
        break;
    case operationChange:
        changeActivity();
        break;
    default:
        raiseBadCommandNumber(operation);
    }
    return false; // also after a successful write: hosts do not read a failure into it
}

void EditEvents::addActivity()
{
    // An addition that failed half-way has booked the activity: the next attempt completes it, and books nothing
    // twice.
    if (added_)
    {
        Instance = 0;
        return changeActivity();
    }
    // The resource that the preparation saw: the dialog may have made another one the primary resource.
    links.booked.removeFirst();
    add(NameID);
    added_ = true;
    links.booked.add(NameID);
    synchroniseNames();
    writeRule(links.isLinked());
}

void EditEvents::removeActivity()
{
    if (!links.isLinked())
        call(events(), &IEvents::Remove, EventID, Instance);
    else if (Instance != 0)
        links.removeOccurrence(Instance);
    else
        links.removeAll();
}

void EditEvents::changeActivity()
{
    synchroniseNames();
    const bool linked = links.isLinked();
    if (linked)
        links.updateLinked(Instance, TypeID, T0, T1, Text);
    else
    {
        update(NameID);
        if (Instance == 0) // where the next attempt finds it, should the rule be refused
            links.book(NameID);
    }
    // An occurrence edited by itself never changes the rule of a single activity, and always writes that of linked
    // ones: the agreed behaviour of both.
    if (linked || Instance == 0)
        writeRule(linked);
}

/// Brings the link group in line with the chosen resources.
void EditEvents::synchroniseNames()
{
    NameSet& booked = links.booked;
    const NameSet& chosen = links.chosen;
    const bool wasShared = booked.size() > 1 || leavesGroup_;

    if (booked.size() < 2 && chosen.size() >= 2)
    {
        links.create(EventID);
        leavesGroup_ = true; // should nobody be added to it, and nobody be chosen besides at the next attempt
    }

    const auto added = chosen.without(booked);
    // Nothing is added when the primary resource is gone: the agreed behaviour.
    if (!chosen.contains(NameID) && !chosen.empty())
        NameID = chosen.first();
    else if (!added.empty())
    {
        links.addNames(added);
        // A single activity goes to another resource only when it is written.
        if (links.isLinked())
            for (const long nameId : added)
                booked.add(nameId);
    }

    const auto removed = booked.without(chosen);
    if (links.isLinked() && !removed.empty())
    {
        links.removeNames(removed);
        for (const long nameId : removed)
            booked.remove(nameId);
    }

    leavesGroup_ = chosen.size() == 1 && wasShared;
    if (leavesGroup_)
    {
        // The one activity that is left carries the group's id.
        EventID = toLong(links.id.get());
        links.detach(chosen.first());
        links.id = Variant();
        leavesGroup_ = false;
    }
}

void EditEvents::writeRule(bool linked) const
{
    if (linked)
        links.setRecurrence(Rule);
    else
        call(events(), &IEvents::SetRecurrence, EventID, Rule.get());
}

void EditEvents::SetName(long nameId, bool checked)
{
    if (checked)
    {
        links.chosen.add(nameId);
        NameID = nameId;
    }
    else
        links.chosen.remove(nameId);
}

bool EditEvents::MayBookOthers() const
{
    return links.hasAccess(LinkAccess::create, 0);
}

} // namespace korvane
