// The menu bar and the keys of the window, made from the table of commands.
#pragma once

#include "demo/host/CommandTable.h"

#include <memory>
#include <type_traits>

namespace korvane::host
{

/// The window's own items.
enum MenuItem
{
    menuExit = 100,
    menuZoomIn,
    menuZoomOut,
    menuToday,
    menuOtherPart
};

/// The menu bar; it belongs to the window that it is given to.
HMENU createMenuBar();

/// The menu of a bar that a command stands in.
HMENU menuWith(HMENU bar, const CommandEntry& entry) noexcept;

/// The part of the window that has the keyboard: keys mean something of their own there.
enum class Part
{
    groups,
    schedule
};

struct DestroyKeys
{
    void operator()(HACCEL keys) const noexcept { DestroyAcceleratorTable(keys); }
};
using Keys = std::unique_ptr<std::remove_pointer_t<HACCEL>, DestroyKeys>;

Keys createKeys(Part part);

} // namespace korvane::host
