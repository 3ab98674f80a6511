// What the tour does with resources, activity types and their order: a department is set up from nothing.
#pragma once

#include "demo/host/tour/Step.h"

namespace korvane::host
{

Chapter departmentChapter();

} // namespace korvane::host
