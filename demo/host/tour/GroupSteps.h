// The steps of the tour through the groups.
#pragma once

#include "demo/host/tour/Step.h"

namespace korvane::host
{

Chapter groupChapter();

} // namespace korvane::host
