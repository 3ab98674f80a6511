// The menu bar and the keys of the window, made from the table of commands.
#pragma once

#include "framework/com/Platform.h"

#include <memory>
#include <type_traits>

namespace korvane::host
{

constexpr int menuExit = 100;

/// The menu bar; it belongs to the window that it is given to.
HMENU createMenuBar();

struct DestroyKeys
{
    void operator()(HACCEL keys) const noexcept { DestroyAcceleratorTable(keys); }
};
using Keys = std::unique_ptr<std::remove_pointer_t<HACCEL>, DestroyKeys>;

Keys createKeys();

} // namespace korvane::host
