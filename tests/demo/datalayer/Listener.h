// A subscriber to any events that writes down what it is told.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Failure.h"
#include "tests/demo/datalayer/Sink.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane::store::test
{

class Listener final : public Sink
{
public:
    /// Subscribes until the result goes.
    class Subscription;

    explicit Listener(REFIID events) : Sink(events) {}

    /// Events in their order: "OnClear" and "OnAdd 4, 0, Van, 2026-03-02 09:00".
    const std::vector<std::wstring>& events() const noexcept { return events_; }
    void forget() { events_.clear(); }

    /// Called with each event.
    std::function<void()> onEvent = [] {};

private:
    HRESULT hear(DISPID event, const DISPPARAMS& arguments) override;

    std::vector<std::wstring> events_;
};

class Listener::Subscription
{
public:
    template <class Source>
    Subscription(const ComPtr<Source>& source, REFIID events) : listener_(new Listener(events))
    {
        const auto container = source.template as<IConnectionPointContainer>();
        require(container->FindConnectionPoint(events, point_.put()));
        require(point_->Advise(listener_.get(), &cookie_));
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { point_->Unadvise(cookie_); }

    Listener* operator->() const noexcept { return listener_.get(); }

private:
    ComPtr<IConnectionPoint> point_;
    ComPtr<Listener> listener_;
    DWORD cookie_ = 0;
};

/// A date as tests write it: "2026-03-02 09:00", or "2026-03-02" at midnight.
std::wstring written(DATE date);

} // namespace korvane::store::test
