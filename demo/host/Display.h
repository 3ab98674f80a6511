// The user's display: its resolution and extent, and the font of its messages.
#pragma once

#include "demo/host/GdiObject.h"

namespace korvane::host
{

/// The resolution that the process sees the screen at.
int screenDpi() noexcept;

/// What a window's screen has for windows; of the first screen without a window.
RECT workArea(HWND window) noexcept;

/// The font that the user has chosen for dialogs and messages, as high as it is at the screen's resolution. Throws a
/// Failure when the system does not tell it.
LOGFONTW messageFont();

using Font = GdiObject<HFONT>;

/// The same font, to draw with at any resolution.
Font createMessageFont(int dpi);
int textHeight(HFONT font) noexcept;

} // namespace korvane::host
