#include "framework/control/DialogWindow.h"

#include "framework/com/Failure.h"
#include "framework/com/Module.h"
#include "framework/control/ActivationContext.h"
#include "framework/control/Dpi.h"
#include "framework/control/Keys.h"

#include <commctrl.h>
#include <windowsx.h>

namespace korvane
{

namespace
{

constexpr UINT postedMessage = WM_APP + 1;
constexpr UINT dpiChangedAfterParent = 0x02E3; // WM_DPICHANGED_AFTERPARENT, of Windows 8.1

Failure lastError()
{
    return Failure(HRESULT_FROM_WIN32(GetLastError()));
}

wchar_t upperCase(wchar_t letter) noexcept
{
    // The platform's mapping, as the dialog manager's: the C runtime's locale knows the letters of English only.
    CharUpperBuffW(&letter, 1);
    return letter;
}

/// The letter after a lone ampersand; 0 without one.
wchar_t accessKey(const std::wstring& caption) noexcept
{
    for (std::size_t at = caption.find(L'&'); at != std::wstring::npos && at + 1 < caption.size();
         at = caption.find(L'&', at + 2))
        if (caption[at + 1] != L'&')
            return caption[at + 1];
    return 0;
}

/// What a host whose message loop is not a Unicode one makes of a character; 0 for one that is the same in either.
wchar_t inCodePage(WPARAM character) noexcept
{
    const char narrow = static_cast<char>(character);
    wchar_t wide = 0;
    if (character >= 0x80 && character <= 0xFF)
        MultiByteToWideChar(CP_ACP, 0, &narrow, 1, &wide, 1);
    return wide;
}

/// The focus stays where it is until the container gives it.
INT_PTR CALLBACK leaveFocusAlone(HWND, UINT, WPARAM, LPARAM) noexcept
{
    return FALSE;
}

} // namespace

DialogWindow::~DialogWindow()
{
    destroyWindow();
}

void DialogWindow::requireWindow()
{
    if (window_)
        return;
    if (!makeParking())
        throw lastError();
    attachWindow(parking_);
}

/// A window that nobody sees, for a dialog that stands in no container.
bool DialogWindow::makeParking() noexcept
{
    if (!parking_)
        parking_ = CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                   module::instance(), nullptr);
    return parking_ != nullptr;
}

void DialogWindow::attachWindow(HWND parent)
{
    if (window_)
    {
        if (!SetParent(window_, parent))
            throw lastError(); // else the window would go with the one that it is parked on
    }
    else
    {
        // A dialog of the platform's own kind, for the keyboard and the default button; its controls follow.
        struct
        {
            DLGTEMPLATE dialog;
            WORD noMenu, standardClass, noTitle;
        } design{};
        design.dialog.style = WS_CHILD | DS_CONTROL;
        design.dialog.dwExtendedStyle = WS_EX_CONTROLPARENT;
        const ControlsContext context;
        window_ = CreateDialogIndirectParamW(module::instance(), &design.dialog, parent, &leaveFocusAlone, 0);
        if (!window_)
            throw lastError();
        // Ahead of the platform's dialog procedure, which takes its time for each of the notifications that a tree
        // sends when it is emptied.
        SetWindowLongPtrW(window_, DWLP_USER, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure));
    }
    if (parking_ && parent != parking_)
        DestroyWindow(std::exchange(parking_, nullptr));
    createToolTips();
    if (takeDpi())
        dpiChanged();
}

bool DialogWindow::takeDpi() noexcept
{
    const int dpi = window_ ? windowDpi(window_) : dpi_;
    return std::exchange(dpi_, dpi) != dpi;
}

void DialogWindow::parkWindow() noexcept
{
    if (!window_ || parking_)
        return;
    ShowWindow(window_, SW_HIDE);
    if (!window_)
        return; // the container, told that the focus has left, has ended the dialog
    destroyToolTips();
    if (makeParking())
        SetParent(window_, parking_);
}

