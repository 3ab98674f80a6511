// Pixels per inch.
#pragma once

#include "framework/com/Platform.h"

namespace korvane
{

/// Of the screen as this process sees it.
int screenDpi() noexcept;

/// Of a window: where the system scales monitors one by one, that of the window's monitor.
int windowDpi(HWND window) noexcept;

} // namespace korvane
