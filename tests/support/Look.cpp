#include "tests/support/Look.h"

#include "tests/support/ComRules.h"
#include "tests/support/Container.h"

#include <commctrl.h>

#include <functional>

namespace korvane::test
{

namespace
{

LRESULT ask(HWND window, UINT message, WPARAM first = 0, LPARAM second = 0)
{
    return SendMessageW(window, message, first, second);
}

std::string numbers(std::initializer_list<LRESULT> values)
{
    std::string result;
    for (const LRESULT value : values)
        result += ' ' + std::to_string(value);
    return result;
}

std::string ofList(HWND list)
{
    std::string result = numbers({ask(list, LB_GETCURSEL), ask(list, LB_GETTOPINDEX)});
    for (const std::wstring& item : items(list))
        result += ", " + narrow(item);
    return result;
}

std::string ofTree(HWND tree)
{
    std::string result;
    const auto next = [tree](WPARAM relation, LPARAM from) {
        return ask(tree, TVM_GETNEXTITEM, relation, from);
    };
    const std::function<void(LPARAM)> add = [&](LPARAM item) {
        for (; item != 0; item = next(TVGN_NEXT, item))
        {
            wchar_t text[80]{};
            TVITEMW node{};
            node.mask = TVIF_TEXT | TVIF_STATE;
            node.stateMask = TVIS_STATEIMAGEMASK | TVIS_SELECTED | TVIS_EXPANDED;
            node.hItem = reinterpret_cast<HTREEITEM>(item);
            node.pszText = text;
            node.cchTextMax = 80;
            ask(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
            result += ", " + narrow(text) + numbers({static_cast<LRESULT>(node.state & node.stateMask)});
            if (item == next(TVGN_FIRSTVISIBLE, 0))
                result += " first in sight";
            add(next(TVGN_CHILD, item));
        }
    };
    add(next(TVGN_ROOT, 0));
    return result;
}

std::string ofPicker(HWND picker)
{
    SYSTEMTIME time{};
    ask(picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
    return numbers({time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond});
}

std::string heldBy(HWND window, const std::wstring& windowClass)
{
    if (windowClass == L"ListBox")
        return ofList(window);
    if (windowClass == L"ComboBox")
        return numbers({ask(window, CB_GETCOUNT), ask(window, CB_GETCURSEL)});
    if (windowClass == L"Edit")
        return numbers({ask(window, EM_GETSEL), ask(window, EM_GETFIRSTVISIBLELINE)});
    if (windowClass == L"Button")
        return numbers({ask(window, BM_GETCHECK)});
    if (windowClass == WC_TREEVIEWW)
        return ofTree(window);
    if (windowClass == DATETIMEPICK_CLASSW)
        return ofPicker(window);
    return {};
}

BOOL CALLBACK note(HWND window, LPARAM parameter)
{
    reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    return TRUE;
}

} // namespace

std::vector<HWND> windowsOn(HWND dialog)
{
    std::vector<HWND> found;
    EnumChildWindows(dialog, note, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::wstring classOf(HWND window)
{
    wchar_t name[64];
    GetClassNameW(window, name, 64);
    return name;
}

std::vector<std::string> lookOf(HWND dialog, bool captions)
{
    std::vector<std::string> look;
    for (const HWND window : windowsOn(dialog))
    {
        const std::wstring windowClass = classOf(window);
        RECT place{};
        GetWindowRect(window, &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        std::string line = narrow(windowClass) + numbers({place.left, place.top, place.right, place.bottom});
        if ((GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) == 0)
            line += " hidden";
        if (!IsWindowEnabled(window))
            line += " disabled";
        if (captions ||
            (windowClass != L"Static" && windowClass != L"Button" && windowClass != L"KorvaneGrid"))
            line += " \"" + narrow(Container::text(window)) + '"';
        look.push_back(line + heldBy(window, windowClass));
    }
    return look;
}

} // namespace korvane::test
