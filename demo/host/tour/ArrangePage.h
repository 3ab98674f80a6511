// The dialogs in which a list is put into an order, as the tour's visitor works with them.
#pragma once

#include "demo/host/tour/Deeds.h"

namespace korvane::host::arrangePage
{

inline constexpr Field list{L"the list", L"ListBox"};
inline constexpr Field toTop{L"Move to the top", L"Button", L"Move to the top (Alt+Home)"};
inline constexpr Field up{L"Move up", L"Button", L"Move up (Alt+Up)"};
inline constexpr Field down{L"Move down", L"Button", L"Move down (Alt+Down)"};
inline constexpr Field toBottom{L"Move to the bottom", L"Button", L"Move to the bottom (Alt+End)"};

/// Draws an item to the place of another one.
void dragItem(Visitor& visitor, Text item, Text to);
/// Draws the window's corner, and the list grows along.
void enlargeWindow(Visitor& visitor, int pixels);

inline constexpr Word drags{&dragItem};
inline constexpr Word enlarges{&enlargeWindow};

} // namespace korvane::host::arrangePage
