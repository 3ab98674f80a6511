// What every subscriber to events has: the interfaces and the count of a sink, without a description of its type.
#pragma once

#include "framework/com/Platform.h"

#include <gtest/gtest.h>

namespace korvane::store::test
{

class Sink : public IDispatch
{
public:
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink() = default;

    ULONG references() const noexcept { return references_; }

    /// Whether the sink knows the name of the events, as sinks made by compilers do.
    bool knowsEvents = true;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || (knowsEvents && iid == eventsId_);
        *object = known ? this : nullptr;
        if (!known)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG remaining = --references_;
        if (remaining == 0)
            delete this;
        return remaining;
    }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID event, REFIID iid, LCID, WORD flags, DISPPARAMS* arguments, VARIANT*,
                        EXCEPINFO*, UINT*) override
    {
        EXPECT_EQ(IID_NULL, iid);
        EXPECT_EQ(DISPATCH_METHOD, flags);
        EXPECT_EQ(0u, arguments->cNamedArgs);
        return hear(event, *arguments);
    }

protected:
    explicit Sink(REFIID events) : eventsId_(events) {}

    /// @param arguments last first. The result is the event's.
    virtual HRESULT hear(DISPID event, const DISPPARAMS& arguments) = 0;

private:
    IID eventsId_;
    ULONG references_ = 0;
};

} // namespace korvane::store::test
