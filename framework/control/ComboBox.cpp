#include "framework/control/ComboBox.h"

#include "framework/control/DialogWindow.h"

namespace korvane
{

namespace
{

/// How far the list drops down, in twips.
constexpr float listHeight = 2400;

} // namespace

constexpr ComboBox::Messages ComboBox::messages{.insert = CB_INSERTSTRING,
                                                .setData = CB_SETITEMDATA,
                                                .data = CB_GETITEMDATA,
                                                .count = CB_GETCOUNT,
                                                .selected = CB_GETCURSEL,
                                                .textLength = CB_GETLBTEXTLEN,
                                                .text = CB_GETLBTEXT};

HWND ComboBox::createWindow(HWND parent, int id)
{
    const DWORD kind = kind_ == Kind::edit ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST;
    return makeWindow(parent, id, L"ComboBox", WS_TABSTOP | WS_VSCROLL | kind, 0);
}

/// Where a text is typed, it is typed in a box of its own.
HWND ComboBox::keyWindow() const noexcept
{
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof parts;
    return kind_ == Kind::edit && GetComboBoxInfo(window(), &parts) ? parts.hwndItem : window();
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

void ComboBox::Clear()
{
    settingText_ = true;
    send(CB_RESETCONTENT);
    settingText_ = false;
}

void ComboBox::ClearList()
{
    const std::wstring text = Text();
    const LRESULT selected = send(CB_GETEDITSEL);
    Clear();
    setText(text);
    send(CB_SETEDITSEL, 0, MAKELPARAM(LOWORD(selected), HIWORD(selected)));
}

void ComboBox::setListIndex(int index) noexcept
{
    settingText_ = true;
    send(CB_SETCURSEL, static_cast<WPARAM>(index));
    settingText_ = false;
}

void ComboBox::setText(std::wstring_view text)
{
    settingText_ = true;
    send(CB_SETCURSEL, static_cast<WPARAM>(-1));
    send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(std::wstring(text).c_str()));
    settingText_ = false;
}

void ComboBox::notify(WORD code)
{
    if (code == CBN_SELCHANGE)
        raise(onClick);
    else if (code == CBN_EDITCHANGE && !settingText_)
        raise(onChange);
    else if (code == CBN_SETFOCUS || code == CBN_KILLFOCUS)
        focusNotified(code == CBN_SETFOCUS);
}

} // namespace korvane
