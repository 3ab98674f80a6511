#include "framework/control/OleControl.h"

namespace korvane
{

HRESULT OleControl::activateInPlace()
{
    if (inPlaceSite_)
    {
        ShowWindow(window(), SW_SHOWNA);
        return S_OK;
    }
    const auto site = clientSite_.as<IOleInPlaceSite>();
    if (!site || site->CanInPlaceActivate() != S_OK)
        return E_FAIL;

    HWND parent = nullptr;
    RECT place{};
    RECT clip{};
    OLEINPLACEFRAMEINFO frameInfo{};
    frameInfo.cb = sizeof frameInfo;
    call(site, &IOleInPlaceSite::OnInPlaceActivate);
    inPlaceSite_ = site;
    const auto failure = attempt([&] {
        call(site, &IOleWindow::GetWindow, &parent);
        call(site, &IOleInPlaceSite::GetWindowContext, frame_.put(), document_.put(), &place, &clip,
             &frameInfo);
        attachWindow(parent);
    });
    if (failure)
    {
        InPlaceDeactivate();
        throw *failure;
    }
    EnableWindow(window(), enabled_);
    SetObjectRects(&place, &clip);
    ShowWindow(window(), SW_SHOWNA);
    clientSite_->ShowObject();
    return S_OK;
}

HRESULT OleControl::activateUi(const MSG* message)
{
    const HRESULT result = activateInPlace();
    if (result != S_OK)
        return result;
    if (!uiActive_)
    {
        uiActive_ = true;
        inPlaceSite_->OnUIActivate();
        auto* self = static_cast<IOleInPlaceActiveObject*>(this);
        if (frame_)
        {
            frame_->SetActiveObject(self, nullptr);
            frame_->SetBorderSpace(nullptr); // the dialog has no tools for the frame's border
        }
        if (document_)
            document_->SetActiveObject(self, nullptr);
    }
    const HWND focus = GetFocus();
    if (focus && IsChild(window(), focus))
        return S_OK;
    // Whoever comes by Shift+Tab meets the last control first.
    const bool byTab = message && message->message == WM_KEYDOWN && message->wParam == VK_TAB;
    const bool backwards = byTab && GetKeyState(VK_SHIFT) < 0;
    if (const HWND entered = backwards ? lastTabStop() : firstTabStop())
        SendMessageW(window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(entered), TRUE);
    else
        SetFocus(window());
    return S_OK;
}

void OleControl::hide() noexcept
{
    UIDeactivate();
    if (window())
        ShowWindow(window(), SW_HIDE);
}

STDMETHODIMP OleControl::GetWindow(HWND* handle)
{
    if (!handle)
        return E_POINTER;
    *handle = inPlaceSite_ ? window() : nullptr;
    return *handle ? S_OK : E_FAIL;
}

STDMETHODIMP OleControl::ContextSensitiveHelp(BOOL)
{
    return E_NOTIMPL;
}

STDMETHODIMP OleControl::InPlaceDeactivate()
{
    if (!inPlaceSite_)
        return S_OK;
    const ComPtr<IUnknown> alive(identity());
    UIDeactivate();
    parkWindow();
    frame_.reset();
    document_.reset();
    const auto site = std::move(inPlaceSite_);
    site->OnInPlaceDeactivate();
    return S_OK;
}

STDMETHODIMP OleControl::UIDeactivate()
{
    if (!uiActive_)
        return S_OK;
    uiActive_ = false;
    if (document_)
        document_->SetActiveObject(nullptr, nullptr);
    if (frame_)
        frame_->SetActiveObject(nullptr, nullptr);
    if (inPlaceSite_)
        inPlaceSite_->OnUIDeactivate(FALSE);
    return S_OK;
}

STDMETHODIMP OleControl::SetObjectRects(LPCRECT place, LPCRECT clip)
{
    if (!place)
        return E_POINTER;
    position_ = {place->left, place->top};
    moveWindow(clip ? *clip : *place);
    const RECT own = placeInContainer();
    if (!EqualRect(&own, place))
        insistOnSize();
    return S_OK;
}

STDMETHODIMP OleControl::ReactivateAndUndo()
{
    return INPLACE_E_NOTUNDOABLE;
}

RECT OleControl::placeInContainer() const noexcept
{
    return {position_.x, position_.y, position_.x + toPixels(width_, dpi()),
            position_.y + toPixels(height_, dpi())};
}

void OleControl::moveWindow(const RECT& clip) noexcept
{
    if (!window())
        return;
    const RECT place = placeInContainer();
    RECT shown{};
    IntersectRect(&shown, &place, &clip);
    HRGN region = nullptr;
    if (!EqualRect(&shown, &place))
    {
        OffsetRect(&shown, -place.left, -place.top);
        region = CreateRectRgnIndirect(&shown);
    }
    if (region || clipped_)
        SetWindowRgn(window(), region, TRUE); // the window owns the region
    clipped_ = region != nullptr;
    SetWindowPos(window(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Asks the container for the dialog's own size. A container that insists on another one is not asked again
/// from within its answer, and the window keeps its size.
void OleControl::insistOnSize() noexcept
{
    const RECT place = placeInContainer();
    moveWindow(place);
    if (!inPlaceSite_ || insisting_)
        return;
    insisting_ = true;
    inPlaceSite_->OnPosRectChange(&place);
    insisting_ = false;
}

} // namespace korvane
