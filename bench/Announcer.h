// A collection of the data layer that is at the same time the connection point of its events, for one subscriber.
#pragma once

#include "framework/com/EventConnection.h"
#include "framework/com/Object.h"

namespace korvane::bench
{

/// @tparam Base answers for the members of the interface that the bench does not call.
template <class Class, class Interface, class Events, class Base>
class Announcer : public Object<Class, Inherits<Base, IConnectionPointContainer, IConnectionPoint>, Interface,
                                IConnectionPointContainer, IConnectionPoint>
{
public:
    bool hasSubscriber() const noexcept { return static_cast<bool>(subscriber_); }

    // IConnectionPointContainer
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override
    {
        *points = nullptr;
        return E_NOTIMPL;
    }

    STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** point) override
    {
        return events == __uuidof(Events) ? this->QueryInterface(IID_PPV_ARGS(point))
                                          : CONNECT_E_NOCONNECTION;
    }

    // IConnectionPoint
    STDMETHODIMP GetConnectionInterface(IID* events) override
    {
        *events = __uuidof(Events);
        return S_OK;
    }

    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override
    {
        return this->QueryInterface(IID_PPV_ARGS(container));
    }

    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override
    {
        if (subscriber_)
            return CONNECT_E_ADVISELIMIT;
        *cookie = 1;
        return sink->QueryInterface(__uuidof(Events), subscriber_.putVoid());
    }

    STDMETHODIMP Unadvise(DWORD) override
    {
        subscriber_.reset();
        return S_OK;
    }

    STDMETHODIMP EnumConnections(IEnumConnections** connections) override
    {
        *connections = nullptr;
        return E_NOTIMPL;
    }

    /// @param arguments last first.
    void raise(DISPID event, VARIANT* arguments = nullptr, UINT count = 0) const
    {
        DISPPARAMS parameters{arguments, nullptr, count, 0};
        if (subscriber_)
            subscriber_->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                                nullptr, nullptr);
    }

protected:
    static VARIANT of(long number) noexcept
    {
        VARIANT value{};
        value.vt = VT_I4;
        value.lVal = number;
        return value;
    }

    /// The text is lent, not copied: what is measured is the subscriber.
    static VARIANT of(BSTR text) noexcept
    {
        VARIANT value{};
        value.vt = VT_BSTR;
        value.bstrVal = text;
        return value;
    }

private:
    ComPtr<IDispatch> subscriber_;
};

} // namespace korvane::bench
