// A subscription to the events of an object, for as long as it lives.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Failure.h"
#include "framework/com/Variant.h"

#include <functional>
#include <optional>

namespace korvane
{

/// The events that every collection of the data layer raises.
enum CollectionEvent : DISPID
{
    eventClear = 1, ///< what was announced before is void
    eventAdd = 2    ///< one item, with its values
};

/// The arguments of an event, counted from 0 in the order in which the event declares them.
class EventArguments
{
public:
    explicit EventArguments(const DISPPARAMS& parameters) noexcept : parameters_(parameters) {}

    long number(UINT index) const { return toLong(at(index)); }
    OleDate date(UINT index) const { return toDate(at(index)); }
    Bstr text(UINT index) const { return toText(at(index)); }

private:
    const VARIANT& at(UINT index) const;

    const DISPPARAMS& parameters_;
};

class EventConnection
{
public:
    using Handler = std::function<void(DISPID, const EventArguments&)>;

    EventConnection();
    EventConnection(const EventConnection&) = delete;
    EventConnection& operator=(const EventConnection&) = delete;
    ~EventConnection();

    /// Subscribes to the events of a source, in place of what was subscribed to before. Throws a Failure when
    /// the source does not have them.
    void connect(IUnknown* source, REFIID events, Handler handler);
    void disconnect() noexcept;

    /// Makes a call that raises events. When a handler fails on the way, no further event reaches the handler,
    /// and that failure is thrown once the call is back: a source does not tell its caller what went wrong in
    /// a subscriber.
    void during(const std::function<void()>& callThatRaises);

    /// Where a handler's failure goes that happens outside of any such call.
    std::function<void(const Failure&)> onStrayFailure;

private:
    class Sink;
    struct State;

    HRESULT deliver(DISPID event, const DISPPARAMS& parameters) noexcept;

    Handler handler_;
    ComPtr<IConnectionPoint> point_;
    ComPtr<Sink> sink_;
    DWORD cookie_ = 0;
    int calls_ = 0;
    std::optional<Failure> failure_;
};

} // namespace korvane
