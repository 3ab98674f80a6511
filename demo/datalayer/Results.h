// Arguments that give results out, among them texts that also come in.
#pragma once

#include "framework/com/Boundary.h"
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

/// Throws E_POINTER where the place of a result is missing.
template <class... Results> void requireAll(Results*... results)
{
    (notNull(results), ...);
}

} // namespace korvane::store
