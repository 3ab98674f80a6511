#include "tests/support/RecordedEventLinks.h"

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
    const auto load = [&] {
        raise(1);
        const Event* const asked = data_.event(eventId);
        if (!asked)
            return unknownActivity();
        const auto link = asked->link;
        std::vector<std::pair<long, long>> announced;
        for (const Event& event : data_.events)
            if (link ? event.link == link : event.id == eventId)
                announced.emplace_back(event.id, event.nameId);
        for (const auto& [id, nameId] : announced)
            raise(2, {Variant(id), Variant(nameId)});
        // A group of one is seen as none.
        *linkId = announced.size() > 1 || data_.exactGroups ? released(link) : VARIANT{};
        return S_OK;
    };
    return data_.answer("EventLinks.Load", load, eventId);
}

STDMETHODIMP RecordedEventLinks::Create(long eventId, VARIANT* linkId)
{
    *linkId = VARIANT{};
    const auto create = [&] {
        Event* const first = data_.event(eventId);
        if (!first)
            return unknownActivity();
        if (!first->link)
            first->link = eventId;
        *linkId = released(first->link);
        return S_OK;
    };
    return data_.answer("EventLinks.Create", create, eventId);
}

STDMETHODIMP RecordedEventLinks::AddNames(VARIANT linkId, VARIANT names)
{
    const auto add = [&](const std::vector<Event*>& group) {
        if (group.empty())
            return;
        const Event original = *group.front();
        for (const long nameId : idsIn(names))
        {
            const auto booked = members(linkIn(linkId));
            if (std::any_of(booked.begin(), booked.end(),
                            [&](Event* event) { return event->nameId == nameId; }))
                continue;
            Event copy = original;
            copy.id = data_.nextId++;
            copy.nameId = nameId;
            data_.events.push_back(copy);
        }
    };
    if (linkId.vt == VT_EMPTY) // a single activity has nobody to be added
        return data_.record("EventLinks.AddNames", listed(shownLink(linkId), shownIds(names)));
    return answer("EventLinks.AddNames", add, linkId, shownIds(names));
}

STDMETHODIMP RecordedEventLinks::RemoveNames(VARIANT linkId, VARIANT names, VARIANT* newLinkId)
{
    *newLinkId = VARIANT{};
    const auto remove = [&](const std::vector<Event*>&) {
        const auto link = linkIn(linkId);
        const auto removed = idsIn(names);
        std::erase_if(data_.events, [&](const Event& event) {
            return link && event.link == link && isIn(removed, event.nameId);
        });
        *newLinkId = released(keyed(link));
    };
    return answer("EventLinks.RemoveNames", remove, linkId, shownIds(names));
}

STDMETHODIMP RecordedEventLinks::RemoveOccurrence(VARIANT linkId, long instance)
{
    const auto remove = [&](const std::vector<Event*>& group) {
        for (Event* event : group)
            event->removeOccurrence(instance);
    };
    return answer("EventLinks.RemoveOccurrence", remove, linkId, instance);
}

STDMETHODIMP RecordedEventLinks::RemoveAll(VARIANT linkId)
{
    const auto remove = [&](const std::vector<Event*>&) {
        if (const auto link = linkIn(linkId))
            std::erase_if(data_.events, [&](const Event& event) { return event.link == link; });
    };
    return answer("EventLinks.RemoveAll", remove, linkId);
}

STDMETHODIMP RecordedEventLinks::UpdateLinked(VARIANT linkId, long instance, long typeId, DATE T0, DATE T1,
                                              BSTR text, VARIANT* newLinkId)
{
    *newLinkId = VARIANT{};
    const auto write = [&](const std::vector<Event*>& group) {
        const auto other = std::exchange(data_.nextLink, std::nullopt);
        for (Event* event : group)
        {
            event->write(instance, event->nameId, {typeId, T0, T1, std::wstring(view(text))});
            if (other)
                event->link = other;
        }
        *newLinkId = released(other ? other : linkIn(linkId));
    };
    return answer("EventLinks.UpdateLinked", write, linkId, instance, typeId, T0, T1, text);
}

STDMETHODIMP RecordedEventLinks::Detach(VARIANT linkId, long nameId)
{
    const auto detach = [&](const std::vector<Event*>& group) {
        for (Event* event : group)
            if (event->nameId == nameId)
                event->link.reset();
        const auto link = linkIn(linkId);
        // What is left of a group of two is a single activity as well.
        if (const auto left = members(link); left.size() == 1)
            left.front()->link.reset();
        keyed(link);
    };
    return answer("EventLinks.Detach", detach, linkId, nameId);
}

STDMETHODIMP RecordedEventLinks::SetRecurrence(VARIANT linkId, IRecurrence* rule)
{
    const auto value = peek(data_, rule);
    const auto write = [&](const std::vector<Event*>& group) {
        for (Event* event : group)
            event->rule = value;
    };
    return answer("EventLinks.SetRecurrence", write, linkId, shownRule(value));
}

STDMETHODIMP RecordedEventLinks::HasAccess(long level, long eventId, VARIANT_BOOL* result)
{
    *result = VARIANT_FALSE;
    const auto tell = [&] {
        const bool granted =
            (level == 1 && data_.mayCreateForOthers) || (level == 3 && data_.mayEditForOthers);
        *result = granted ? VARIANT_TRUE : VARIANT_FALSE;
    };
    return data_.answer("EventLinks.HasAccess", tell, level, eventId);
}

} // namespace korvane::test
