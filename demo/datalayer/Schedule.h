// What is booked when.
#pragma once

#include "demo/datalayer/Activity.h"
#include "demo/datalayer/Sqlite.h"

#include <vector>

namespace korvane::store
{

struct Occurrence
{
    long event = 0;
    long instance = 0; ///< 0 for an activity that does not repeat
    Activity activity;
};

/// All occurrences that touch the time between two dates, in the order of their start and their activities' ids.
std::vector<Occurrence> scheduleBetween(OleDate from, OleDate to, Connection& connection);

} // namespace korvane::store
