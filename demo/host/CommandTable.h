// The commands that the host offers: one line each.
#pragma once

#include "framework/com/Platform.h"

#include <span>
#include <string>
#include <string_view>

namespace korvane::host
{

/// What a command works on.
enum class Target
{
    group,    ///< the one that is selected in the list
    slot,     ///< the one in the schedule that the cursor is in
    bar,      ///< the selected one
    lostBar,  ///< the selected one; without a dialog, for it goes
    movingBar ///< the selected one, and where it is dropped
};

struct CommandEntry
{
    const wchar_t* name;    ///< that the program itself calls it by
    const wchar_t* menu;    ///< the menu that it stands in
    const wchar_t* caption; ///< its text there
    ACCEL key;              ///< modifiers and virtual key; 0 for none
    const wchar_t* keyName; ///< as the menu shows the key
    const wchar_t* progId;  ///< class of the command
    long operation;         ///< operation code
    Target target;

    /// Its key counts in the schedule, or where the groups are.
    bool isOfSchedule() const noexcept { return target != Target::group; }
};

std::span<const CommandEntry> commandTable() noexcept;

/// The text of the menu item, with its key.
std::wstring menuText(const CommandEntry& entry);

// Menu items and keys tell their entry by number.
int idOf(const CommandEntry& entry) noexcept;
/// Null for a number that no entry has.
const CommandEntry* entryOf(int id) noexcept;

// The names of those that the mouse asks for, too.
inline constexpr const wchar_t* newActivity = L"Activity.New";
inline constexpr const wchar_t* changeActivity = L"Activity.Change";
inline constexpr const wchar_t* moveActivity = L"Activity.Move";
inline constexpr const wchar_t* copyActivity = L"Activity.Copy";

/// Throws when no entry has the name.
const CommandEntry& entryNamed(std::wstring_view name);

} // namespace korvane::host
