#include "demo/host/tour/Screen.h"

#include <commctrl.h>

#include <algorithm>

namespace korvane::host
{

namespace
{

constexpr DWORD patience = 120'000; // milliseconds; a machine may have much else to do first

using Visitor = std::function<bool(HWND)>; ///< false ends the enumeration

BOOL CALLBACK visit(HWND window, LPARAM visitor)
{
    return (*reinterpret_cast<const Visitor*>(visitor))(window);
}

GUITHREADINFO stateOf(HWND window)
{
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &state);
    return state;
}

} // namespace

bool isOfClass(HWND window, const wchar_t* className)
{
    wchar_t name[64];
    return GetClassNameW(window, name, ARRAYSIZE(name)) && lstrcmpiW(name, className) == 0;
}

Failure tourFailure(const std::wstring& reason)
{
    return {E_FAIL, L"Tour", reason};
}

LRESULT ask(HWND window, UINT message, WPARAM first, LPARAM second)
{
    DWORD_PTR answer = 0;
    if (!SendMessageTimeoutW(window, message, first, second, SMTO_NORMAL, patience, &answer))
        throw tourFailure(L"a window does not answer");
    return static_cast<LRESULT>(answer);
}

void waitFor(const std::wstring& what, const std::function<bool()>& isTheCase)
{
    const ULONGLONG end = GetTickCount64() + patience;
    while (!isTheCase())
    {
        if (GetTickCount64() > end)
            throw tourFailure(L"waited in vain until " + what);
        Sleep(10);
    }
}

HWND visibleWindow(const wchar_t* className, const wchar_t* title)
{
    HWND found = nullptr;
    const Visitor visitor = [&](HWND window) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        const bool wanted = process == GetCurrentProcessId() && IsWindowVisible(window) &&
                            isOfClass(window, className) && (!title || textOf(window) == title);
        if (wanted)
            found = window;
        return !wanted;
    };
    EnumWindows(&visit, reinterpret_cast<LPARAM>(&visitor));
    return found;
}

std::vector<HWND> visibleChildren(HWND parent, const wchar_t* className)
{
    std::vector<HWND> found;
    const Visitor visitor = [&](HWND window) {
        if (IsWindowVisible(window) && isOfClass(window, className))
            found.push_back(window);
        return true;
    };
    EnumChildWindows(parent, &visit, reinterpret_cast<LPARAM>(&visitor));
    return found;
}

HWND visibleChild(HWND parent, const wchar_t* className, const std::wstring& text)
{
    const auto children = visibleChildren(parent, className);
    const auto found =
        std::find_if(children.begin(), children.end(), [&](HWND child) { return textOf(child) == text; });
    return found == children.end() ? nullptr : *found;
}

std::wstring textOf(HWND window)
{
    wchar_t text[1024];
    return {text, static_cast<std::size_t>(
                      ask(window, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text)))};
}

std::vector<std::wstring> itemsOf(HWND listBox)
{
    std::vector<std::wstring> items(static_cast<std::size_t>(ask(listBox, LB_GETCOUNT)));
    for (std::size_t index = 0; index < items.size(); ++index)
    {
        items[index].resize(static_cast<std::size_t>(ask(listBox, LB_GETTEXTLEN, index)));
        ask(listBox, LB_GETTEXT, index, reinterpret_cast<LPARAM>(items[index].data()));
    }
    return items;
}

std::wstring itemOf(HWND listView, int row, int column)
{
    wchar_t text[256];
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = ARRAYSIZE(text);
    const LRESULT length =
        ask(listView, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return {text, static_cast<std::size_t>(length)};
}

int itemThatEndsWith(HMENU menu, const std::wstring& text)
{
    for (int index = 0; index < GetMenuItemCount(menu); ++index)
    {
        wchar_t item[128];
        GetMenuStringW(menu, static_cast<UINT>(index), item, ARRAYSIZE(item), MF_BYPOSITION);
        if (std::wstring(item).ends_with(text))
            return index;
    }
    return -1;
}

HWND focusIn(HWND window)
{
    return stateOf(window).hwndFocus;
}

bool isInMenu(HWND window)
{
    return (stateOf(window).flags & GUI_INMENUMODE) != 0;
}

POINT middleOf(const RECT& place)
{
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

POINT middleOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return middleOf(place);
}

POINT middleOf(HWND window, const RECT& part)
{
    POINT middle = middleOf(part);
    ClientToScreen(window, &middle);
    return middle;
}

RECT placeOfItem(HWND listBox, const std::wstring& item)
{
    const LRESULT index =
        ask(listBox, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(item.c_str()));
    if (index == LB_ERR)
        throw tourFailure(L"the list has no item \"" + item + L"\"");
    RECT place{};
    ask(listBox, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
    return place;
}

RECT placeOfRow(HWND listView, int row)
{
    RECT place{};
    place.left = LVIR_LABEL;
    if (!ask(listView, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place)))
        throw tourFailure(L"the list has no row " + std::to_wstring(row));
    return place;
}

} // namespace korvane::host
