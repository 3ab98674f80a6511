#include "tests/support/RecordedEventLinks.h"

#include "tests/support/RecordedEvents.h"

#include <algorithm>

namespace korvane::test
{

namespace
{

VARIANT released(const std::optional<long>& link)
{
    return link ? Variant(*link).detach() : VARIANT{};
}

bool isIn(const std::vector<long>& ids, long id)
{
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

} // namespace

std::vector<Event*> RecordedEventLinks::members(const std::optional<long>& link)
{
    std::vector<Event*> result;
    for (Event& event : data_.events)
        if (link && event.link == link)
            result.push_back(&event);
    return result;
}

std::optional<long> RecordedEventLinks::keyed(const std::optional<long>& link)
{
    const auto left = members(link);
    if (left.empty() ||
        std::any_of(left.begin(), left.end(), [&](Event* event) { return event->id == *link; }))
        return link;
    const long first = left.front()->id;
    for (Event* event : left)
        event->link = first;
    return first;
}

STDMETHODIMP RecordedEventLinks::Load(long eventId, VARIANT* linkId)
{
    *linkId = VARIANT{};
    const HRESULT outcome = data_.record("EventLinks.Load", shown(eventId));
    if (FAILED(outcome))
        return outcome;
    raise(1);
    const Event* const asked = data_.event(eventId);
    if (!asked)
        return S_OK;
    const auto link = asked->link;
    std::vector<std::pair<long, long>> announced;
    for (const Event& event : data_.events)
        if (link ? event.link == link : event.id == eventId)
            announced.emplace_back(event.id, event.nameId);
    for (const auto& [id, nameId] : announced)
        raise(2, {Variant(id), Variant(nameId)});
    *linkId = announced.size() > 1 ? released(link) : VARIANT{}; // a group of one is seen as none
    return S_OK;
}

STDMETHODIMP RecordedEventLinks::Create(long eventId, VARIANT* linkId)
{
    *linkId = VARIANT{};
    const HRESULT outcome = data_.record("EventLinks.Create", shown(eventId));
    if (FAILED(outcome))
        return outcome;
    Event* const first = data_.event(eventId);
    if (first && !first->link)
        first->link = eventId;
    *linkId = released(first ? first->link : eventId);
    return S_OK;
}

STDMETHODIMP RecordedEventLinks::AddNames(VARIANT linkId, VARIANT names)
{
    const HRESULT outcome = data_.record("EventLinks.AddNames", shownLink(linkId) + ", " + shownIds(names));
    if (FAILED(outcome))
        return outcome;
    const auto group = members(linkIn(linkId));
    if (group.empty())
        return S_OK;
    const Event original = *group.front();
    for (const long nameId : idsIn(names))
    {
        const auto booked = members(linkIn(linkId));
        if (std::any_of(booked.begin(), booked.end(), [&](Event* event) { return event->nameId == nameId; }))
            continue;
        Event copy = original;
        copy.id = data_.nextId++;
        copy.nameId = nameId;
        data_.events.push_back(copy);
    }
    return S_OK;
}

STDMETHODIMP RecordedEventLinks::RemoveNames(VARIANT linkId, VARIANT names, VARIANT* newLinkId)
{
    *newLinkId = VARIANT{};
    const HRESULT outcome =
        data_.record("EventLinks.RemoveNames", shownLink(linkId) + ", " + shownIds(names));
    if (FAILED(outcome))
        return outcome;
    const auto link = linkIn(linkId);
    const auto removed = idsIn(names);
    std::erase_if(data_.events, [&](const Event& event) {
        return link && event.link == link && isIn(removed, event.nameId);
    });
    *newLinkId = released(keyed(link));
    return S_OK;
}

STDMETHODIMP RecordedEventLinks::RemoveOccurrence(VARIANT linkId, long instance)
{
    return data_.record("EventLinks.RemoveOccurrence", shownLink(linkId) + ", " + shown(instance));
}

STDMETHODIMP RecordedEventLinks::RemoveAll(VARIANT linkId)
{
    const HRESULT outcome = data_.record("EventLinks.RemoveAll", shownLink(linkId));
    if (const auto link = linkIn(linkId); link && SUCCEEDED(outcome))
        std::erase_if(data_.events, [&](const Event& event) { return event.link == link; });
    return outcome;
}

STDMETHODIMP RecordedEventLinks::UpdateLinked(VARIANT linkId, long instance, long typeId, DATE T0, DATE T1,
                                              BSTR text, VARIANT* newLinkId)
{
    *newLinkId = VARIANT{};
    const HRESULT outcome = data_.record("EventLinks.UpdateLinked",
                                         shownLink(linkId) + ", " + shown(instance) + ", " + shown(typeId) +
                                             ", " + stamp(T0) + ", " + stamp(T1) + ", " + quoted(view(text)));
    if (FAILED(outcome))
        return outcome;
    auto link = linkIn(linkId);
    const auto other = std::exchange(data_.nextLink, std::nullopt);
    for (Event* event : members(link))
    {
        if (instance == 0)
        {
            event->typeId = typeId;
            event->t0 = T0;
            event->t1 = T1;
            event->text = view(text);
        }
        if (other)
            event->link = other;
    }
    *newLinkId = released(other ? other : link);
    return S_OK;
}

STDMETHODIMP RecordedEventLinks::Detach(VARIANT linkId, long nameId)
{
    const HRESULT outcome = data_.record("EventLinks.Detach", shownLink(linkId) + ", " + shown(nameId));
    if (FAILED(outcome))
        return outcome;
    const auto link = linkIn(linkId);
    for (Event* event : members(link))
        if (event->nameId == nameId)
            event->link.reset();
    // What is left of a group of two is a single activity as well.
    if (const auto left = members(link); left.size() == 1)
        left.front()->link.reset();
    keyed(link);
    return S_OK;
}

STDMETHODIMP RecordedEventLinks::SetRecurrence(VARIANT linkId, IRecurrence* rule)
{
    const auto value = peek(data_, rule);
    const HRESULT outcome =
        data_.record("EventLinks.SetRecurrence", shownLink(linkId) + ", " + shownRule(value));
    if (FAILED(outcome))
        return outcome;
    for (Event* event : members(linkIn(linkId)))
        event->rule = value;
    return S_OK;
}

STDMETHODIMP RecordedEventLinks::HasAccess(long level, long eventId, VARIANT_BOOL* result)
{
    *result = VARIANT_FALSE;
    const HRESULT outcome = data_.record("EventLinks.HasAccess", shown(level) + ", " + shown(eventId));
    if (FAILED(outcome))
        return outcome;
    const bool granted = (level == 1 && data_.mayCreateForOthers) || (level == 3 && data_.mayEditForOthers);
    *result = granted ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

} // namespace korvane::test
