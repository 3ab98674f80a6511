// Owners of what is drawn with.
#pragma once

#include "framework/com/Platform.h"

#include <memory>
#include <type_traits>

namespace korvane::host
{

struct DeleteGdiObject
{
    void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};

/// A font, bitmap, brush or pen.
template <class Handle> using GdiObject = std::unique_ptr<std::remove_pointer_t<Handle>, DeleteGdiObject>;

struct DeleteContext
{
    void operator()(HDC context) const noexcept { DeleteDC(context); }
};

/// A device context in memory.
using MemoryContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

} // namespace korvane::host
