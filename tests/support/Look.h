// All that can be seen of a dialog, as text: for comparing what it shows before and after.
#pragma once

#include "framework/com/Platform.h"

#include <string>
#include <vector>

namespace korvane::test
{

/// The windows on a dialog, in tab order: those on a frame follow the frame.
std::vector<HWND> windowsOn(HWND dialog);

std::wstring classOf(HWND window);

/// One line for each window on a dialog: its kind, place and state, and what it holds.
/// @param captions whether with what labels and buttons say.
std::vector<std::string> lookOf(HWND dialog, bool captions = true);

} // namespace korvane::test
