// Reads the schedule from the data layer, and tells when it has changed.
#pragma once

#include "demo/host/schedule/Schedule.h"
#include "framework/com/EventConnection.h"

#include <KorvaneStore.h>

namespace korvane::host
{

class ScheduleData
{
public:
    /// Throws E_NOINTERFACE for a data layer that cannot tell what is booked when.
    explicit ScheduleData(const ComPtr<IRoot>& root);

    /// What was loaded no longer holds. It comes from within the data layer's calls: load later.
    std::function<void()> onChange;

    /// The schedule stays as it is when something cannot be read.
    /// @param group whose resources are shown; 0 for those of all groups.
    void load(Schedule& schedule, long group, OleDate from, OleDate to);

private:
    EventHandlers whileLoading(std::function<void()> clear, std::function<void(const EventArguments&)> add,
                               const std::function<void()>& outdate);
    class Loading;

    void loadResources(long group);
    void loadColors();
    void changed() const;

    // What other readers are told counts as a change: it may be something that has changed.
    std::optional<long> groupOfResources_; ///< empty when the resources are to be read again
    bool colorsAreKnown_ = false;

    ComPtr<INames> names_;
    ComPtr<ITypes> types_;
    ComPtr<ISchedule> schedule_;
    bool loading_ = false;
    std::vector<Resource> resources_;
    std::map<long, long> colors_;
    std::vector<Occurrence> occurrences_;
    EventConnection namesEvents_;
    EventConnection typesEvents_;
    EventConnection occurrenceEvents_;
};

} // namespace korvane::host
