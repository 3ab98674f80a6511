// Arrays of VARIANTs, as OLE Automation passes them.
#pragma once

#include "framework/com/Variant.h"

#include <vector>

namespace korvane
{

/// An array of VARIANTs that hold Longs, in a VARIANT of its own.
Variant arrayOf(const std::vector<long>& numbers);

} // namespace korvane
