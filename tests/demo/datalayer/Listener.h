// A subscriber to any events that writes down what it is told.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Failure.h"
#include "tests/support/PlainObject.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace korvane::store::test
{

class Listener final : public korvane::test::PlainObject<>
{
public:
    /// Subscribes until the result goes.
    class Subscription;

    explicit Listener(REFIID events) : eventsId_(events) {}

    /// Whether it knows the name of the events, as sinks made by compilers do.
    bool knowsEvents = true;

    /// Events in their order: "OnClear" and "OnAdd 4, 0, Van, 2026-03-02 09:00".
    const std::vector<std::wstring>& events() const noexcept { return events_; }
    void forget() { events_.clear(); }

    /// Called with each event.
    std::function<void()> onEvent = [] {};
    /// What those are given that come with arguments, the last one first.
    const VARIANT* arguments() const noexcept { return arguments_; }

    HRESULT answer = S_OK; ///< to each event

    STDMETHODIMP Invoke(DISPID event, REFIID iid, LCID, WORD flags, DISPPARAMS* arguments, VARIANT*,
                        EXCEPINFO*, UINT*) override;

private:
    void* find(REFIID iid) override { return knowsEvents && iid == eventsId_ ? this : nullptr; }

    IID eventsId_;
    std::vector<std::wstring> events_;
    const VARIANT* arguments_ = nullptr;
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
    ~Subscription() { end(); }

    void end() noexcept
    {
        if (point_)
            point_->Unadvise(cookie_);
        point_.reset();
    }

    Listener* operator->() const noexcept { return listener_.get(); }

private:
    ComPtr<IConnectionPoint> point_;
    ComPtr<Listener> listener_;
    DWORD cookie_ = 0;
};

/// A date as tests write it: "2026-03-02 09:00", or "2026-03-02" at midnight.
std::wstring written(DATE date);

} // namespace korvane::store::test
