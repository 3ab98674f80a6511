#include "demo/host/CommandTable.h"

#include "framework/com/Failure.h"

#include <algorithm>
#include <iterator>

namespace korvane::host
{

namespace
{

constexpr int firstId = 1000; // clear of the window's own items

constexpr const wchar_t* groups = L"&Groups";
constexpr const wchar_t* activities = L"&Activities";
constexpr const wchar_t* resources = L"&Resources";
constexpr const wchar_t* types = L"Activity &types";
constexpr const wchar_t* arrange = L"Arra&nge";
constexpr const wchar_t* editGroups = L"KorvaneDlg.EditGroups";
constexpr const wchar_t* editNames = L"KorvaneDlg.EditNames";
constexpr const wchar_t* editTypes = L"KorvaneDlg.EditTypes";
constexpr const wchar_t* arrangeGroups = L"KorvaneDlg.ArrangeGroups";
constexpr const wchar_t* arrangeNames = L"KorvaneDlg.ArrangeNames";
constexpr const wchar_t* arrangeTypes = L"KorvaneDlg.ArrangeTypes";
constexpr const wchar_t* infoMessage = L"KorvaneDlg.InfoMessage";
constexpr const wchar_t* showMessage = L"KorvaneDlg.ShowMessage";
constexpr const wchar_t* editEvents = L"KorvaneDlg.EditEvents";
constexpr const wchar_t* moveEvents = L"KorvaneDlg.MoveEvents";

enum Operation : long
{
    addition = 1,
    deletion = 2,
    change = 3
};

enum MessageOperation : long
{
    leaveMessage = 1,
    readMessages = 2, // the viewer deletes what has been read
    keepInfo = 3
};

enum MoveOperation : long
{
    move = 3,
    copy = 4
};

// clang-format off
constexpr CommandEntry table[] = {
    {L"Group.New",    groups,     L"&New...",    {FVIRTKEY | FCONTROL, 'N', 0}, L"Ctrl+N", editGroups, addition, Target::group},
    {L"Group.Rename", groups,     L"&Rename...", {FVIRTKEY, VK_F2, 0},          L"F2",     editGroups, change,   Target::group},
    {L"Group.Delete", groups,     L"&Delete...", {FVIRTKEY, VK_DELETE, 0},      L"Del",    editGroups, deletion, Target::group},
    {L"Resource.New",    resources, L"&New...",               {}, L"", editNames, addition, Target::members},
    {editResource,       resources, L"&Edit...", {FVIRTKEY | FCONTROL, 'E', 0}, L"Ctrl+E", editNames, change, Target::resource},
    {L"Resource.Remove", resources, L"Remo&ve...",            {}, L"", editNames, deletion, Target::resource},
    {L"Message.Leave", resources, L"&Leave a message...", {FVIRTKEY | FCONTROL, 'L', 0}, L"Ctrl+L", infoMessage, leaveMessage, Target::addressee},
    {L"Message.Info",  resources, L"&Information...",     {FVIRTKEY | FCONTROL, 'I', 0}, L"Ctrl+I", infoMessage, keepInfo, Target::addressee},
    {L"Message.Read",  resources, L"&Read messages...",   {FVIRTKEY | FCONTROL, 'R', 0}, L"Ctrl+R", showMessage, readMessages, Target::reader},
    {L"Type.New",        types,     L"&New...",               {}, L"", editTypes, addition, Target::members},
    {L"Type.Edit",       types,     L"&Edit...",              {}, L"", editTypes, change, Target::members},
    {L"Type.Remove",     types,     L"&Remove...",            {}, L"", editTypes, deletion, Target::members},
    {L"Arrange.Groups",  arrange,   L"&Groups...",            {}, L"", arrangeGroups, change, Target::order},
    {L"Arrange.Names",   arrange,   L"&Resources of the group...", {}, L"", arrangeNames, change, Target::order},
    {L"Arrange.Types",   arrange,   L"Activity &types of the group...", {}, L"", arrangeTypes, change, Target::order},
    {newActivity,     activities, L"&New...",    {FVIRTKEY, VK_INSERT, 0},      L"Ins",    editEvents, addition, Target::slot},
    {changeActivity,  activities, L"&Change...", {FVIRTKEY, VK_RETURN, 0},      L"Enter",  editEvents, change,   Target::bar},
    {L"Activity.Delete", activities, L"&Delete", {FVIRTKEY, VK_DELETE, 0},      L"Del",    editEvents, deletion, Target::lostBar},
    {moveActivity,    activities, L"&Move",      {FVIRTKEY | FCONTROL, 'M', 0}, L"Ctrl+M", moveEvents, move,     Target::movingBar},
    {copyActivity,    activities, L"C&opy", {FVIRTKEY | FCONTROL | FSHIFT, 'M', 0}, L"Ctrl+Shift+M", moveEvents, copy, Target::movingBar},
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

const CommandEntry& entryNamed(std::wstring_view name)
{
    const auto* const found = std::find_if(std::begin(table), std::end(table),
                                           [&](const CommandEntry& entry) { return entry.name == name; });
    if (found == std::end(table))
        throw Failure(E_INVALIDARG, L"KorvaneHost", L"There is no command " + std::wstring(name) + L".");
    return *found;
}

} // namespace korvane::host
