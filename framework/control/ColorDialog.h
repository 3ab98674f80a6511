// The platform's dialog for a colour.
#pragma once

#include "framework/com/Platform.h"

#include <optional>

namespace korvane
{

/// Lets the user choose any colour. The colours that he puts together are offered again as long as the apartment lasts.
/// @param owner the window that waits. @param color RGB, chosen at first; below 1 for none. @return none when the user
/// cancels. Throws what keeps the dialog from being shown.
std::optional<long> chooseColor(HWND owner, long color);

} // namespace korvane
