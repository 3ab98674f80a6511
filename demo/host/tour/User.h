// The hands of the tour: keystrokes and mouse moves as they come from real devices.
#pragma once

#include "framework/com/Platform.h"

#include <initializer_list>
#include <string_view>
#include <vector>

namespace korvane::host
{

/// The keystrokes that give a text on the current keyboard layout; characters that no key gives are sent as such.
std::vector<INPUT> keystrokesFor(std::wstring_view text);

class User
{
public:
    /// Presses keys together, for example VK_MENU and 'G', and releases them.
    static void press(std::initializer_list<WORD> keys);
    static void type(std::wstring_view text);

    /// Moves the mouse to a place on the screen, given in pixels.
    static void moveTo(POINT place);
    static void click(int times = 1);
};

} // namespace korvane::host
