// The second language: every dialog is opened in it and read.
#pragma once

#include "demo/host/tour/Step.h"

namespace korvane::host
{

Chapter languageChapter();

} // namespace korvane::host
