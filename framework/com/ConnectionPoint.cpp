#include "framework/com/ConnectionPoint.h"

#include "framework/com/Enumeration.h"
#include "framework/com/LateBound.h"

#include <algorithm>

namespace korvane
{

namespace
{

IConnectionPoint* copyOf(const ComPtr<IConnectionPoint>& point)
{
    return ComPtr(point).detach();
}

CONNECTDATA copyOf(const ConnectionPoint::Subscriber& subscriber)
{
    return {ComPtr<IUnknown>(subscriber.sink.get()).detach(), subscriber.cookie};
}

} // namespace

ComPtr<IEnumConnectionPoints> enumerate(const ComPtr<ConnectionPoint>& point)
{
    using Points = Enumeration<IEnumConnectionPoints, IConnectionPoint*, ComPtr<IConnectionPoint>, copyOf>;
    std::vector points{ComPtr<IConnectionPoint>(point.get())};
    return ComPtr<IEnumConnectionPoints>(make<Points>(std::move(points)).get());
}

void ConnectionPoint::cutOff() noexcept
{
    owner_ = nullptr;
    // Moved out first: a subscriber that goes may try to unsubscribe.
    const auto released = std::exchange(subscribers_, {});
}

void ConnectionPoint::raise(DISPID event, std::initializer_list<Variant> arguments)
{
    std::vector<VARIANT> values = lastFirst(arguments);
    raise(event, values, [](HRESULT, EXCEPINFO&) {});
}

void ConnectionPoint::raise(DISPID event, std::span<VARIANT> arguments,
                            const std::function<void(HRESULT outcome, EXCEPINFO& exception)>& answered)
{
    const auto called = subscribers_;
    for (const Subscriber& subscriber : called)
    {
        if (!isSubscribed(subscriber.cookie))
            continue;
        DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        EXCEPINFO exception{};
        const HRESULT outcome = subscriber.sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                                        &parameters, nullptr, &exception, nullptr);
        answered(outcome, exception);
        for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile})
            static_cast<void>(Bstr::adopt(text)); // what was not taken
    }
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid)
{
    if (!iid)
        return E_POINTER;
    *iid = events_;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** owner)
{
    if (!owner)
        return E_POINTER;
    *owner = ComPtr(owner_).detach();
    return *owner ? S_OK : E_UNEXPECTED;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie)
{
    if (!sink || !cookie)
        return E_POINTER;
    *cookie = 0;
    return guard([&] {
        ComPtr<IDispatch> listener;
        // A sink that is nothing but an event handler may not know the name of what it handles.
        if (FAILED(sink->QueryInterface(events_, listener.putVoid())))
            listener = queryFor<IDispatch>(sink);
        if (!listener || !owner_)
            throw Failure(CONNECT_E_CANNOTCONNECT);
        subscribers_.push_back({lastCookie_ + 1, std::move(listener)});
        *cookie = ++lastCookie_;
    });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie)
{
    const auto found =
        std::find_if(subscribers_.begin(), subscribers_.end(),
                     [&](const Subscriber& subscriber) { return subscriber.cookie == cookie; });
    if (found == subscribers_.end())
        return CONNECT_E_NOCONNECTION;
    // Released last: its end may lead back here.
    const Subscriber released = std::move(*found);
    subscribers_.erase(found);
    return S_OK;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** subscribers)
{
    using Subscribers = Enumeration<IEnumConnections, CONNECTDATA, Subscriber, copyOf>;
    return returns(subscribers,
                   [&] { return ComPtr<IEnumConnections>(make<Subscribers>(subscribers_).get()); });
}

bool ConnectionPoint::isSubscribed(DWORD cookie) const noexcept
{
    return std::any_of(subscribers_.begin(), subscribers_.end(),
                       [&](const Subscriber& subscriber) { return subscriber.cookie == cookie; });
}

} // namespace korvane
