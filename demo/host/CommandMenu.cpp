#include "demo/host/CommandMenu.h"

#include "framework/com/Call.h"

#include <cwchar>
#include <vector>

namespace korvane::host
{

namespace
{

void require(BOOL succeeded)
{
    if (!succeeded)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

HMENU addMenu(HMENU bar, const wchar_t* caption)
{
    const HMENU menu = CreatePopupMenu();
    require(menu != nullptr);
    require(AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), caption));
    return menu;
}

// In the library's string table.
constexpr long textFile = 1600;
constexpr long textExit = 1603;
constexpr long textZoomIn = 40010;
constexpr long textZoomOut = 40011;
constexpr long textToday = 40012;

struct ViewItem
{
    long textId; ///< 0 for a text of the host's own
    const wchar_t* text;
    const wchar_t* keyName;
    MenuItem id;
    ACCEL key;
};

constexpr ViewItem viewItems[] = {
    {textZoomIn, L"", L"Ctrl++", menuZoomIn, {FVIRTKEY | FCONTROL, VK_OEM_PLUS, menuZoomIn}},
    {textZoomOut, L"", L"Ctrl+-", menuZoomOut, {FVIRTKEY | FCONTROL, VK_OEM_MINUS, menuZoomOut}},
    {textToday, L"", L"Ctrl+T", menuToday, {FVIRTKEY | FCONTROL, 'T', menuToday}},
    {0, L"Groups or &schedule", L"F6", menuOtherPart, {FVIRTKEY, VK_F6, menuOtherPart}},
};

} // namespace

HMENU createMenuBar(const ComPtr<IResources>& resources)
{
    const auto text = [&](long id) {
        return std::wstring(fetch(resources, &IResources::GetString, id).view());
    };
    const HMENU bar = CreateMenu();
    require(bar != nullptr);
    HMENU menu = addMenu(bar, text(textFile).c_str());
    addMenu(menu, L"&Log in as");
    require(AppendMenuW(menu, MF_SEPARATOR, 0, nullptr));
    require(AppendMenuW(menu, MF_STRING, menuExit, (text(textExit) + L"\tAlt+F4").c_str()));

    // Commands of one menu stand together in the table.
    const wchar_t* caption = L"";
    for (const CommandEntry& entry : commandTable())
    {
        if (std::wcscmp(caption, entry.menu) != 0)
            menu = addMenu(bar, caption = entry.menu);
        require(AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(idOf(entry)), menuText(entry).c_str()));
    }

    menu = addMenu(bar, L"&View");
    for (const ViewItem& item : viewItems)
    {
        const std::wstring shown = item.textId == 0 ? item.text : text(item.textId);
        require(AppendMenuW(menu, MF_STRING, item.id, (shown + L'\t' + item.keyName).c_str()));
    }
    addMenu(menu, L"&Language");
    return bar;
}

HMENU accountMenu(HMENU bar) noexcept
{
    return GetSubMenu(GetSubMenu(bar, 0), 0);
}

HMENU languageMenu(HMENU bar) noexcept
{
    const HMENU view = GetSubMenu(bar, GetMenuItemCount(bar) - 1);
    return GetSubMenu(view, GetMenuItemCount(view) - 1);
}

HMENU menuWith(HMENU bar, const CommandEntry& entry) noexcept
{
    for (int at = 0; at < GetMenuItemCount(bar); ++at)
        if (GetMenuState(GetSubMenu(bar, at), static_cast<UINT>(idOf(entry)), MF_BYCOMMAND) !=
            static_cast<UINT>(-1))
            return GetSubMenu(bar, at);
    return nullptr;
}

Keys createKeys(Part part)
{
    std::vector<ACCEL> keys;
    for (const CommandEntry& entry : commandTable())
        if (entry.key.key != 0 && entry.countsIn(part))
            keys.push_back({entry.key.fVirt, entry.key.key, static_cast<WORD>(idOf(entry))});
    for (const ViewItem& item : viewItems)
        keys.push_back(item.key);
    // Plus and minus of the number block.
    keys.push_back({FVIRTKEY | FCONTROL, VK_ADD, menuZoomIn});
    keys.push_back({FVIRTKEY | FCONTROL, VK_SUBTRACT, menuZoomOut});
    return Keys(CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
}

} // namespace korvane::host
