#include "framework/control/ListBox.h"

#include <new>

namespace korvane
{

HWND ListBox::createWindow(HWND parent, int id)
{
    return makeWindow(parent, id, L"ListBox", WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                      WS_EX_CLIENTEDGE);
}

void ListBox::AddItem(BSTR text, long itemData)
{
    const LRESULT index = send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text ? text : L""));
    if (index < 0)
        throw std::bad_alloc();
    send(LB_SETITEMDATA, static_cast<WPARAM>(index), itemData);
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

long ListBox::ItemData(int index) const noexcept
{
    return static_cast<long>(send(LB_GETITEMDATA, static_cast<WPARAM>(index)));
}

std::wstring ListBox::List(int index) const
{
    const auto item = static_cast<WPARAM>(index);
    const LRESULT length = send(LB_GETTEXTLEN, item);
    std::wstring text(length > 0 ? static_cast<std::size_t>(length) : 0, L'\0');
    if (!text.empty())
        send(LB_GETTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    return text;
}

void ListBox::notify(WORD code)
{
    if (code == LBN_SELCHANGE)
        raise(onClick);
    else if (code == LBN_DBLCLK)
        raise(onDblClick);
    else if (code == LBN_SETFOCUS || code == LBN_KILLFOCUS)
        focusNotified(code == LBN_SETFOCUS);
}

} // namespace korvane
