#include "activities/Activity.h"

#include "framework/com/Decimal.h"
#include "framework/modKorvaneDlg.h"

namespace korvane
{

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
    EventID = fetch(events(), &IEvents::Add, nameId, TypeID, T0.days, T1.days, Text.get());
}

Activity::Stored Activity::fetchStored(Stored values) const
{
    call(events(), &IEvents::Fetch, EventID, Instance, &values.nameId, &values.typeId, &values.T0.days,
         &values.T1.days, values.text.inOut());
    return values;
}

void raiseBadCommandNumber(long operation)
{
    // The move command gives the activity command's name too: hosts know this error by it.
    RaiseAppError(1, L"EditEvents", L"Bad command number: " + decimal(operation));
}

} // namespace korvane
