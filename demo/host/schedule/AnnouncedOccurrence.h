// Reads an occurrence from what a collection of activities announces.
#pragma once

#include "demo/host/schedule/Schedule.h"
#include "framework/com/EventConnection.h"

namespace korvane::host
{

/// @param arguments of the event that announces one occurrence.
Occurrence occurrenceIn(const EventArguments& arguments);

} // namespace korvane::host
