#include "framework/control/Controls.h"

#include "framework/com/Failure.h"
#include "framework/com/Module.h"
#include "framework/control/DialogWindow.h"

#include <commctrl.h>

#include <new>

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

HWND Control::createWindow(HWND parent, int id, const wchar_t* windowClass, DWORD style,
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

HWND Label::createWindow(HWND parent, int id)
{
    // A label starts a group, so that the arrow keys do not lead out of the option buttons before it. With a tooltip
    // it gets the pointer itself, which otherwise goes to what is behind it.
    const DWORD pointing = ToolTipText().empty() ? 0 : SS_NOTIFY;
    return createWindow(parent, id, L"Static", SS_LEFT | WS_GROUP | pointing, 0);
}

float Label::captionWidth() const
{
    std::wstring shown = Caption();
    std::erase(shown, L'&');
    const SIZE extent = dialog_.font().measure(shown.c_str(), dialog_.dpi());
    return static_cast<float>(extent.cx) * 1440.0f / static_cast<float>(dialog_.dpi());
}

void Label::labels(const Control& control) const noexcept
{
    // The dialog manager and the accessibility support both read the order of the windows.
    if (!window() || !control.window())
        return;
    const HWND before = GetWindow(control.window(), GW_HWNDPREV);
    if (before != window())
        SetWindowPos(window(), before ? before : HWND_TOP, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

HWND Button::createWindow(HWND parent, int id)
{
    const DWORD kind = id == IDOK ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    return createWindow(parent, id, L"Button", WS_TABSTOP | BS_NOTIFY | kind, 0);
}

void Button::notify(WORD code)
{
    if (code == BN_CLICKED)
        raise(onClick);
    else if (code == BN_SETFOCUS || code == BN_KILLFOCUS)
        focusNotified(code == BN_SETFOCUS);
}

void CheckableButton::setValue(bool checked) const noexcept
{
    send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
}

HWND CheckBox::createWindow(HWND parent, int id)
{
    return createWindow(parent, id, L"Button", WS_TABSTOP | WS_GROUP | BS_NOTIFY | BS_AUTOCHECKBOX, 0);
}

HWND OptionButton::createWindow(HWND parent, int id)
{
    const DWORD group = position_ == Position::first ? WS_GROUP | WS_TABSTOP : 0;
    return createWindow(parent, id, L"Button", group | BS_NOTIFY | BS_AUTORADIOBUTTON, 0);
}

namespace
{

/// Keys that are none of a number's are discarded before the box sees them.
LRESULT CALLBACK digitsOnly(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                            DWORD_PTR) noexcept
{
    if (message == WM_CHAR && first != VK_BACK && (first < L'0' || first > L'9'))
        return 0;
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &digitsOnly, id);
    return DefSubclassProc(window, message, first, second);
}

} // namespace

HWND TextBox::createWindow(HWND parent, int id)
{
    const DWORD kind = kind_ == Kind::lines ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL : ES_AUTOHSCROLL;
    const HWND box = createWindow(parent, id, L"Edit", WS_TABSTOP | kind, WS_EX_CLIENTEDGE);
    SendMessageW(box, EM_SETLIMITTEXT, limit_, 0);
    if (kind_ == Kind::digits)
        SetWindowSubclass(box, &digitsOnly, 0, 0);
    return box;
}

void TextBox::notify(WORD code)
{
    if (code == EN_CHANGE && !isSettingText())
        raise(onChange);
    else if (code == EN_SETFOCUS)
        focusNotified(true);
    else if (code == EN_KILLFOCUS)
    {
        focusNotified(false);
        raise(onLostFocus);
    }
}

/// The box keeps the focus, but to its owner it is as if the user had left it.
void TextBox::completeEdit()
{
    if (hasFocus() && onLostFocus)
        onLostFocus();
}

HWND Swatch::createWindow(HWND parent, int id)
{
    return createWindow(parent, id, L"Static", SS_OWNERDRAW, 0);
}

void Swatch::setFillColor(long color)
{
    color_ = color;
    if (window())
        InvalidateRect(window(), nullptr, TRUE);
}

void Swatch::draw(const DRAWITEMSTRUCT& item) const
{
    const COLORREF fill = color_ < 1 ? GetSysColor(COLOR_WINDOW) : static_cast<COLORREF>(color_);
    SetDCBrushColor(item.hDC, fill);
    FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    FrameRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_3DSHADOW));
}

HWND ListBox::createWindow(HWND parent, int id)
{
    return createWindow(parent, id, L"ListBox", WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
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

ListBox::Filling::Filling(ListBox& list) noexcept : list_(list)
{
    list_.send(WM_SETREDRAW, FALSE);
}

ListBox::Filling::~Filling()
{
    list_.send(WM_SETREDRAW, TRUE);
    if (list_.window())
        InvalidateRect(list_.window(), nullptr, TRUE);
}

} // namespace korvane
