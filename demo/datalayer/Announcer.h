// The events of a collection, which all collections have alike: one that voids what was announced before, and one
// for each item, with the item's values.
#pragma once

#include "demo/datalayer/Trace.h"
#include "framework/com/ConnectionPoint.h"
#include "framework/com/EventConnection.h"

#include <string>

namespace korvane::store
{

/// The part of a collection that announces. Every event stands in the trace, unless nobody listens.
template <class Events> class Announcer : public EventSource<Events>
{
protected:
    void announceClear(Trace& trace)
    {
        if (!this->hasSubscribers())
            return;
        trace.add(L"OnClear");
        this->raise(eventClear);
    }

    template <class... Values> void announceItem(Trace& trace, const Values&... values)
    {
        if (!this->hasSubscribers()) // the last one may have left on the way
            return;
        trace.add(line(L"OnAdd", values...));
        this->raise(eventAdd, {argument(values)...});
    }

private:
    static Variant argument(long number) { return Variant(number); }
    static Variant argument(OleDate date) { return Variant(date); }
    static Variant argument(const std::wstring& text) { return Variant(Bstr(text)); }
};

} // namespace korvane::store
