// Reads the schedule from the data layer.
#pragma once

#include "demo/host/schedule/Schedule.h"
#include "framework/DataLayer.h"

#include <KorvaneStore.h>

namespace korvane::host
{

class ScheduleData
{
public:
    /// Throws E_NOINTERFACE for a data layer that cannot tell what is booked when.
    explicit ScheduleData(const ComPtr<IRoot>& root) { follow(root); }

    /// Reads from another root from now on. Nobody else may load through it: what is announced is taken for what was
    /// asked for here.
    void follow(const ComPtr<IRoot>& root);

    /// What was read before no longer holds.
    void outdate() noexcept;

    /// The schedule stays as it is when something cannot be read.
    /// @param group whose resources are shown; 0 for those of all groups.
    void load(Schedule& schedule, long group, OleDate from, OleDate to);

private:
    std::optional<long> groupOfResources_; ///< empty when the resources are to be read again
    bool colorsAreKnown_ = false;

    ComPtr<ISchedule> schedule_;
    std::vector<Resource> resources_;
    std::map<long, long> colors_;
    std::vector<Occurrence> occurrences_;
    Subscription<INames> names_;
    Subscription<ITypes> types_;
    EventConnection occurrenceEvents_;
};

} // namespace korvane::host