void DialogWindow::destroyWindow() noexcept
{
    if (window_)
        DestroyWindow(window_);
    if (parking_)
        DestroyWindow(std::exchange(parking_, nullptr));
}

void DialogWindow::createControls()
{
    if (controlsCreated_)
        return;
    if (!window_)
        throw Failure(E_ABORT); // the container has ended the dialog meanwhile
    const ControlsContext context;
    int id = IDOK + 100; // clear of the ids that the dialog manager knows
    for (Control* control : controls_)
    {
        if (!control->window()) // an attempt that failed half-way may have made it
            control->create(window_, id);
        ++id;
    }
    if (GetDlgItem(window_, IDOK))
        SendMessageW(window_, DM_SETDEFID, IDOK, 0);
    createToolTips();
    appliedFont_ = nullptr; // new windows have none of the dialog's
    applyFont();
    controlsCreated_ = true;
    layoutChanged();
}

void DialogWindow::freeze(bool frozen) noexcept
{
    if (std::exchange(frozen_, frozen) == frozen)
        return;
    // The keyboard stays where it leads out: from a disabled control it would lead nowhere.
    if (frozen && IsChild(window_, GetFocus()))
        SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(window_, IDCANCEL)), TRUE);
    for (const Control* control : controls_)
        control->showEnabled();
}

bool DialogWindow::returnFocus() const noexcept
{
    const HWND last = lastFocus_ ? lastFocus_->window() : nullptr;
    if (!last || !IsWindowVisible(last) || !IsWindowEnabled(last))
        return false;
    lastFocus_->setFocus();
    return true;
}

