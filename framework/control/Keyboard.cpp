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

} // namespace

STDMETHODIMP OleControl::TranslateAccelerator(LPMSG message)
{
    if (!message)
        return E_POINTER;
    const ComPtr<IUnknown> alive(identity());
    if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST || !window())
        return S_FALSE;
    return translates(message) || containerTranslates(message) ? S_OK : S_FALSE;
}

bool OleControl::translates(LPMSG message) noexcept
{
    const bool inDialog = message->hwnd == window() || IsChild(window(), message->hwnd);
    if (!inDialog)
        return false;
    switch (message->message)
    {
    case WM_KEYDOWN:
        if (message->wParam == VK_TAB && leavesByTab(GetKeyState(VK_SHIFT) < 0) &&
            containerTranslates(message))
            return true; // the container has taken the focus on to what comes after the dialog
        // Other keys are left to the container first: they may be accelerators of its own.
        return isDialogKey(message->wParam) && IsDialogMessageW(window(), message);
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
    const auto site = clientSite_.as<IOleControlSite>();
    return site && site->TranslateAccelerator(message, keyModifiers()) == S_OK;
}

STDMETHODIMP OleControl::OnFrameWindowActivate(BOOL)
{
    return S_OK;
}

STDMETHODIMP OleControl::OnDocWindowActivate(BOOL activate)
{
    if (uiActive_ && activate && frame_)
        frame_->SetActiveObject(this, nullptr);
    return S_OK;
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
        for (wchar_t key = L'0'; key <= L'Z'; ++key)
            if (controlOfAccessKey(key))
                keys.push_back({FVIRTKEY | FALT, static_cast<WORD>(key), static_cast<WORD>(key)});
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
    const ComPtr<IUnknown> alive(identity());
    return guard([&] {
        const HRESULT result = activateUi(nullptr);
        if (FAILED(result))
            return result;
        // The container may have seen the key as a key; the dialog manager wants its character.
        MSG character = *message;
        character.hwnd = window();
        character.message = WM_SYSCHAR;
        followAccessKey(character);
        return S_OK;
    });
}

void OleControl::focusArrived() noexcept
{
    if (!inPlaceSite_)
        return;
    const ComPtr<IUnknown> alive(identity());
    if (!uiActive_)
        guard([&] { return activateUi(nullptr); });
    if (focused_)
        return;
    focused_ = true;
    if (const auto site = clientSite_.as<IOleControlSite>())
        site->OnFocus(TRUE);
}

void OleControl::focusLeft() noexcept
{
    const HWND now = GetFocus();
    if (!focused_ || (now && IsChild(window(), now)))
        return;
    focused_ = false;
    if (const auto site = clientSite_.as<IOleControlSite>())
        site->OnFocus(FALSE);
}

} // namespace korvane
