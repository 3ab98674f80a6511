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
        links.clear();
    else
        prepareStored();
    return true;
}

void EditEvents::prepareStored()
{
    auto stored = fetch();
    NameID = stored.nameId;
    TypeID = stored.typeId;
    T0 = stored.T0;
    T1 = stored.T1;
    Text = std::move(stored.text);

    links.load(EventID);
    const bool mayEditOthers = links.hasAccess(LinkAccess::edit, EventID);
    if (!mayEditOthers && links.isLinked())
        RaiseAppError(errorEditOthers);

    ComPtr<IRecurrence> storedRule;
    call(events(), &IEvents::GetRecurrence, EventID, storedRule.put());
    Rule = copyOf(storedRule);
    long flag = 0;
    call(events(), &IEvents::IsException, EventID, &flag);
    exceptionFlag_ = flag;
}

/// What the user does to the copy does not touch the stored rule.
ComPtr<IRecurrence> EditEvents::copyOf(const ComPtr<IRecurrence>& rule) const
{
    if (!rule)
        return nullptr;
    long value = 0;
    ComPtr<IRecurrence> copy;
    call(rule, &IRecurrence::get_Kind, &value);
    call(Root, &IRoot::NewRecurrence, value, copy.put());
    call(rule, &IRecurrence::get_Count, &value);
    call(copy, &IRecurrence::put_Count, value);
    call(rule, &IRecurrence::get_Interval, &value);
    call(copy, &IRecurrence::put_Interval, value);
    call(rule, &IRecurrence::get_Anchor, &value);
    call(copy, &IRecurrence::put_Anchor, value);
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
        update(NameID);
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
        links.create(EventID);

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

STDMETHODIMP EditEvents::get_EventInstance(long* value)
{
    return returns(value, [&] { return Instance; });
}

STDMETHODIMP EditEvents::put_EventInstance(long value)
{
    Instance = value;
    return S_OK;
}

STDMETHODIMP EditEvents::get_GroupID(long* value)
{
    return returns(value, [&] { return GroupID; });
}

STDMETHODIMP EditEvents::get_TypeID(long* value)
{
    return returns(value, [&] { return TypeID; });
}

STDMETHODIMP EditEvents::put_TypeID(long value)
{
    TypeID = value;
    return S_OK;
}

STDMETHODIMP EditEvents::get_NameID(long* value)
{
    return returns(value, [&] { return NameID; });
}

STDMETHODIMP EditEvents::get_T0(DATE* value)
{
    return returns(value, [&] { return T0; });
}

STDMETHODIMP EditEvents::put_T0(DATE value)
{
    T0 = {value};
    return S_OK;
}

STDMETHODIMP EditEvents::get_T1(DATE* value)
{
    return returns(value, [&] { return T1; });
}

STDMETHODIMP EditEvents::put_T1(DATE value)
{
    T1 = {value};
    return S_OK;
}

STDMETHODIMP EditEvents::get_Text(BSTR* value)
{
    return returns(value, [&] { return Text; });
}

STDMETHODIMP EditEvents::put_Text(BSTR value)
{
    return guard([&] { Text = Bstr(view(value)); });
}

STDMETHODIMP EditEvents::get_Command(IAppCommand** value)
{
    return returns(value, [&] { return asCommand(); });
}

} // namespace korvane
