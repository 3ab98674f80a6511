#include "framework/control/Control.h"

#include "framework/com/Boundary.h"
#include "framework/com/Module.h"
#include "framework/control/DialogWindow.h"
#include "framework/control/Frame.h"
#include "framework/control/Keys.h"

#include <commctrl.h>

namespace korvane
{

namespace
{

/// Runs the handler of a key. One that fails is told of, and has taken the key.
template <class Handler> bool isTaken(DialogWindow& dialog, const Handler& handler) noexcept
{
    const ComPtr<IUnknown> alive(dialog.identity()); // the container may let go of the dialog in it
    bool taken = true;
    attempt([&] { dialog.run([&] { taken = handler(); }); });
    return taken;
}

} // namespace

Surface::Surface(Frame& ofFrame) noexcept : dialog(ofFrame.dialog()), frame(&ofFrame) {}

Control::Control(Surface surface, const Design& design)
    : dialog_(surface.dialog), text_(design.text), frame_(surface.frame), name_(design.name), id_(design.id),
      place_(design.place), toolTip_(design.toolTip)
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
    if (std::exchange(visible_, visible) != visible)
        dialog_.reachChanged();
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
    dialog_.reachChanged();
    showEnabled();
}

void Control::showEnabled() const noexcept
{
    const bool leadsOut = id_ == IDOK || id_ == IDCANCEL;
    if (window_)
        EnableWindow(window_, enabled_ && (leadsOut || !dialog_.isFrozen()));
}

std::wstring Control::windowText() const
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)), L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window_, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void Control::setTextValue(std::wstring_view text)
{
    if (text == text_)
        return;
    text_ = text;
    if (window_)
        SetWindowTextW(window_, text_.c_str());
    dialog_.textChanged();
    dialog_.reachChanged();
}

void Control::setToolTipText(std::wstring_view text)
{
    toolTip_ = text;
    dialog_.toolTipChanged(*this);
}

bool Control::hasFocus() const noexcept
{
    const HWND focus = GetFocus();
    return window_ && focus && (focus == window_ || IsChild(window_, focus));
}

void Control::setFocus() const noexcept
{
    if (!window_)
        return;
    // The dialog manager makes the button with the focus the one that Enter presses; in a text box it would select all.
    if ((send(WM_GETDLGCODE) & DLGC_BUTTON) != 0)
        SendMessageW(dialog_.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window_), TRUE);
    else
        SetFocus(window_);
}

void Control::showNow() const noexcept
{
    if (!window_)
        return;
    UpdateWindow(window_);
    GdiFlush();
}

void Control::bringToFront() const noexcept
{
    if (window_)
        SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

float Control::captionWidth() const
{
    const SIZE extent = dialog_.font().measureCaption(text_, dialog_.dpi());
    return toTwips(static_cast<float>(extent.cx), dialog_.dpi());
}

float Control::textHeight(std::wstring_view text, float width) const
{
    const int dpi = dialog_.dpi();
    std::wstring lines(text);
    if (lines.empty() || lines.back() == L'\n')
        lines += L' '; // the line that is begun counts
    const SIZE extent = dialog_.font().measure(lines, dpi, toPixels(width, dpi));
    return static_cast<float>(extent.cy) * 1440.0f / static_cast<float>(dpi);
}

void Control::create(HWND parent, int id)
{
    window_ = createWindow(parent, id_ != 0 ? id_ : id);
    if (onKeyDown || onKeyPress || !tellsOfFocus())
        watchKeys(keyWindow(), *this);
}

bool Control::takesKey(WORD key, DWORD modifiers) const noexcept
{
    return onKeyDown && isTaken(dialog_, [&] { return onKeyDown(key, modifiers); });
}

bool Control::takesCharacter(wchar_t character) const noexcept
{
    return onKeyPress && isTaken(dialog_, [&] { return onKeyPress(character); });
}

bool Control::takesDialogKey(WORD key) const noexcept
{
    return onDialogKey && isTaken(dialog_, [&] { return onDialogKey(key); });
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

LRESULT Control::notified(const NMHDR& notification)
{
    if (notification.code == NM_SETFOCUS)
        focusNotified(true);
    else if (notification.code == NM_KILLFOCUS)
        focusNotified(false);
    return 0;
}

void Control::focusNotified(bool arrived) const noexcept
{
    if (arrived)
        dialog_.focusArrived();
    else
        dialog_.focusLeft(*this);
}

ComPtr<IUnknown> Control::keptAlive() const noexcept
{
    return ComPtr<IUnknown>(dialog_.identity());
}

HWND Control::makeWindow(HWND parent, int id, const wchar_t* windowClass, DWORD style, DWORD extendedStyle)
{
    // Invisible and without extent until the dialog arranges its controls.
    const DWORD enabling = enabled_ ? 0 : WS_DISABLED;
    const HWND window = CreateWindowExW(
        extendedStyle, windowClass, text_.c_str(), WS_CHILD | enabling | style, 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), module::instance(), nullptr);
    if (!window)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    procedure_ = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
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

LRESULT Control::sendItem(UINT message, WPARAM first, LPARAM second) const noexcept
{
    return window_ ? CallWindowProcW(procedure_, window_, message, first, second) : 0;
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
