// A subscription to the events of an object, for as long as it lives.
#pragma once

#include "framework/com/Call.h"

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
    bool flag(UINT index) const { return toBool(at(index)); }
    OleDate date(UINT index) const { return toDate(at(index)); }
    LentText text(UINT index) const { return LentText(at(index)); } ///< good as long as the arguments are
    UINT count() const noexcept { return parameters_.cArgs; }

private:
    const VARIANT& at(UINT index) const
    {
        if (index >= parameters_.cArgs)
            throwFailure(DISP_E_BADPARAMCOUNT);
        return parameters_.rgvarg[parameters_.cArgs - 1 - index]; // arguments arrive last first
    }

    const DISPPARAMS& parameters_;
};

/// What a subscriber does on the events of a collection. An event without a handler is passed over.
struct EventHandlers
{
    std::function<void()> clear = nullptr;
    std::function<void(const EventArguments& item)> add = nullptr;
    std::function<void(DISPID event, const EventArguments& arguments)> further = nullptr; ///< any other
};

/// Whose handlers they are.
class EventOwner
{
public:
    /// Keeps the owner alive while an announcement is handled: whoever is called in the handler may let go of it.
    virtual ComPtr<IUnknown> keptAlive() noexcept = 0;

    /// A handler has failed outside of any call of the owner's.
    virtual void announcementFailed(const Failure& failure) noexcept = 0;

protected:
    ~EventOwner() = default;
};

class EventConnection
{
public:
    /// @param owner null where nobody needs to be kept alive, nor told of a stray failure.
    explicit EventConnection(EventOwner* owner = nullptr) noexcept;
    EventConnection(const EventConnection&) = delete;
    EventConnection& operator=(const EventConnection&) = delete;
    ~EventConnection();

    /// Subscribes to the events of a source, in place of what was subscribed to before. Throws a Failure when
    /// the source does not have them.
    void connect(IUnknown* source, REFIID events, EventHandlers handlers);
    void disconnect() noexcept;

    /// Makes a call that raises events. When a handler fails on the way, no further event reaches the handlers,
    /// and that failure is thrown once the call is back: a source does not tell its caller what went wrong in
    /// a subscriber.
    void during(const std::function<void()>& callThatRaises);
    bool isInCall() const noexcept { return calls_ > 0; }

private:
    class Sink;

    void use(ComPtr<Sink> next) noexcept;
    void failed(Failure&& failure) noexcept;

    EventOwner* owner_;
    ComPtr<IConnectionPoint> point_;
    ComPtr<Sink> sink_;
    DWORD cookie_ = 0;
    int calls_ = 0;
    std::optional<Failure> failure_;
};

} // namespace korvane
