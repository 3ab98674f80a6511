#include "demo/host/CommandTable.h"

namespace korvane::host
{

namespace
{

constexpr int firstId = 1000; // clear of the window's own items

constexpr const wchar_t* groups = L"&Groups";
constexpr const wchar_t* editGroups = L"KorvaneDlg.EditGroups";
constexpr const wchar_t* groupId = L"GroupID";

enum Operation : long
{
    addition = 1,
    deletion = 2,
    change = 3
};

// clang-format off
constexpr CommandEntry table[] = {
    {groups, L"&New...",    {FVIRTKEY | FCONTROL, 'N', 0}, L"Ctrl+N", editGroups, addition, groupId},
    {groups, L"&Rename...", {FVIRTKEY, VK_F2, 0},          L"F2",     editGroups, change,   groupId},
    {groups, L"&Delete...", {FVIRTKEY, VK_DELETE, 0},      L"Del",    editGroups, deletion, groupId},
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

} // namespace korvane::host
