#include "demo/host/tour/Captions.h"

#include "demo/host/tour/Screen.h"
#include "framework/com/Call.h"

#include <commctrl.h>
#include <oleacc.h>

namespace korvane::host
{

namespace
{

LONG_PTR kindOf(HWND button)
{
    return GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK;
}

RECT placeOn(HWND dialog, HWND part)
{
    RECT place{};
    GetWindowRect(part, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

/// Pixels that a text takes in the font of a window.
SIZE extentOf(HWND window, const std::wstring& text)
{
    RECT place{};
    const HDC context = GetDC(window);
    const HGDIOBJ former =
        SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    DrawTextW(context, text.c_str(), -1, &place, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(context, former);
    ReleaseDC(window, context);
    return {place.right, place.bottom};
}

/// Whether a caption has the room for its text, and the mark or the edges beside it.
bool hasRoom(HWND part, const RECT& place)
{
    const std::wstring text = textOf(part);
    if (text.empty())
        return true;
    const SIZE extent = extentOf(part, text);
    const LONG mark = GetSystemMetrics(SM_CXMENUCHECK) + 4;
    const LONG edges = 2 * (GetSystemMetrics(SM_CXEDGE) + GetSystemMetrics(SM_CXBORDER));
    const LONG besides = isOfClass(part, L"Static") ? 0 : isCheckable(part) ? mark : edges;
    return extent.cx + besides <= place.right - place.left && extent.cy <= place.bottom - place.top;
}

/// A strip of tabs that do not all fit shows arrows in place of the last ones.
bool showsAllTabs(HWND strip)
{
    RECT client{};
    RECT last{};
    GetClientRect(strip, &client);
    const LRESULT count = SendMessageW(strip, TCM_GETITEMCOUNT, 0, 0);
    SendMessageW(strip, TCM_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
    return last.right <= client.right;
}

/// The headings of a grid are no windows: what they say, and where, is what assistive technology is told.
bool showsAllHeadings(HWND grid)
{
    ComPtr<IAccessible> table;
    require(AccessibleObjectFromWindow(grid, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                       table.putVoid()));
    const auto row = fetch(table, &IAccessible::get_accChild, Variant(1L).get()).as<IAccessible>();
    const long columns = fetch(row, &IAccessible::get_accChildCount);
    for (long column = 1; column <= columns; ++column)
    {
        long left = 0;
        long top = 0;
        long width = 0;
        long height = 0;
        const VARIANT heading = Variant(column).get();
        call(row, &IAccessible::accLocation, &left, &top, &width, &height, heading);
        const SIZE extent =
            extentOf(grid, std::wstring(fetch(row, &IAccessible::get_accName, heading).view()));
        if (extent.cx > width || extent.cy > height)
            return false;
    }
    return true;
}

bool isReadable(HWND part, const RECT& place)
{
    if (isOfClass(part, WC_TABCONTROLW))
        return showsAllTabs(part);
    if (isOfClass(part, L"KorvaneGrid"))
        return showsAllHeadings(part);
    return !isCaption(part) || hasRoom(part, place);
}

} // namespace

std::vector<HWND> partsOf(HWND dialog)
{
    std::vector<HWND> parts;
    for (HWND part = GetWindow(dialog, GW_CHILD); part; part = GetWindow(part, GW_HWNDNEXT))
        if (IsWindowVisible(part))
            parts.push_back(part);
    return parts;
}

bool isCaption(HWND part)
{
    const bool showsPicture = (GetWindowLongPtrW(part, GWL_STYLE) & BS_ICON) != 0;
    return isOfClass(part, L"Static") ||
           (isOfClass(part, L"Button") && kindOf(part) != BS_OWNERDRAW && !showsPicture);
}

bool isCheckable(HWND part)
{
    return isOfClass(part, L"Button") &&
           (kindOf(part) == BS_AUTOCHECKBOX || kindOf(part) == BS_AUTORADIOBUTTON);
}

std::vector<std::wstring> unreadableOn(HWND dialog)
{
    std::vector<std::wstring> found;
    RECT all{};
    GetClientRect(dialog, &all);
    const auto parts = partsOf(dialog);
    for (const HWND part : parts)
    {
        const RECT own = placeOn(dialog, part);
        RECT common{};
        if (!UnionRect(&common, &own, &all) || !EqualRect(&common, &all))
            found.push_back(textOf(part) + L" reaches beyond the dialog");
        if (!isReadable(part, own))
            found.push_back(textOf(part) + L" is cut off");
        for (const HWND other : parts)
        {
            const RECT theirs = placeOn(dialog, other);
            if (isCaption(part) && other != part && IntersectRect(&common, &own, &theirs))
                found.push_back(textOf(part) + L" is covered by " + textOf(other));
        }
    }
    return found;
}

wchar_t accessKeyOf(const std::wstring& caption)
{
    const auto at = caption.find(L'&');
    wchar_t key = at == std::wstring::npos ? L'\0' : caption.at(at + 1);
    CharUpperBuffW(&key, 1);
    return key;
}

} // namespace korvane::host
