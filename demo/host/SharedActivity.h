// An activity that is booked for several resources.
#pragma once

#include "framework/com/ComPtr.h"

#include <KorvaneData.h>

namespace korvane::host
{

/// Whether others have a part in the activity besides the resource that it stands with.
bool isShared(const ComPtr<IRoot>& root, long event);

} // namespace korvane::host
