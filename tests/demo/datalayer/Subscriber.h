// A subscriber to the groups' events that remembers what it was told.
#pragma once

#include "tests/demo/datalayer/DataLayer.h"
#include "tests/demo/datalayer/Sink.h"

#include <functional>

namespace korvane::store::test
{

class Subscriber final : public Sink
{
public:
    Subscriber() : Sink(DIID_IGroupsEvents) {}

    /// Subscribes until the result goes.
    class Subscription;
    static Subscription subscribedTo(const ComPtr<IGroups>& groups);

    /// Events in their order: "OnClear" and "OnAdd 4 Staff 3".
    const std::vector<std::wstring>& events() const noexcept { return events_; }

    /// The groups announced since the last OnClear.
    const std::vector<Listed>& list() const noexcept { return list_; }

    void forget()
    {
        events_.clear();
        list_.clear();
    }

    /// Called with each event; its result is the event's.
    std::function<HRESULT()> onEvent = [] { return S_OK; };

private:
    HRESULT hear(DISPID event, const DISPPARAMS& arguments) override;

    std::vector<std::wstring> events_;
    std::vector<Listed> list_;
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
