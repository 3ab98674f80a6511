// A subscriber that does nothing: what is measured against it is what a real one does.
#pragma once

#include "framework/com/Object.h"

namespace korvane::bench
{

template <class Events> class Deaf final : public Object<Deaf<Events>, Inherits<Events>, Events>
{
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return S_OK;
    }
};

/// Subscribes to a collection of the bench's data until it goes.
template <class Events> class DeafSubscription
{
public:
    template <class Collection>
    explicit DeafSubscription(const ComPtr<Collection>& collection)
        : point_(collection.template as<IConnectionPoint>())
    {
        require(point_->Advise(static_cast<Events*>(subscriber_.get()), &cookie_));
    }
    DeafSubscription(const DeafSubscription&) = delete;
    DeafSubscription& operator=(const DeafSubscription&) = delete;
    ~DeafSubscription() { point_->Unadvise(cookie_); }

private:
    ComPtr<Deaf<Events>> subscriber_ = make<Deaf<Events>>();
    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

} // namespace korvane::bench
