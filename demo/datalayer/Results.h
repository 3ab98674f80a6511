// Arguments that take a text in and give another one out.
#pragma once

#include "framework/com/Bstr.h"

#include <utility>

namespace korvane::store
{

/// Puts a text in the place of the caller's. Where there are several, they are made before the first one is given, so
/// that a call that fails has changed nothing.
inline void give(BSTR* place, Bstr text) noexcept
{
    const auto replaced = Bstr::adopt(std::exchange(*place, text.detach()));
}

} // namespace korvane::store
