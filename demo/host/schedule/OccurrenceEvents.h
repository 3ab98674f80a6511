// Receives what is announced about activities, with their times.
#pragma once

#include "demo/host/schedule/Schedule.h"
#include "framework/com/Module.h"

#include <KorvaneData.h>

#include <functional>

namespace korvane::host
{

/// A subscription to the events of a collection of activities, for as long as it lives.
class OccurrenceEvents
{
public:
    OccurrenceEvents();
    OccurrenceEvents(const OccurrenceEvents&) = delete;
    OccurrenceEvents& operator=(const OccurrenceEvents&) = delete;
    ~OccurrenceEvents();

    std::function<void()> onClear;
    std::function<void(Occurrence occurrence)> onAdd;

    void connect(const ComPtr<IEvents>& events);

private:
    class Sink;

    ComPtr<IConnectionPoint> point_;
    ComPtr<Sink> sink_;
    DWORD cookie_ = 0;
};

} // namespace korvane::host
