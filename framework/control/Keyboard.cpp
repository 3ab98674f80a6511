#include "framework/control/OleControl.h"

#include "framework/control/Keys.h"

namespace korvane
{

namespace
{

/// The keys by which the dialog manager moves about, presses the default button or cancels.
bool isDialogKey(WPARAM key) noexcept
{
    switch (key)
    {
    case VK_TAB:
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
    case VK_RETURN:
    case VK_EXECUTE:
    case VK_ESCAPE:
    case VK_CANCEL:
        return true;
    default:
        return false;
    }
}

bool isOnEveryKeyboard(wchar_t key) noexcept
{
    return (key >= L'0' && key <= L'9') || (key >= L'A' && key <= L'Z');
}

wchar_t lowerCase(wchar_t letter) noexcept
{
    CharLowerBuffW(&letter, 1);
    return letter;
}

/// The key that an access key is on; 0 when the keyboard in use has none for it.
WORD virtualKeyOf(wchar_t key) noexcept
{
    if (isOnEveryKeyboard(key))
        return key;
    const SHORT scanned = VkKeyScanW(lowerCase(key));
    const int modifiers = HIBYTE(scanned); // all of them when there is no key
    return modifiers == 0 ? LOBYTE(scanned) : WORD{0};
}

} // namespace

STDMETHODIMP OleControl::TranslateAccelerator(LPMSG message)
{
    if (!message)
        return E_POINTER;
    return held([&] {
        if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST || !window())
            return S_FALSE;
        const KeyPress press(*this, *message);
        return translates(message) || (window() && containerTranslates(message)) ? S_OK : S_FALSE;
    });
}

bool OleControl::translates(LPMSG message) noexcept
{
    const bool inDialog = message->hwnd == window() || IsChild(window(), message->hwnd);
    if (!inDialog)
        return false;
    switch (message->message)
    {
    case WM_KEYDOWN:
    {
        if (!isDialogKey(message->wParam))
            return false;
        const HWND focus = GetFocus();
        if (takesDialogKey(*message))
            return true;
        if (message->wParam == VK_TAB && (keyModifiers() & controlKey) != 0)
            return false; // turns the pages of a dialog that has any, and is the container's in another
        MSG key = *message;
        if (GetFocus() != focus && IsChild(window(), GetFocus()))
            key.hwnd = GetFocus();
        if (message->wParam == VK_TAB && leavesByTab(GetKeyState(VK_SHIFT) < 0) &&
            containerTranslates(message))
        {
            rememberFocus(nullptr); // the container has taken it on to what comes after the dialog
            return true;
        }
        // Other keys are left to the container first: they may be accelerators of its own.
        return window() && IsDialogMessageW(window(), &key);
    }
    case WM_SYSKEYDOWN:
        // As the dialog manager does, which sees the dialog's own keys only: Alt shows what the access keys are.
        if ((HIWORD(message->lParam) & KF_ALTDOWN) != 0)
            SendMessageW(window(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL | UISF_HIDEFOCUS),
                         0);
        return false;
    case WM_SYSCHAR:
        // A key that is none of the dialog's may belong to a menu or a neighbour.
        return followAccessKey(*message);
    case WM_CHAR:
    {
        const bool wantsText =
            (SendMessageW(message->hwnd, WM_GETDLGCODE, 0, 0) & (DLGC_WANTCHARS | DLGC_WANTALLKEYS)) != 0;
        return !wantsText && followAccessKey(*message);
    }
    default:
        return false;
    }
}

/// True when Tab would go round from the last control to the first, or back.
bool OleControl::leavesByTab(bool backwards) const noexcept
{
    HWND current = GetFocus();
    while (current && GetParent(current) != window())
        current = GetParent(current);
    return current && current == (backwards ? firstTabStop() : lastTabStop());
}

bool OleControl::containerTranslates(LPMSG message) noexcept
{
    const auto site = clientSite().as<IOleControlSite>();
    return site && site->TranslateAccelerator(message, keyModifiers()) == S_OK;
}

STDMETHODIMP OleControl::OnFrameWindowActivate(BOOL)
{
    return S_OK;
}

STDMETHODIMP OleControl::OnDocWindowActivate(BOOL activate)
{
    return held([&] {
        if (activate)
            tellUi(true, frame_, &IOleInPlaceUIWindow::SetActiveObject, this, nullptr);
    });
}

STDMETHODIMP OleControl::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL)
{
    return S_OK;
}

STDMETHODIMP OleControl::EnableModeless(BOOL)
{
    return S_OK;
}

STDMETHODIMP OleControl::GetControlInfo(CONTROLINFO* info)
{
    if (!info)
        return E_POINTER;
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = CTRLINFO_EATS_RETURN | CTRLINFO_EATS_ESCAPE;
    return guard([&] {
        std::vector<ACCEL> keys;
        for (const wchar_t key : accessKeys())
        {
            const WORD virtualKey = virtualKeyOf(key);
            if (virtualKey != 0)
                keys.push_back({FVIRTKEY | FALT, virtualKey, key});
            // The user may write with another keyboard by then, and the container may look at characters only.
            if (!isOnEveryKeyboard(key))
                for (const wchar_t character : {key, lowerCase(key)})
                    keys.push_back({FALT, character, key});
        }
        acceleratorTable_.reset(
            keys.empty() ? nullptr : CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
        info->hAccel = acceleratorTable_.get(); // the container reads it and leaves it to the control
        info->cAccel = acceleratorTable_ ? static_cast<USHORT>(keys.size()) : USHORT{0};
    });
}

STDMETHODIMP OleControl::OnMnemonic(LPMSG message)
{
    if (!message)
        return E_POINTER;
    return held([&] {
        const HRESULT result = activateUi(nullptr);
        if (result != S_OK)
            return result;
        // The container may have seen the key as a key; the dialog manager wants its character.
        MSG character = *message;
        character.hwnd = window();
        character.message = WM_SYSCHAR;
        const KeyPress press(*this, *message);
        if (message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN)
            for (const wchar_t key : accessKeys())
                if (virtualKeyOf(key) == message->wParam)
                    character.wParam = key;
        followAccessKey(character);
        return S_OK;
    });
}

void OleControl::focusArrived() noexcept
{
    if (!inPlaceSite_)
        return;
    if (!uiActive_)
        guard([&] { return activateUi(nullptr); });
    if (!inPlaceSite_ || std::exchange(focused_, true))
        return;
    if (const auto site = clientSite().as<IOleControlSite>())
        site->OnFocus(TRUE);
}

void OleControl::focusLeft(const Control& control) noexcept
{
    const HWND now = GetFocus();
    if (!focused_ || (now && IsChild(window(), now)))
        return;
    focused_ = false;
    rememberFocus(&control);
    if (const auto site = clientSite().as<IOleControlSite>())
        site->OnFocus(FALSE);
}

} // namespace korvane
