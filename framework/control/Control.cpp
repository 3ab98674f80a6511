#include "framework/control/Control.h"

#include "framework/com/Failure.h"
#include "framework/com/Module.h"
#include "framework/control/DialogWindow.h"
#include "framework/control/Frame.h"

#include <commctrl.h>

namespace korvane
{

Surface::Surface(Frame& ofFrame) noexcept : dialog(ofFrame.dialog()), frame(&ofFrame) {}

Control::Control(Surface surface, const Design& design, TextProperty textProperty)
    : dialog_(surface.dialog), frame_(surface.frame), name_(design.name), id_(design.id),
      textProperty_(textProperty), place_(design.place), text_(design.text), toolTip_(design.toolTip)
{
    dialog_.add(*this);
}

void Control::setPlace(const Place& place)
{
    place_ = place;
    dialog_.layoutChanged();
}

void Control::setLeft(float left)
{
    place_.left = left;
    dialog_.layoutChanged();
}

void Control::setTop(float top)
{
    place_.top = top;
    dialog_.layoutChanged();
}

void Control::setWidth(float width)
{
    place_.width = width;
    dialog_.layoutChanged();
}

void Control::setVisible(bool visible)
{
    visible_ = visible;
    dialog_.layoutChanged();
}

bool Control::shows() const noexcept
{
    return visible_ && (!frame_ || frame_->shows());
}

void Control::setEnabled(bool enabled)
{
    if (enabled == enabled_)
        return;
    enabled_ = enabled;
    if (window_)
        EnableWindow(window_, enabled);
}

std::wstring Control::textValue() const
{
    // Only a text box has a text that the user changes.
    if (!window_ || textProperty_ != TextProperty::text)
        return text_;
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)), L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window_, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void Control::setTextValue(std::wstring_view text)
{
    const bool isShown = text == textValue();
    text_ = text;
    if (!window_ || isShown)
        return;
    settingText_ = true;
    SetWindowTextW(window_, text_.c_str());
    settingText_ = false;
}

void Control::setToolTipText(std::wstring_view text)
{
    toolTip_ = text;
    dialog_.toolTipChanged(*this);
}

void Control::setFocus() const noexcept
{
    if (window_)
        SetFocus(window_);
}

void Control::create(HWND parent, int id)
{
    window_ = createWindow(parent, id_ != 0 ? id_ : id);
}

Place Control::placeOnDialog() const noexcept
{
    Place place = place_;
    if (frame_)
    {
        const Place surface = frame_->placeOnDialog();
        place.left += surface.left;
        place.top += surface.top;
    }
    return place;
}

bool Control::arranges(const RECT& pixels, bool shown) noexcept
{
    if (arranged_ && EqualRect(&pixels, &arranged_->pixels) && shown == arranged_->shown)
        return false;
    arranged_ = {pixels, shown};
    return true;
}

void Control::forgetWindow() noexcept
{
    window_ = nullptr;
    forgetArrangement();
}

void Control::notify(WORD) {}

void Control::notified(const NMHDR& notification)
{
    if (notification.code == NM_SETFOCUS)
        focusNotified(true);
    else if (notification.code == NM_KILLFOCUS)
        focusNotified(false);
}

void Control::focusNotified(bool arrived) const noexcept
{
    if (arrived)
        dialog_.focusArrived();
    else
        dialog_.focusLeft();
}

HWND Control::makeWindow(HWND parent, int id, const wchar_t* windowClass, DWORD style,
                         DWORD extendedStyle) const
{
    // Invisible and without extent until the dialog arranges its controls.
    const DWORD enabling = enabled_ ? 0 : WS_DISABLED;
    const HWND window = CreateWindowExW(
        extendedStyle, windowClass, text_.c_str(), WS_CHILD | enabling | style, 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), module::instance(), nullptr);
    if (!window)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    return window;
}

void Control::raise(const std::function<void()>& handler) const
{
    if (handler)
        dialog_.run(handler);
}

LRESULT Control::send(UINT message, WPARAM first, LPARAM second) const noexcept
{
    return window_ ? SendMessageW(window_, message, first, second) : 0;
}

Control::Filling::Filling(const Control& control) noexcept : control_(control)
{
    control_.send(WM_SETREDRAW, FALSE);
}

Control::Filling::~Filling()
{
    control_.send(WM_SETREDRAW, TRUE);
    if (control_.window())
        InvalidateRect(control_.window(), nullptr, TRUE);
}

} // namespace korvane
