#include "activities/Activity.h"

#include "framework/com/Decimal.h"
#include "framework/modKorvaneDlg.h"

namespace korvane
{

ComPtr<IEvents> Activity::events() const
{
    ComPtr<IEvents> collection;
    call(Root, &IRoot::get_Events, collection.put());
    return collection;
}

void Activity::orderTimes() noexcept
{
    if (T0.days > T1.days)
        std::swap(T0, T1);
}

void Activity::update(long nameId) const
{
    call(events(), &IEvents::Update, EventID, Instance, nameId, TypeID, T0.days, T1.days, Text.get());
}

void Activity::add(long nameId)
{
    long added = 0;
    call(events(), &IEvents::Add, nameId, TypeID, T0.days, T1.days, Text.get(), &added);
    EventID = added;
}

Activity::Stored Activity::fetch() const
{
    Stored stored;
    call(events(), &IEvents::Fetch, EventID, Instance, &stored.nameId, &stored.typeId, &stored.T0.days,
         &stored.T1.days, stored.text.inOut());
    return stored;
}

void raiseBadCommandNumber(long operation)
{
    // The move command gives the activity command's name too: hosts know this error by it.
    RaiseAppError(1, L"EditEvents", L"Bad command number: " + decimal(operation));
}

} // namespace korvane
