#include "framework/control/ComboBox.h"

#include "framework/control/DialogWindow.h"

#include <new>

namespace korvane
{

namespace
{

/// How far the list drops down, in twips.
constexpr float listHeight = 2400;

} // namespace

HWND ComboBox::createWindow(HWND parent, int id)
{
    return makeWindow(parent, id, L"ComboBox", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0);
}

/// The platform counts the list as part of the window.
float ComboBox::hiddenHeight() const noexcept
{
    return listHeight;
}

/// The font alone would decide how high the box is.
void ComboBox::placed()
{
    if (!window())
        return;
    const Place own = placeOnDialog();
    const int wanted = toPixels(own.bottom(), dialog_.dpi()) - toPixels(own.top, dialog_.dpi());
    auto field = static_cast<int>(send(CB_GETITEMHEIGHT, static_cast<WPARAM>(-1)));
    // Platforms differ on how much of the box is field: what the first setting gives says so.
    for (int attempts = 0; attempts < 2; ++attempts)
    {
        const int missing = wanted - height();
        if (missing == 0 || field + missing <= 0)
            return;
        field += missing;
        send(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
    }
}

int ComboBox::height() const noexcept
{
    RECT box{};
    GetWindowRect(window(), &box);
    return static_cast<int>(box.bottom - box.top);
}

void ComboBox::AddItem(BSTR text, long itemData)
{
    const LRESULT index = send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text ? text : L""));
    if (index < 0)
        throw std::bad_alloc();
    send(CB_SETITEMDATA, static_cast<WPARAM>(index), itemData);
}

void ComboBox::Clear()
{
    send(CB_RESETCONTENT);
}

int ComboBox::ListCount() const noexcept
{
    return static_cast<int>(send(CB_GETCOUNT));
}

int ComboBox::ListIndex() const noexcept
{
    return window() ? static_cast<int>(send(CB_GETCURSEL)) : CB_ERR;
}

void ComboBox::setListIndex(int index) const noexcept
{
    send(CB_SETCURSEL, static_cast<WPARAM>(index));
}

long ComboBox::ItemData(int index) const noexcept
{
    return static_cast<long>(send(CB_GETITEMDATA, static_cast<WPARAM>(index)));
}

void ComboBox::notify(WORD code)
{
    if (code == CBN_SELCHANGE)
        raise(onClick);
    else if (code == CBN_SETFOCUS || code == CBN_KILLFOCUS)
        focusNotified(code == CBN_SETFOCUS);
}

} // namespace korvane
