// The steps of the tour through the schedule.
#pragma once

#include "demo/host/tour/Step.h"

namespace korvane::host
{

Chapter bookingChapter();

} // namespace korvane::host
