// The events of a collection. All collections have two alike: one that voids what was announced before, and one for
// each item, with the item's values.
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
    void announceClear(Trace& trace) { announce(trace, eventClear, L"OnClear"); }

    template <class... Values> void announceItem(Trace& trace, const Values&... values)
    {
        announce(trace, eventAdd, L"OnAdd", values...);
    }

    template <class... Values>
    void announce(Trace& trace, DISPID event, std::wstring_view name, const Values&... values)
    {
        if (!this->hasSubscribers()) // the last one may have left on the way
            return;
        trace.add(line(name, values...));
        this->raise(event, {argument(values)...});
    }

private:
    static Variant argument(long number) { return Variant(number); }
    static Variant argument(bool flag) { return Variant(flag); }
    static Variant argument(OleDate date) { return Variant(date); }
    static Variant argument(const std::wstring& text) { return Variant(Bstr(text)); }
};

} // namespace korvane::store
