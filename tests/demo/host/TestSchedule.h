// A schedule to test with: three resources, and a week that begins on Monday, 23 November 2026.
#pragma once

#include "demo/host/schedule/ScheduleLayout.h"

namespace korvane::host::test
{

constexpr OleDate monday{46349};

inline OleDate at(double hour, long day = 0)
{
    return later(monday, day * minutesPerDay + static_cast<long>(hour * 60));
}

inline Occurrence booked(long event, long resource, double from, double to, long instance = 0)
{
    return {{event, instance}, resource, 1, at(from), at(to), L"Work"};
}

inline Schedule scheduleOf(std::vector<Occurrence> occurrences)
{
    Schedule schedule;
    schedule.setResources({{10, L"Ann"}, {20, L"Bob"}, {30, L"Cid"}});
    schedule.setOccurrences(std::move(occurrences));
    return schedule;
}

} // namespace korvane::host::test
