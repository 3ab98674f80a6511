#include "tests/support/RecordedEvents.h"

namespace korvane::test
{

HRESULT unknownActivity()
{
    return Failure(E_INVALIDARG, L"KorvaneData.Events", L"There is no such activity.").report();
}

std::optional<Rule> peek(RecordingData& data, IRecurrence* rule)
{
    const bool recorded = std::exchange(data.recordRules, false);
    const auto result = ruleIn(rule);
    data.recordRules = recorded;
    return result;
}

HRESULT RecordedRecurrence::read(const std::string& property, long field, long* value)
{
    *value = 0;
    const HRESULT outcome = data_.recordRules ? data_.record("Recurrence.get_" + property, "") : S_OK;
    if (SUCCEEDED(outcome))
        *value = field;
    return outcome;
}

HRESULT RecordedRecurrence::write(const std::string& property, long& field, long value)
{
    const HRESULT outcome =
        data_.recordRules ? data_.record("Recurrence.put_" + property, shown(value)) : S_OK;
    if (SUCCEEDED(outcome))
        field = value;
    return outcome;
}

void RecordedEvents::announce(const Event& event, long instance)
{
    raise(2, {Variant(event.id), Variant(instance), Variant(event.nameId), Variant(event.typeId),
              Variant(OleDate{event.t0}), Variant(OleDate{event.t1}), Variant(Bstr(event.text))});
}

STDMETHODIMP RecordedEvents::Add(long nameId, long typeId, DATE T0, DATE T1, BSTR text, long* eventId)
{
    *eventId = 0;
    const auto add = [&] {
        *eventId = data_.nextId++;
        data_.events.push_back({*eventId, nameId, typeId, T0, T1, std::wstring(view(text))});
    };
    return data_.answer("Events.Add", add, nameId, typeId, T0, T1, text);
}

STDMETHODIMP RecordedEvents::Update(long eventId, long instance, long nameId, long typeId, DATE T0, DATE T1,
                                    BSTR text)
{
    const auto write = [&](Event& event) {
        event.write(instance, nameId, {typeId, T0, T1, std::wstring(view(text))});
    };
    return answer("Events.Update", write, eventId, instance, nameId, typeId, T0, T1, text);
}

STDMETHODIMP RecordedEvents::Remove(long eventId, long instance)
{
    const auto remove = [&](Event& event) {
        if (instance != 0)
            event.removeOccurrence(instance);
        else
            std::erase_if(data_.events, [&](const Event& each) { return each.id == eventId; });
    };
    return answer("Events.Remove", remove, eventId, instance);
}

STDMETHODIMP RecordedEvents::Fetch(long eventId, long instance, long* nameId, long* typeId, DATE* T0,
                                   DATE* T1, BSTR* text)
{
    const auto read = [&](const Event& event) {
        if (data_.fetchFillsNothing)
            return;
        const auto occurrence = event.edited.find(instance);
        const auto values = occurrence == event.edited.end() ? event.values() : occurrence->second.values;
        *nameId = event.nameId;
        *typeId = values.typeId;
        *T0 = values.t0;
        *T1 = values.t1;
        put(text, values.text);
    };
    return answer("Events.Fetch", read, eventId, instance);
}

STDMETHODIMP RecordedEvents::GetRecurrence(long eventId, IRecurrence** rule)
{
    *rule = nullptr;
    const auto read = [&](const Event& event) {
        if (event.rule)
            *rule = ComPtr<IRecurrence>(make<RecordedRecurrence>(data_, *event.rule).get()).detach();
    };
    return answer("Events.GetRecurrence", read, eventId);
}

STDMETHODIMP RecordedEvents::SetRecurrence(long eventId, IRecurrence* rule)
{
    const auto value = peek(data_, rule);
    const auto write = [&](Event& event) { event.rule = value; };
    return answer("Events.SetRecurrence", write, eventId, shownRule(value));
}

STDMETHODIMP RecordedEvents::IsException(long eventId, long* result)
{
    *result = 0;
    const auto tell = [&](const Event& event) { *result = event.exception; };
    return answer("Events.IsException", tell, eventId);
}

} // namespace korvane::test
