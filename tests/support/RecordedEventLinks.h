// The link groups of the recording data layer. The id of a link group is the id of one of its activities.
#pragma once

#include "framework/com/ConnectionPoint.h"
#include "tests/support/RecordedEvents.h"

namespace korvane::test
{

class RecordedEventLinks final
    : public Object<RecordedEventLinks, Inherits<EmptyEventLinks, EventSource<IEventLinksEvents>>,
                    IEventLinks, IConnectionPointContainer>
{
public:
    explicit RecordedEventLinks(RecordingData& data) : data_(data) {}

    using EventSource<IEventLinksEvents>::raise;
    using EventSource<IEventLinksEvents>::hasSubscribers;

    STDMETHODIMP Load(long eventId, VARIANT* linkId) override;
    STDMETHODIMP Create(long eventId, VARIANT* linkId) override;
    STDMETHODIMP AddNames(VARIANT linkId, VARIANT names) override;
    STDMETHODIMP RemoveNames(VARIANT linkId, VARIANT names, VARIANT* newLinkId) override;
    STDMETHODIMP RemoveOccurrence(VARIANT linkId, long instance) override;
    STDMETHODIMP RemoveAll(VARIANT linkId) override;
    STDMETHODIMP UpdateLinked(VARIANT linkId, long instance, long typeId, DATE T0, DATE T1, BSTR text,
                              VARIANT* newLinkId) override;
    STDMETHODIMP Detach(VARIANT linkId, long nameId) override;
    STDMETHODIMP SetRecurrence(VARIANT linkId, IRecurrence* rule) override;
    STDMETHODIMP HasAccess(long level, long eventId, VARIANT_BOOL* result) override;

private:
    /// Answers a call about a link group.
    template <class Body, class... Arguments>
    HRESULT answer(const std::string& call, const Body& body, const VARIANT& linkId,
                   const Arguments&... arguments)
    {
        const auto known = [&] {
            const auto group = members(linkIn(linkId));
            if (group.empty() && data_.exactGroups)
                return unknownActivity();
            body(group);
            return S_OK;
        };
        return data_.answer(call, known, shownLink(linkId), arguments...);
    }

    std::vector<Event*> members(const std::optional<long>& link);
    /// Gives the group another id where the activity that gave it its id is no longer in it.
    std::optional<long> keyed(const std::optional<long>& link);

    RecordingData& data_;
};

} // namespace korvane::test
