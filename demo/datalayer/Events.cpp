#include "demo/datalayer/Events.h"

#include "demo/datalayer/Recurrence.h"
#include "demo/datalayer/Results.h"
#include "demo/datalayer/Schedule.h"

namespace korvane::store
{

namespace
{

Activity activity(long name, long type, DATE t0, DATE t1, BSTR text)
{
    return {name, type, {t0}, {t1}, std::wstring(view(text))};
}

std::wstring shownResult(const Activity& found)
{
    return L"= " + shown(found);
}

} // namespace

STDMETHODIMP Events::Add(long nameId, long typeId, DATE t0, DATE t1, BSTR text, long* eventId)
{
    return returns(eventId, [&] {
        const Activity added = activity(nameId, typeId, t0, t1, text);
        return traced(trace(), line(L"Events.Add", added), [&] {
            const long event = table_.add(added);
            announceChange();
            return event;
        });
    });
}

STDMETHODIMP Events::Update(long eventId, long instance, long nameId, long typeId, DATE t0, DATE t1,
                            BSTR text)
{
    return guard([&] {
        const Activity written = activity(nameId, typeId, t0, t1, text);
        tracedCall(trace(), line(L"Events.Update", eventId, instance, written), [&] {
            table_.update(eventId, instance, written);
            announceChange();
        });
    });
}

STDMETHODIMP Events::Remove(long eventId, long instance)
{
    const auto remove = [&] {
        table_.remove(eventId, instance);
        announceChange();
    };
    return performed(trace(), remove, L"Events.Remove", eventId, instance);
}

STDMETHODIMP Events::Fetch(long eventId, long instance, long* nameId, long* typeId, DATE* t0, DATE* t1,
                           BSTR* text)
{
    return guard([&] {
        requireAll(nameId, typeId, t0, t1, text);
        const Activity found = traced(
            trace(), line(L"Events.Fetch", eventId, instance),
            [&] { return table_.fetch(eventId, instance); }, shownResult);
        give(text, Bstr(found.text));
        *nameId = found.name;
        *typeId = found.type;
        *t0 = found.t0.days;
        *t1 = found.t1.days;
    });
}

STDMETHODIMP Events::GetRecurrence(long eventId, IRecurrence** rule)
{
    return returns(rule, [&] {
        const auto stored =
            traced(trace(), line(L"Events.GetRecurrence", eventId), [&] { return table_.rule(eventId); });
        return stored ? ComPtr<IRecurrence>(make<Recurrence>(*stored).get()) : ComPtr<IRecurrence>();
    });
}

STDMETHODIMP Events::SetRecurrence(long eventId, IRecurrence* rule)
{
    return guard([&] {
        const auto stored = ruleIn(rule);
        tracedCall(trace(), line(L"Events.SetRecurrence", eventId, stored), [&] {
            table_.setRule(eventId, stored);
            announceChange();
        });
    });
}

STDMETHODIMP Events::IsException(long eventId, long* result)
{
    const auto tell = [&] { return table_.isException(eventId) ? 1L : 0L; };
    return answered(result, trace(), tell, L"Events.IsException", eventId);
}

STDMETHODIMP Events::Load(DATE from, DATE to)
{
    const auto load = [&] {
        const auto schedule = scheduleBetween({from}, {to}, store_->connection());
        announceClear(trace());
        for (const auto& [event, instance, booked] : schedule)
            announceItem(trace(), event, instance, booked.name, booked.type, booked.t0, booked.t1,
                         booked.text);
    };
    return performed(trace(), load, L"Schedule.Load", OleDate{from}, OleDate{to});
}

void Events::announceChange()
{
    attempt([&] { announceClear(trace()); });
}

} // namespace korvane::store
