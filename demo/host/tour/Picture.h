// Pictures of the screen.
#pragma once

#include "framework/com/Platform.h"

#include <string>

namespace korvane::host
{

/// Saves what the screen shows where a window is, as a PNG, once it no longer changes. Throws when there is
/// nothing to see, or the file cannot be written.
void savePicture(HWND window, const std::wstring& file);

} // namespace korvane::host
