#include "demo/datalayer/EventLinks.h"

#include "demo/datalayer/Arguments.h"
#include "demo/datalayer/Recurrence.h"

namespace korvane::store
{

namespace
{

using Link = std::optional<long>;

Variant valueOf(const Link& link)
{
    return link ? Variant(*link) : Variant();
}

std::wstring shownResult(const Link& link)
{
    return L"= " + shown(Argument{valueOf(link).get()});
}

} // namespace

template <class Body> void EventLinks::write(std::wstring call, Body&& body)
{
    tracedCall(trace(), std::move(call), [&] {
        body();
        events_->announceChange();
    });
}

template <class Body> Variant EventLinks::writeLink(std::wstring call, Body&& body)
{
    return valueOf(traced(
        trace(), std::move(call),
        [&] {
            const Link link = body();
            events_->announceChange();
            return link;
        },
        shownResult));
}

STDMETHODIMP EventLinks::Load(long eventId, VARIANT* linkId)
{
    return returns(linkId, [&] {
        return valueOf(traced(
            trace(), line(L"EventLinks.Load", eventId),
            [&] {
                const auto group = table_.groupOf(eventId);
                announce(group.members);
                return group.link;
            },
            shownResult));
    });
}

STDMETHODIMP EventLinks::Create(long eventId, VARIANT* linkId)
{
    return returns(linkId, [&] {
        return writeLink(line(L"EventLinks.Create", eventId), [&] { return table_.create(eventId); });
    });
}

STDMETHODIMP EventLinks::AddNames(VARIANT linkId, VARIANT names)
{
    return guard([&] {
        write(line(L"EventLinks.AddNames", Argument{linkId}, Argument{names}), [&] {
            const auto added = namesIn(names);
            // A single activity that is given to another resource: what books it comes next.
            if (!isEmpty(linkId))
                table_.addNames(linkIn(linkId), added);
        });
    });
}

STDMETHODIMP EventLinks::RemoveNames(VARIANT linkId, VARIANT names, VARIANT* newLinkId)
{
    return returns(newLinkId, [&] {
        return writeLink(line(L"EventLinks.RemoveNames", Argument{linkId}, Argument{names}),
                         [&] { return table_.removeNames(linkIn(linkId), namesIn(names)); });
    });
}

STDMETHODIMP EventLinks::RemoveOccurrence(VARIANT linkId, long instance)
{
    return guard([&] {
        write(line(L"EventLinks.RemoveOccurrence", Argument{linkId}, instance),
              [&] { table_.removeOccurrence(linkIn(linkId), instance); });
    });
}

STDMETHODIMP EventLinks::RemoveAll(VARIANT linkId)
{
    return guard([&] {
        write(line(L"EventLinks.RemoveAll", Argument{linkId}), [&] { table_.removeAll(linkIn(linkId)); });
    });
}

STDMETHODIMP EventLinks::UpdateLinked(VARIANT linkId, long instance, long typeId, DATE t0, DATE t1, BSTR text,
                                      VARIANT* newLinkId)
{
    return returns(newLinkId, [&] {
        const Activity written{0, typeId, {t0}, {t1}, std::wstring(view(text))};
        return writeLink(line(L"EventLinks.UpdateLinked", Argument{linkId}, instance, typeId, written.t0,
                              written.t1, written.text),
                         [&] {
                             const long link = linkIn(linkId);
                             table_.update(link, instance, written);
                             return link;
                         });
    });
}

STDMETHODIMP EventLinks::Detach(VARIANT linkId, long nameId)
{
    return guard([&] {
        write(line(L"EventLinks.Detach", Argument{linkId}, nameId),
              [&] { table_.detach(linkIn(linkId), nameId); });
    });
}

STDMETHODIMP EventLinks::SetRecurrence(VARIANT linkId, IRecurrence* rule)
{
    return guard([&] {
        const auto stored = ruleIn(rule);
        write(line(L"EventLinks.SetRecurrence", Argument{linkId}, stored),
              [&] { table_.setRule(linkIn(linkId), stored); });
    });
}

STDMETHODIMP EventLinks::HasAccess(long level, long eventId, VARIANT_BOOL* result)
{
    const auto tell = [&] { return table_.mayPerform(level, eventId); };
    return answered(result, trace(), tell, L"EventLinks.HasAccess", level, eventId);
}

void EventLinks::announce(const std::vector<Member>& members)
{
    announceClear(trace());
    for (const Member& member : members)
        announceItem(trace(), member.event, member.name);
}

} // namespace korvane::store
