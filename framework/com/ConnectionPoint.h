// Events through connection points, for an object that raises one set of events.
//
//   class Clock final : public Object<Clock, Inherits<IClock, EventSource<IClockEvents>>,
//                                     IClock, IConnectionPointContainer> { ... raise(1, {Variant(hour)}); ... };
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Object.h"
#include "framework/com/Variant.h"

#include <functional>
#include <initializer_list>
#include <span>
#include <vector>

namespace korvane
{

/// Who listens to one set of events of an object. Events reach a subscriber's IDispatch::Invoke.
class ConnectionPoint final : public Object<ConnectionPoint, Inherits<IConnectionPoint>, IConnectionPoint>
{
public:
    struct Subscriber
    {
        DWORD cookie;
        ComPtr<IDispatch> sink;
    };

    /// The owner lives until it calls cutOff.
    ConnectionPoint(IConnectionPointContainer& owner, REFIID events) : owner_(&owner), events_(events) {}

    /// The owner is about to go: lets all subscribers go. A client may still hold the connection point.
    void cutOff() noexcept;

    bool hasSubscribers() const noexcept { return !subscribers_.empty(); }

    /// Calls every subscriber in the order of subscription. Whoever unsubscribes on the way is not called any
    /// more, and whoever subscribes hears of the next event first. A subscriber that fails does not keep the
    /// event from the others, nor the source from its work.
    void raise(DISPID event, std::initializer_list<Variant> arguments);

    /// The same for an event that wants an answer.
    /// @param arguments as Invoke wants them, the last one first. @param answered is told what each call came to.
    void raise(DISPID event, std::span<VARIANT> arguments,
               const std::function<void(HRESULT outcome, EXCEPINFO& exception)>& answered);

    STDMETHODIMP GetConnectionInterface(IID* iid) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** owner) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** subscribers) override;

private:
    bool isSubscribed(DWORD cookie) const noexcept;

    IConnectionPointContainer* owner_;
    IID events_;
    std::vector<Subscriber> subscribers_;
    DWORD lastCookie_ = 0;
};

/// What a client gets that asks an object for all of its connection points.
ComPtr<IEnumConnectionPoints> enumerate(const ComPtr<ConnectionPoint>& point);

/// The connection point container of a class that raises one set of events.
template <class Events> class EventSource : public IConnectionPointContainer
{
public:
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override
    {
        return returns(points, [&] { return enumerate(point()); });
    }

    STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** point) override
    {
        if (!point)
            return E_POINTER;
        *point = nullptr;
        if (events != __uuidof(Events))
            return CONNECT_E_NOCONNECTION;
        return guard([&] { *point = ComPtr<IConnectionPoint>(this->point().get()).detach(); });
    }

protected:
    EventSource() = default;
    ~EventSource()
    {
        if (point_)
            point_->cutOff();
    }

    bool hasSubscribers() const noexcept { return point_ && point_->hasSubscribers(); }
    void raise(DISPID event, std::initializer_list<Variant> arguments = {})
    {
        if (const auto held = point_) // a subscriber may let go of the source in the call
            held->raise(event, arguments);
    }

    /// Made when somebody asks for it: most objects have nobody who listens.
    const ComPtr<ConnectionPoint>& point()
    {
        if (!point_)
            point_ = make<ConnectionPoint>(*this, __uuidof(Events));
        return point_;
    }

private:
    ComPtr<ConnectionPoint> point_;
};

} // namespace korvane
