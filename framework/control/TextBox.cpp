#include "framework/control/TextBox.h"

#include <utility>

namespace korvane
{

TextBox::TextBox(Surface surface, const Design& design, Kind kind, WPARAM limit)
    : Control(surface, design), kind_(kind), limit_(limit)
{
    if (kind == Kind::digits)
        onKeyPress = [](wchar_t character) {
            return character != VK_BACK && (character < L'0' || character > L'9');
        };
}

HWND TextBox::createWindow(HWND parent, int id)
{
    const bool isCell = kind_ == Kind::cell;
    const DWORD lines = ES_MULTILINE | ES_AUTOVSCROLL | (isCell ? WS_BORDER : WS_VSCROLL);
    const DWORD kind = isCell || kind_ == Kind::lines ? lines : ES_AUTOHSCROLL;
    const DWORD locking = locked_ ? ES_READONLY : 0;
    const HWND box =
        makeWindow(parent, id, L"Edit", WS_TABSTOP | kind | locking, isCell ? 0 : WS_EX_CLIENTEDGE);
    SendMessageW(box, EM_SETLIMITTEXT, limit_, 0);
    return box;
}

std::wstring TextBox::textValue() const
{
    return window() ? windowText() : Control::textValue();
}

/// A text that is set again leaves the selection.
void TextBox::setTextValue(std::wstring_view text)
{
    const bool isShown = text == textValue();
    text_ = text;
    if (!window() || isShown)
        return;
    settingText_ = true;
    SetWindowTextW(window(), text_.c_str());
    settingText_ = false;
}

std::pair<int, int> TextBox::selection() const noexcept
{
    DWORD start = 0;
    DWORD end = 0;
    send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {static_cast<int>(start), static_cast<int>(end - start)};
}

void TextBox::select(int start, int length) const noexcept
{
    send(EM_SETSEL, static_cast<WPARAM>(start), start + length);
    send(EM_SCROLLCARET);
}

void TextBox::insert(const std::wstring& text) const noexcept
{
    send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void TextBox::setLocked(bool locked) noexcept
{
    locked_ = locked;
    send(EM_SETREADONLY, locked);
}

/// Whether the text is another one than the owner knows, who knows it from now on.
bool TextBox::isChanged()
{
    const std::wstring known = std::exchange(text_, textValue());
    return known != text_;
}

void TextBox::notify(WORD code)
{
    switch (code)
    {
    case EN_CHANGE:
        if (settingText_)
            break;
        text_ = textValue();
        raise(onChange);
        break;
    case EN_SETFOCUS:
        focusNotified(true);
        raise(onGotFocus);
        break;
    case EN_KILLFOCUS:
        focusNotified(false);
        // Assistive technology changes a box of several lines without a notification.
        if (isChanged())
            raise(onChange);
        raise(onLostFocus);
        break;
    default:
        break;
    }
}

/// To its owner it is as if the user had left the box, which may keep the focus.
void TextBox::completeEdit()
{
    if (isChanged() && onChange)
        onChange();
    if (hasFocus() && onLostFocus)
        onLostFocus();
}

} // namespace korvane
