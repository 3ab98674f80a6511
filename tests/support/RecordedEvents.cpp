#include "tests/support/RecordedEvents.h"

namespace korvane::test
{

namespace
{

HRESULT unknownActivity()
{
    return Failure(E_INVALIDARG, L"KorvaneData.Events", L"There is no such activity.").report();
}

std::string shownFields(long nameId, long typeId, DATE t0, DATE t1, BSTR text)
{
    return shown(nameId) + ", " + shown(typeId) + ", " + stamp(t0) + ", " + stamp(t1) + ", " +
           quoted(view(text));
}

} // namespace

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
    const HRESULT outcome = data_.record("Events.Add", shownFields(nameId, typeId, T0, T1, text));
    if (FAILED(outcome))
        return outcome;
    *eventId = data_.nextId++;
    data_.events.push_back({*eventId, nameId, typeId, T0, T1, std::wstring(view(text))});
    return S_OK;
}

// An occurrence that is written by itself becomes an activity of its own.
STDMETHODIMP RecordedEvents::Update(long eventId, long instance, long nameId, long typeId, DATE T0, DATE T1,
                                    BSTR text)
{
    const HRESULT outcome = data_.record("Events.Update", shown(eventId) + ", " + shown(instance) + ", " +
                                                              shownFields(nameId, typeId, T0, T1, text));
    if (FAILED(outcome))
        return outcome;
    Event* const stored = data_.event(eventId);
    if (!stored)
        return unknownActivity();
    Event written{eventId,      nameId,       typeId,           T0, T1, std::wstring(view(text)),
                  stored->link, stored->rule, stored->exception};
    if (instance == 0)
        *stored = written;
    else
    {
        written.id = data_.nextId++;
        written.link.reset();
        written.rule.reset();
        written.exception = 1;
        data_.events.push_back(written);
    }
    return S_OK;
}

STDMETHODIMP RecordedEvents::Remove(long eventId, long instance)
{
    const HRESULT outcome = data_.record("Events.Remove", shown(eventId) + ", " + shown(instance));
    if (SUCCEEDED(outcome) && instance == 0)
        std::erase_if(data_.events, [&](const Event& event) { return event.id == eventId; });
    return outcome;
}

STDMETHODIMP RecordedEvents::Fetch(long eventId, long instance, long* nameId, long* typeId, DATE* T0,
                                   DATE* T1, BSTR* text)
{
    const HRESULT outcome = data_.record("Events.Fetch", shown(eventId) + ", " + shown(instance));
    if (FAILED(outcome))
        return outcome;
    const Event* const stored = data_.event(eventId);
    if (!stored)
        return unknownActivity();
    if (data_.fetchFillsNothing)
        return S_OK;
    *nameId = stored->nameId;
    *typeId = stored->typeId;
    *T0 = stored->t0;
    *T1 = stored->t1;
    put(text, stored->text);
    return S_OK;
}

STDMETHODIMP RecordedEvents::GetRecurrence(long eventId, IRecurrence** rule)
{
    *rule = nullptr;
    const HRESULT outcome = data_.record("Events.GetRecurrence", shown(eventId));
    if (FAILED(outcome))
        return outcome;
    if (const Event* stored = data_.event(eventId); stored && stored->rule)
        *rule = ComPtr<IRecurrence>(make<RecordedRecurrence>(data_, *stored->rule).get()).detach();
    return S_OK;
}

STDMETHODIMP RecordedEvents::SetRecurrence(long eventId, IRecurrence* rule)
{
    const auto value = peek(data_, rule);
    const HRESULT outcome = data_.record("Events.SetRecurrence", shown(eventId) + ", " + shownRule(value));
    if (FAILED(outcome))
        return outcome;
    if (Event* stored = data_.event(eventId))
        stored->rule = value;
    return S_OK;
}

STDMETHODIMP RecordedEvents::IsException(long eventId, long* result)
{
    *result = 0;
    const HRESULT outcome = data_.record("Events.IsException", shown(eventId));
    if (FAILED(outcome))
        return outcome;
    if (const Event* stored = data_.event(eventId))
        *result = stored->exception;
    return S_OK;
}

} // namespace korvane::test
