#include "framework/control/ListBox.h"

#include "framework/com/Boundary.h"
#include "framework/control/DialogWindow.h"

#include <algorithm>

namespace korvane
{

constexpr ListBox::Messages ListBox::messages{.insert = LB_INSERTSTRING,
                                              .setData = LB_SETITEMDATA,
                                              .data = LB_GETITEMDATA,
                                              .count = LB_GETCOUNT,
                                              .selected = LB_GETCURSEL,
                                              .textLength = LB_GETTEXTLEN,
                                              .text = LB_GETTEXT};

HWND ListBox::createWindow(HWND parent, int id)
{
    const HWND window =
        makeWindow(parent, id, L"ListBox", WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                   WS_EX_CLIENTEDGE);
    if (onDrag)
        drag_.watch(window);
    return window;
}

void ListBox::drag(int target) const noexcept
{
    attempt([&] { raise([&] { onDrag(target); }); });
}

void ListBox::RemoveItem(int index) const noexcept
{
    sendItem(LB_DELETESTRING, static_cast<WPARAM>(index));
}

void ListBox::MoveItem(int from, int to)
{
    if (from == to || !window())
        return;
    UpdateWindow(window()); // what waits to be drawn is not lost below
    const LRESULT top = send(LB_GETTOPINDEX);
    const bool down = to > from;
    {
        const Filling filling(*this);
        // The copy comes first: where there is no memory for it, nothing is lost.
        InsertItem(down ? to + 1 : to, List(from).c_str(), ItemData(from));
        RemoveItem(down ? from : from + 1);
        send(LB_SETTOPINDEX, static_cast<WPARAM>(top));
    }
    ValidateRect(window(), nullptr);
    redraw(std::min(from, to), std::max(from, to));
    setListIndex(to);
}

/// Draws the rows of some items anew, as far as they can be seen.
void ListBox::redraw(int first, int last) const noexcept
{
    RECT whole{};
    GetClientRect(window(), &whole);
    RECT item{};
    for (int index = std::max(first, static_cast<int>(send(LB_GETTOPINDEX)));
         index <= last && item.bottom < whole.bottom; ++index)
        if (send(LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)) != LB_ERR)
            InvalidateRect(window(), &item, TRUE);
}

void ListBox::Clear()
{
    send(LB_RESETCONTENT);
}

void ListBox::setListIndex(int index) const noexcept
{
    send(LB_SETCURSEL, static_cast<WPARAM>(index));
}

void ListBox::notify(WORD code)
{
    if (code == LBN_SELCHANGE || code == LBN_SELCANCEL)
        raise(onClick);
    else if (code == LBN_DBLCLK)
        raise(onDblClick);
    else if (code == LBN_SETFOCUS || code == LBN_KILLFOCUS)
        focusNotified(code == LBN_SETFOCUS);
}

} // namespace korvane
