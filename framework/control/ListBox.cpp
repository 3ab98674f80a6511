#include "framework/control/ListBox.h"

#include "framework/com/Boundary.h"
#include "framework/control/DialogWindow.h"

#include <algorithm>
#include <new>

namespace korvane
{

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

void ListBox::InsertItem(int index, const wchar_t* text, long itemData)
{
    const LRESULT made =
        sendItem(LB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text ? text : L""));
    if (made < 0)
        throw std::bad_alloc();
    sendItem(LB_SETITEMDATA, static_cast<WPARAM>(made), itemData);
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

int ListBox::ListCount() const noexcept
{
    return static_cast<int>(send(LB_GETCOUNT));
}

int ListBox::ListIndex() const noexcept
{
    return window() ? static_cast<int>(send(LB_GETCURSEL)) : LB_ERR;
}

void ListBox::setListIndex(int index) const noexcept
{
    send(LB_SETCURSEL, static_cast<WPARAM>(index));
}

long ListBox::ItemData(int index) const noexcept
{
    return static_cast<long>(sendItem(LB_GETITEMDATA, static_cast<WPARAM>(index)));
}

std::wstring ListBox::List(int index) const
{
    const auto item = static_cast<WPARAM>(index);
    const LRESULT length = sendItem(LB_GETTEXTLEN, item);
    std::wstring text(length > 0 ? static_cast<std::size_t>(length) : 0, L'\0');
    if (!text.empty())
        sendItem(LB_GETTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    return text;
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
