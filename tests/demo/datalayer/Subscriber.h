// A subscriber to the groups' events that remembers what it was told.
#pragma once

#include "tests/demo/datalayer/DataLayer.h"

#include <functional>

namespace korvane::store::test
{

class Subscriber final : public IDispatch
{
public:
    /// Subscribes until the result goes.
    class Subscription;
    static Subscription subscribedTo(const ComPtr<IGroups>& groups);

    virtual ~Subscriber() = default;

    /// Events in their order: "OnClear" and "OnAdd 4 Staff 3".
    const std::vector<std::wstring>& events() const noexcept { return events_; }

    /// The groups announced since the last OnClear.
    const std::vector<Listed>& list() const noexcept { return list_; }

    void forget()
    {
        events_.clear();
        list_.clear();
    }

    ULONG references() const noexcept { return references_; }

    /// Called with each event; its result is the event's.
    std::function<HRESULT()> onEvent = [] { return S_OK; };

    /// Whether the subscriber knows the name of the events, as sinks made by compilers do.
    bool knowsEvents = true;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID event, REFIID iid, LCID, WORD flags, DISPPARAMS* arguments, VARIANT*,
                        EXCEPINFO*, UINT*) override;

private:
    std::vector<std::wstring> events_;
    std::vector<Listed> list_;
    ULONG references_ = 0;
};

class Subscriber::Subscription
{
public:
    Subscription(ComPtr<IConnectionPoint> point, ComPtr<Subscriber> subscriber);
    Subscription(const Subscription&) = delete;
    Subscription(Subscription&&) = default;
    Subscription& operator=(const Subscription&) = delete;
    Subscription& operator=(Subscription&&) = delete;
    ~Subscription() { end(); }

    void end() noexcept
    {
        if (point_)
            point_->Unadvise(cookie_);
        point_.reset();
    }

    Subscriber* operator->() const noexcept { return subscriber_.get(); }

private:
    ComPtr<IConnectionPoint> point_;
    ComPtr<Subscriber> subscriber_;
    DWORD cookie_ = 0;
};

ComPtr<IConnectionPoint> eventsOf(const ComPtr<IGroups>& groups);

} // namespace korvane::store::test
