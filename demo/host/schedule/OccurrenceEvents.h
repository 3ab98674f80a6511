// Receives what is announced about activities, with their times.
#pragma once

#include "demo/host/schedule/Schedule.h"
#include "framework/com/EventConnection.h"

#include <KorvaneData.h>

#include <functional>

namespace korvane::host
{

/// A subscription to the events of a collection of activities, for as long as it lives.
class OccurrenceEvents
{
public:
    std::function<void()> onClear;
    std::function<void(Occurrence occurrence)> onAdd;

    void connect(const ComPtr<IEvents>& events);

private:
    EventConnection connection_;
};

} // namespace korvane::host
