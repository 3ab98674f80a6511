// What a database holds of activities and link groups, without ids: for comparing what is with what should be.
#pragma once

#include "tests/support/RecordedValues.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace korvane::test
{

struct ActivityValues
{
    long typeId;
    DATE t0;
    DATE t1;
    std::wstring text;
};

/// An activity for one resource.
struct Booking
{
    struct Occurrence
    {
        long nameId;
        ActivityValues values;
    };

    long nameId;
    ActivityValues values;
    std::optional<Rule> rule = std::nullopt;
    std::map<long, Occurrence> edited = {};
    std::set<long> removed = {};

    void write(long instance, long name, const ActivityValues& written);
    void remove(long instance);
};

/// One or more bookings that belong together, as a text.
std::string shownGroup(bool linked, const std::vector<const Booking*>& members);

} // namespace korvane::test
