// The menu bar and the keys of the window, made from the table of commands.
#pragma once

#include "demo/host/CommandTable.h"
#include "framework/com/ComPtr.h"

#include <KorvaneInterfaces.h>

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
    menuOtherPart,
    menuFirstLanguage = 200, ///< and one more for each language
    menuFirstAccount = 2000  ///< and one more for each account, behind all others
};

/// The menu bar, in the language of the resources as far as they have its texts. It belongs to the window that it is
/// given to.
HMENU createMenuBar(const ComPtr<IResources>& resources);

/// The menu of a bar for the accounts: empty until it is filled.
HMENU accountMenu(HMENU bar) noexcept;
/// The same for the languages.
HMENU languageMenu(HMENU bar) noexcept;

/// The menu of a bar that a command stands in.
HMENU menuWith(HMENU bar, const CommandEntry& entry) noexcept;

struct DestroyKeys
{
    void operator()(HACCEL keys) const noexcept { DestroyAcceleratorTable(keys); }
};
using Keys = std::unique_ptr<std::remove_pointer_t<HACCEL>, DestroyKeys>;

Keys createKeys(Part part);

} // namespace korvane::host
