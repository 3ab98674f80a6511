// The commands that the host offers: one line each.
#pragma once

#include "framework/com/Platform.h"

#include <span>
#include <string>
#include <string_view>

namespace korvane::host
{

/// The part of the window that has the keyboard: keys mean something of their own there.
enum class Part
{
    groups,
    schedule
};

/// What a command works on.
enum class Target
{
    group,     ///< the one that is selected in the list
    members,   ///< those of the selected group
    order,     ///< their order, in a window that the user makes as large as he likes
    resource,  ///< the one that the schedule's cursor is with, as a member of the group
    addressee, ///< the same one by itself
    reader,    ///< the resource of the account that is logged in
    slot,      ///< the one in the schedule that the cursor is in
    bar,       ///< the selected one
    lostBar,   ///< the selected one; without a dialog, for it goes
    movingBar  ///< the selected one, and where it is dropped
};

struct CommandEntry
{
    const wchar_t* name = L"";    ///< that the program itself calls it by
    const wchar_t* menu = L"";    ///< the menu that it stands in
    const wchar_t* caption = L""; ///< its text there
    ACCEL key = {};               ///< modifiers and virtual key; 0 for none
    const wchar_t* keyName = L""; ///< as the menu shows the key
    const wchar_t* progId = L"";  ///< class of the command
    long operation = 0;           ///< operation code
    Target target = Target::group;

    bool isResizable() const noexcept { return target == Target::order; }
    bool worksOnActivity() const noexcept { return target >= Target::slot; }

    /// Whether its key counts in a part of the window: that of a reader's command does wherever he is.
    bool countsIn(Part part) const noexcept
    {
        return target == Target::reader || (target == Target::group) == (part == Part::groups);
    }
};

std::span<const CommandEntry> commandTable() noexcept;

/// The text of the menu item, with its key.
std::wstring menuText(const CommandEntry& entry);

// Menu items and keys tell their entry by number.
int idOf(const CommandEntry& entry) noexcept;
/// Null for a number that no entry has.
const CommandEntry* entryOf(int id) noexcept;

// The names of those that the window asks for itself, or whose menu it shows.
inline constexpr const wchar_t* editResource = L"Resource.Edit";
inline constexpr const wchar_t* newActivity = L"Activity.New";
inline constexpr const wchar_t* changeActivity = L"Activity.Change";
inline constexpr const wchar_t* moveActivity = L"Activity.Move";
inline constexpr const wchar_t* copyActivity = L"Activity.Copy";

/// Throws when no entry has the name.
const CommandEntry& entryNamed(std::wstring_view name);

} // namespace korvane::host
