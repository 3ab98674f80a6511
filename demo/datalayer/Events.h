// The activities collection.
#pragma once

#include "demo/datalayer/Announcer.h"
#include "demo/datalayer/EventTable.h"
#include "framework/com/Object.h"

#include <KorvaneStore.h>

namespace korvane::store
{

class Events final : public Object<Events, Inherits<IEvents, ISchedule, Announcer<IEventsEvents>>, IEvents,
                                   ISchedule, IConnectionPointContainer>
{
public:
    explicit Events(std::shared_ptr<Store> store) : store_(std::move(store)), table_(*store_) {}

    STDMETHODIMP Add(long nameId, long typeId, DATE t0, DATE t1, BSTR text, long* eventId) override;
    STDMETHODIMP Update(long eventId, long instance, long nameId, long typeId, DATE t0, DATE t1,
                        BSTR text) override;
    STDMETHODIMP Remove(long eventId, long instance) override;
    STDMETHODIMP Fetch(long eventId, long instance, long* nameId, long* typeId, DATE* t0, DATE* t1,
                       BSTR* text) override;
    STDMETHODIMP GetRecurrence(long eventId, IRecurrence** rule) override;
    STDMETHODIMP SetRecurrence(long eventId, IRecurrence* rule) override;
    STDMETHODIMP IsException(long eventId, long* result) override;

    STDMETHODIMP Load(DATE from, DATE to) override;

    /// Tells that what was announced no longer holds: activities were written. The write is done, so nothing
    /// that happens now is told to its caller.
    void announceChange();

private:
    Trace& trace() const noexcept { return store_->trace(); }

    std::shared_ptr<Store> store_;
    EventTable table_;
};

} // namespace korvane::store
