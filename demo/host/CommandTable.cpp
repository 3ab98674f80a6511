#include "demo/host/CommandTable.h"

#include <iterator>

namespace korvane::host
{

namespace
{

constexpr int firstId = 1000; // clear of the window's own items

constexpr const wchar_t* groups = L"&Groups";
constexpr const wchar_t* activities = L"&Activities";
constexpr const wchar_t* editGroups = L"KorvaneDlg.EditGroups";
constexpr const wchar_t* editEvents = L"KorvaneDlg.EditEvents";
constexpr const wchar_t* moveEvents = L"KorvaneDlg.MoveEvents";

enum Operation : long
{
    addition = 1,
    deletion = 2,
    change = 3
};

enum MoveOperation : long
{
    move = 3,
    copy = 4
};

enum Index
{
    indexNew = 3,
    indexChange = 4,
    indexMove = 6,
    indexCopy = 7
};

// clang-format off
constexpr CommandEntry table[] = {
    {groups,     L"&New...",    {FVIRTKEY | FCONTROL, 'N', 0}, L"Ctrl+N",             editGroups, addition, Target::group},
    {groups,     L"&Rename...", {FVIRTKEY, VK_F2, 0},          L"F2",                 editGroups, change,   Target::group},
    {groups,     L"&Delete...", {FVIRTKEY, VK_DELETE, 0},      L"Del",                editGroups, deletion, Target::group},
    {activities, L"&New...",    {FVIRTKEY, VK_INSERT, 0},      L"Ins",                editEvents, addition, Target::slot},
    {activities, L"&Change...", {FVIRTKEY, VK_RETURN, 0},      L"Enter",              editEvents, change,   Target::bar},
    {activities, L"&Delete",    {FVIRTKEY, VK_DELETE, 0},      L"Del",                editEvents, deletion, Target::lostBar},
    {activities, L"&Move",      {FVIRTKEY | FCONTROL, 'M', 0}, L"Ctrl+M",             moveEvents, move,     Target::movingBar},
    {activities, L"C&opy",      {FVIRTKEY | FCONTROL | FSHIFT, 'M', 0}, L"Ctrl+Shift+M", moveEvents, copy,  Target::movingBar},
};
// clang-format on

} // namespace

std::span<const CommandEntry> commandTable() noexcept
{
    return table;
}

std::wstring menuText(const CommandEntry& entry)
{
    std::wstring text = entry.caption;
    if (entry.key.key != 0)
        text += std::wstring(1, L'\t') + entry.keyName;
    return text;
}

int idOf(const CommandEntry& entry) noexcept
{
    return firstId + static_cast<int>(&entry - table);
}

const CommandEntry* entryOf(int id) noexcept
{
    const int index = id - firstId;
    return index >= 0 && index < static_cast<int>(std::size(table)) ? &table[index] : nullptr;
}

const CommandEntry& newActivity() noexcept
{
    return table[indexNew];
}

const CommandEntry& changeActivity() noexcept
{
    return table[indexChange];
}

const CommandEntry& moveActivity(bool copies) noexcept
{
    return table[copies ? indexCopy : indexMove];
}

} // namespace korvane::host
