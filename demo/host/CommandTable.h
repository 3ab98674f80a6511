// The commands that the host offers: one line each.
#pragma once

#include "framework/com/Platform.h"

#include <span>
#include <string>

namespace korvane::host
{

struct CommandEntry
{
    const wchar_t* menu;    ///< the menu that it stands in
    const wchar_t* caption; ///< its text there
    ACCEL key;              ///< modifiers and virtual key; 0 for none
    const wchar_t* keyName; ///< as the menu shows the key
    const wchar_t* progId;  ///< class of the command
    long operation;         ///< operation code
    /// The operand that takes the id of what is selected, and tells afterwards what to select.
    const wchar_t* subject;
};

std::span<const CommandEntry> commandTable() noexcept;

/// The text of the menu item, with its key.
std::wstring menuText(const CommandEntry& entry);

// Menu items and keys tell their entry by number.
int idOf(const CommandEntry& entry) noexcept;
/// Null for a number that no entry has.
const CommandEntry* entryOf(int id) noexcept;

} // namespace korvane::host
