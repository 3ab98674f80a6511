#include "tests/activities/ActivityUser.h"

#include <cstring>

namespace korvane::test
{

HWND ActivityUser::label(const wchar_t* caption) const
{
    for (int index = 0;; ++index)
    {
        const HWND found = container.control(L"Static", index);
        if (!found || Container::text(found) == caption)
            return found;
    }
}

HWND ActivityUser::swatch() const
{
    for (int index = 0;; ++index)
    {
        const HWND found = container.control(L"Static", index);
        if (!found || (GetWindowLongW(found, GWL_STYLE) & SS_TYPEMASK) == SS_OWNERDRAW)
            return found;
    }
}

void ActivityUser::setTime(HWND picker, DATE value)
{
    SYSTEMTIME time{};
    VariantTimeToSystemTime(value, &time);
    SendMessageW(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
    // The platform tells of the user's changes only: told here as it does.
    NMDATETIMECHANGE change{};
    change.nmhdr = {picker, static_cast<UINT_PTR>(GetDlgCtrlID(picker)),
                    static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.dwFlags = GDT_VALID;
    change.st = time;
    SendMessageW(GetParent(picker), WM_NOTIFY, change.nmhdr.idFrom, reinterpret_cast<LPARAM>(&change));
}

DATE ActivityUser::timeOf(HWND picker)
{
    SYSTEMTIME time{};
    SendMessageW(picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
    DATE value = 0;
    SystemTimeToVariantTime(&time, &value);
    return value;
}

std::wstring ActivityUser::nodeText(HTREEITEM item) const
{
    wchar_t text[80]{};
    TVITEMW query{};
    query.mask = TVIF_TEXT;
    query.hItem = item;
    query.pszText = text;
    query.cchTextMax = 80;
    SendMessageW(tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&query));
    return text;
}

bool ActivityUser::nodeChecked(HTREEITEM item) const
{
    return (SendMessageW(tree(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_STATEIMAGEMASK) &
            TVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
}

RECT ActivityUser::nodePlace(HTREEITEM item) const
{
    RECT place{};
    std::memcpy(&place, &item, sizeof(void*)); // the node goes in where its place comes out
    if (!SendMessageW(tree(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place)))
        return {};
    return place;
}

HTREEITEM ActivityUser::next(WPARAM relation, HTREEITEM from) const
{
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree(), TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(from)));
}

std::vector<std::wstring> ActivityUser::treeLines() const
{
    std::vector<std::wstring> lines;
    const auto line = [&](HTREEITEM item, const wchar_t* indent) {
        lines.push_back(indent + std::wstring(nodeChecked(item) ? L"[x] " : L"[ ] ") + nodeText(item));
    };
    for (auto* group = next(TVGN_ROOT); group; group = next(TVGN_NEXT, group))
    {
        line(group, L"");
        for (auto* name = next(TVGN_CHILD, group); name; name = next(TVGN_NEXT, name))
            line(name, L"  ");
    }
    return lines;
}

void ActivityUser::retype(HWND box, const wchar_t* text)
{
    SetFocus(box);
    SendMessageW(box, EM_SETSEL, 0, -1);
    container.type(text);
}

HTREEITEM ActivityUser::node(const wchar_t* text, const wchar_t* ofGroup) const
{
    for (auto* group = next(TVGN_ROOT); group; group = next(TVGN_NEXT, group))
    {
        if (!ofGroup && nodeText(group) == text)
            return group;
        if (ofGroup && nodeText(group) != ofGroup)
            continue;
        for (auto* name = next(TVGN_CHILD, group); name; name = next(TVGN_NEXT, name))
            if (nodeText(name) == text)
                return name;
    }
    return nullptr;
}

void ActivityUser::toggleByKey(HTREEITEM item)
{
    SetFocus(tree());
    TreeView_SelectItem(tree(), item);
    container.press(VK_SPACE);
}

void ActivityUser::toggleByMouse(HTREEITEM item)
{
    TreeView_EnsureVisible(tree(), item);
    const RECT place = nodePlace(item);
    const POINT box{place.left - 8, (place.top + place.bottom) / 2};
    Container::point(tree(), box);
    PostMessageW(tree(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(box.x, box.y));
    PostMessageW(tree(), WM_LBUTTONUP, 0, MAKELPARAM(box.x, box.y));
    container.pump();
}

void ActivityUser::setChecked(HTREEITEM item, bool checked) const
{
    TVITEMW change{};
    change.mask = TVIF_HANDLE | TVIF_STATE;
    change.hItem = item;
    change.stateMask = TVIS_STATEIMAGEMASK;
    change.state = INDEXTOSTATEIMAGEMASK(checked ? 2 : 1);
    SendMessageW(tree(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&change));
    // Not every implementation of the platform tells of a changed node: told here as its tree does.
    NMTVITEMCHANGE told{};
    told.hdr = {tree(), static_cast<UINT_PTR>(GetDlgCtrlID(tree())), static_cast<UINT>(TVN_ITEMCHANGEDW)};
    told.uChanged = TVIF_STATE;
    told.hItem = item;
    told.uStateNew = change.state;
    told.uStateOld = INDEXTOSTATEIMAGEMASK(checked ? 1 : 2);
    SendMessageW(GetParent(tree()), WM_NOTIFY, told.hdr.idFrom, reinterpret_cast<LPARAM>(&told));
}

} // namespace korvane::test
