// How users compare texts.
#pragma once

#include "framework/com/Platform.h"

#include <string_view>

namespace korvane::store
{

/// Whether two texts differ in nothing but the case of their letters, of whatever script.
bool sameText(std::wstring_view left, std::wstring_view right) noexcept;

/// Whether a text shows nothing: it is empty, or made of blanks of whatever kind.
bool isBlank(std::wstring_view text) noexcept;

} // namespace korvane::store