void DialogWindow::applyFont()
{
    const HFONT font = font_.handle(dpi_);
    if (std::exchange(appliedFont_, font) == font)
        return;
    for (const Control* control : controls_)
        if (control->window())
            SendMessageW(control->window(), WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

void DialogWindow::layoutChanged() noexcept
{
    layoutPending_ = true;
    if (batches_ == 0)
        arrange();
}

DialogWindow::Batch::~Batch()
{
    if (--dialog_.batches_ > 0)
        return;
    dialog_.arrange();
    if (dialog_.window_ && std::exchange(dialog_.reachChanged_, false))
        dialog_.accessKeysChanged();
    dialog_.handled();
}

void DialogWindow::arrange() noexcept
{
    if (!layoutPending_ || !controlsCreated_ || batches_ > 0)
        return;
    layoutPending_ = false;

    bool moved = false;
    HDWP moves = BeginDeferWindowPos(static_cast<int>(controls_.size()));
    for (Control* control : controls_)
    {
        if (!control->window() || !moves)
            continue;
        const Place place = control->placeOnDialog();
        const int left = toPixels(place.left, dpi_);
        const int top = toPixels(place.top, dpi_);
        // Edges are rounded, not extents: neighbours that touch in the layout touch on the screen.
        const int right = toPixels(place.left + place.width, dpi_);
        const int bottom = toPixels(place.bottom() + control->hiddenHeight(), dpi_);
        if (!control->arranges({left, top, right, bottom}, control->shows()))
            continue;
        moved = true;
        const UINT showing = control->shows() ? SWP_SHOWWINDOW : SWP_HIDEWINDOW;
        moves = DeferWindowPos(moves, control->window(), nullptr, left, top, right - left, bottom - top,
                               SWP_NOZORDER | SWP_NOACTIVATE | showing);
    }
    if (!moves || !EndDeferWindowPos(moves))
        for (Control* control : controls_)
            control->forgetArrangement();
    for (Control* control : controls_)
        control->placed();
    // Moved controls take their pixels along, which a container that grows meanwhile may not have drawn.
    if (moved)
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

DialogWindow::AccessKey DialogWindow::findAccessKey(wchar_t key) const noexcept
{
    for (Control* control : controls_)
        for (std::size_t index = 0; const std::wstring* caption = control->accessCaption(index); ++index)
            if (const wchar_t spelled = accessKey(*caption);
                spelled != 0 && upperCase(spelled) == upperCase(key) && control->isWithinReach())
                return {control, index, spelled};
    return {};
}

std::wstring DialogWindow::accessKeys() const
{
    std::wstring keys;
    for (const Control* control : controls_)
        for (std::size_t index = 0; const std::wstring* caption = control->accessCaption(index); ++index)
            if (const wchar_t key = upperCase(accessKey(*caption));
                key != 0 && control->isWithinReach() && keys.find(key) == std::wstring::npos)
                keys += key;
    return keys;
}

bool DialogWindow::followAccessKey(MSG message) noexcept
{
    AccessKey found = findAccessKey(static_cast<wchar_t>(message.wParam));
    if (!found.control)
        found = findAccessKey(inCodePage(message.wParam));
    if (!found.control)
        return false;
    bool followed = true; // also where that fails
    const auto follow = [&] { followed = found.control->accessKeyPressed(found.caption); };
    run(std::cref(follow));
    if (followed || !window_)
        return true;
    // The dialog manager finds the letter as the caption has it; not on every platform in the other case too.
    message.wParam = found.spelled;
    return IsDialogMessageW(window_, &message) != FALSE;
}

bool DialogWindow::takesDialogKey(const MSG& message) noexcept
{
    const DWORD modifiers = keyModifiers();
    if (message.wParam == VK_TAB && (modifiers & controlKey) != 0)
        for (Control* control : controls_)
            if (control->isWithinReach() && control->turnsPage((modifiers & shiftKey) != 0))
                return true;
    HWND window = message.hwnd;
    while (window && GetParent(window) != window_)
        window = GetParent(window);
    const Control* control = controlOf(window);
    return control && control->takesDialogKey(static_cast<WORD>(message.wParam));
}

HWND DialogWindow::lastTabStop() const noexcept
{
    // The one before the first: platforms differ on what comes before no control at all.
    const HWND first = firstTabStop();
    return first ? GetNextDlgTabItem(window_, first, TRUE) : nullptr;
}

Control* DialogWindow::controlOf(HWND window) const noexcept
{
    // A menu's message has no window, and a frame has none either: that makes it none of the frame's.
    for (Control* control : controls_)
        if (window && control->window() == window)
            return control;
    return nullptr;
}

void DialogWindow::post(const Control& control, LPARAM value) const noexcept
{
    if (window_) // to no window, it would go to the host's thread
        PostMessageW(window_, postedMessage, reinterpret_cast<WPARAM>(control.window()), value);
}

void DialogWindow::postToDialog() const noexcept
{
    if (window_)
        PostMessageW(window_, postedMessage, 0, 0);
}

void DialogWindow::createToolTips()
{
    for (const Control* control : controls_)
        if (!control->ToolTipText().empty())
            toolTipChanged(*control);
}

void DialogWindow::destroyToolTips() noexcept
{
    if (toolTips_)
        DestroyWindow(std::exchange(toolTips_, nullptr));
}

/// They belong to the window at the top, and would go with it: while the dialog is parked, there are none.
void DialogWindow::toolTipChanged(const Control& control)
{
    if (!control.window() || parking_)
        return;
    if (!toolTips_)
    {
        const ControlsContext context;
        toolTips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP,
                                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window_,
                                    nullptr, module::instance(), nullptr);
    }
    const std::wstring& text = control.ToolTipText();
    TOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE; // the size that every version of the common controls takes
    tool.uFlags = TTF_IDISHWND;
    tool.hwnd = window_;
    tool.uId = reinterpret_cast<UINT_PTR>(control.window());
    tool.lpszText = const_cast<wchar_t*>(text.c_str()); // only read
    SendMessageW(toolTips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (!text.empty())
        SendMessageW(toolTips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

/// Tells the tooltips what the pointer does on a control. They could listen to the controls themselves, but would then
/// look at each message of a list that is being filled, which may take ten times as long as the filling.
void DialogWindow::relayToToolTips(HWND control, UINT mouseMessage) const noexcept
{
    if (!toolTips_)
        return;
    const DWORD position = GetMessagePos();
    MSG message{};
    message.hwnd = control;
    message.message = mouseMessage;
    message.pt = {GET_X_LPARAM(position), GET_Y_LPARAM(position)};
    POINT onControl = message.pt;
    ScreenToClient(control, &onControl);
    message.lParam = MAKELPARAM(onControl.x, onControl.y);
    SendMessageW(toolTips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
}

LRESULT CALLBACK DialogWindow::procedure(HWND window, UINT message, WPARAM first, LPARAM second) noexcept
{
    auto* dialog = reinterpret_cast<DialogWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog)
        return DefDlgProcW(window, message, first, second);
    // The container may end the dialog and let go of it in whatever the message leads to.
    const ComPtr<IUnknown> alive(dialog->identity());
    const auto result = dialog->handle(message, first, second);
    return result ? *result : DefDlgProcW(window, message, first, second);
}

/// It comes to windows at the top alone and is handed on from there: the common controls keep what they draw with.
void DialogWindow::tellOfSystemColors() const noexcept
{
    for (const Control* control : controls_)
        if (control->window())
            SendMessageW(control->window(), WM_SYSCOLORCHANGE, 0, 0);
}

std::optional<LRESULT> DialogWindow::handle(UINT message, WPARAM first, LPARAM second) noexcept
{
    switch (message)
    {
    case WM_COMMAND:
        if (Control* control = controlOf(reinterpret_cast<HWND>(second)))
            control->notify(HIWORD(first));
        return 0;
    case WM_NOTIFY:
    {
        const auto& notification = *reinterpret_cast<const NMHDR*>(second);
        if (Control* control = controlOf(notification.hwndFrom))
            return control->notified(notification);
        return std::nullopt;
    }
    case WM_VSCROLL:
        // The end of scrolling comes after the last change, and is none itself.
        if (Control* control = controlOf(reinterpret_cast<HWND>(second));
            control && LOWORD(first) != SB_ENDSCROLL)
            control->scrolled();
        return 0;
    case WM_SETCURSOR:
        // Comes here from the control under the pointer, with what the pointer does there.
        relayToToolTips(reinterpret_cast<HWND>(first), HIWORD(second));
        return std::nullopt;
    case WM_DRAWITEM:
    {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(second);
        if (const Control* control = controlOf(item.hwndItem))
            control->draw(item);
        return 0;
    }
    case postedMessage:
        if (Control* control = controlOf(reinterpret_cast<HWND>(first)))
            control->posted(second);
        else if (first == 0)
            run([this] { postedToDialog(); });
        return 0;
    case WM_SETFOCUS:
        focusArrived();
        if (GetFocus() != window_ || returnFocus())
            return 0; // the platform would begin at the first control
        return std::nullopt;
    case WM_SHOWWINDOW:
        if (first != FALSE)
            windowShown();
        return std::nullopt;
    case WM_MOUSEACTIVATE:
        focusArrived();
        return std::nullopt;
    case WM_SYSCOLORCHANGE:
        tellOfSystemColors();
        return std::nullopt;
    case dpiChangedAfterParent:
        if (takeDpi())
            run([this] { dpiChanged(); });
        return 0;
    case WM_DESTROY:
        destroyToolTips();
        for (Control* control : controls_)
            control->closing();
        return std::nullopt;
    case WM_NCDESTROY:
        // A container may destroy its window, and this one in it, before it lets go of the control.
        SetWindowLongPtrW(window_, DWLP_USER, 0);
        window_ = nullptr;
        controlsCreated_ = false;
        for (Control* control : controls_)
            control->forgetWindow();
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace korvane
