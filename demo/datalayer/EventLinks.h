// The link groups of activities.
#pragma once

#include "demo/datalayer/Announcer.h"
#include "demo/datalayer/Events.h"
#include "demo/datalayer/LinkTable.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

namespace korvane::store
{

/// Writes are announced by the activities collection, as it is activities that change.
class EventLinks final : public Object<EventLinks, Inherits<IEventLinks, Announcer<IEventLinksEvents>>,
                                       IEventLinks, IConnectionPointContainer>
{
public:
    EventLinks(std::shared_ptr<Store> store, ComPtr<Events> events)
        : store_(std::move(store)), table_(*store_), events_(std::move(events))
    {
    }

    STDMETHODIMP Load(long eventId, VARIANT* linkId) override;
    STDMETHODIMP Create(long eventId, VARIANT* linkId) override;
    STDMETHODIMP AddNames(VARIANT linkId, VARIANT names) override;
    STDMETHODIMP RemoveNames(VARIANT linkId, VARIANT names, VARIANT* newLinkId) override;
    STDMETHODIMP RemoveOccurrence(VARIANT linkId, long instance) override;
    STDMETHODIMP RemoveAll(VARIANT linkId) override;
    STDMETHODIMP UpdateLinked(VARIANT linkId, long instance, long typeId, DATE t0, DATE t1, BSTR text,
                              VARIANT* newLinkId) override;
    STDMETHODIMP Detach(VARIANT linkId, long nameId) override;
    STDMETHODIMP SetRecurrence(VARIANT linkId, IRecurrence* rule) override;
    STDMETHODIMP HasAccess(long level, long eventId, VARIANT_BOOL* result) override;

private:
    Trace& trace() const noexcept { return store_->trace(); }
    void announce(const std::vector<Member>& members);

    /// Runs a write, with the call in the trace, and announces it.
    template <class Body> void write(std::wstring call, Body&& body);
    template <class Body> Variant writeLink(std::wstring call, Body&& body);

    std::shared_ptr<Store> store_;
    LinkTable table_;
    ComPtr<Events> events_;
};

} // namespace korvane::store
