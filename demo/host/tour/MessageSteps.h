// What the tour does with messages and information: somebody phones for a colleague.
#pragma once

#include "demo/host/tour/Step.h"

namespace korvane::host
{

Chapter messageChapter();

} // namespace korvane::host
