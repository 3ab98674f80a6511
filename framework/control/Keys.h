// The keys of a control, which its owner sees before the control itself does.
#pragma once

#include "framework/com/Platform.h"

namespace korvane
{

class Control;

/// The keys that are held down with another one, as control sites are told them.
enum KeyModifier : DWORD
{
    shiftKey = 1,
    controlKey = 2,
    altKey = 4
};

/// A sum of the keys that are held down now.
DWORD keyModifiers() noexcept;

/// Asks a control for each key that goes to its window, or to the part of it that has the focus, whether it takes it,
/// and tells it when the focus comes and goes.
void watchKeys(HWND window, const Control& control) noexcept;

} // namespace korvane
