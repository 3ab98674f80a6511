#include "framework/control/OleControl.h"

#include <algorithm>

namespace korvane
{

namespace
{

/// While it lives, the modeless windows of a container's frame are disabled. Without a frame, nothing happens.
class ModelessDisabled
{
public:
    explicit ModelessDisabled(ComPtr<IOleInPlaceFrame> frame) noexcept : frame_(std::move(frame))
    {
        if (frame_)
            frame_->EnableModeless(FALSE);
    }
    ModelessDisabled(const ModelessDisabled&) = delete;
    ModelessDisabled& operator=(const ModelessDisabled&) = delete;
    ~ModelessDisabled()
    {
        if (frame_)
            frame_->EnableModeless(TRUE);
    }

private:
    ComPtr<IOleInPlaceFrame> frame_;
};

} // namespace

OleControl::Changing::Changing(OleControl& control, Change change) noexcept
    : control_(control),
      // An activation that was under way is called off.
      after_(control.change_ == Change::deactivation ? Change::deactivation : Change::none)
{
    control_.change_ = change;
}

OleControl::Changing::~Changing()
{
    control_.change_ = after_;
}

/// Throws when the container has called the activation off.
void OleControl::requireActivation() const
{
    if (change_ != Change::activation)
        throw Failure(E_ABORT);
}

HRESULT OleControl::activateInPlace()
{
    if (change_ != Change::none)
        return OLEOBJ_S_CANNOT_DOVERB_NOW;
    const bool enters = !inPlaceSite_;
    // Where the container has called it off, and has activated the dialog anew, the dialog is active all the same.
    if (const auto failure = attempt([&] {
            if (enters)
                enterContainer();
        });
        failure && !inPlaceSite_)
        throw *failure;
    ShowWindow(window(), SW_SHOWNA);
    if (const auto site = clientSite(); site && enters && inPlaceSite_)
        site->ShowObject();
    return inPlaceSite_ && window() ? S_OK : E_ABORT;
}

/// Becomes active in the container's window.
void OleControl::enterContainer()
{
    RECT place{};
    RECT clip{};
    {
        const Changing change(*this, Change::activation);
        const auto site = clientSite().as<IOleInPlaceSite>();
        if (!site || site->CanInPlaceActivate() != S_OK)
            throw Failure(E_FAIL);
        requireActivation();

        bool told = false;
        inPlaceSite_ = site;
        const auto failure = attempt([&] {
            HWND parent = nullptr;
            IOleInPlaceFrame* frame = nullptr;
            IOleInPlaceUIWindow* document = nullptr;
            OLEINPLACEFRAMEINFO frameInfo{};
            frameInfo.cb = sizeof frameInfo;
            call(site, &IOleInPlaceSite::OnInPlaceActivate);
            told = true;
            requireActivation();
            call(site, &IOleWindow::GetWindow, &parent);
            requireActivation();
            call(site, &IOleInPlaceSite::GetWindowContext, &frame, &document, &place, &clip, &frameInfo);
            auto ownFrame = owned(frame);
            auto ownDocument = owned(document);
            requireActivation();
            frame_ = std::move(ownFrame);
            document_ = std::move(ownDocument);
            takePosition(place); // at another resolution the dialog asks for another size, in this place
            attachWindow(parent);
            requireActivation();
        });
        if (failure)
        {
            if (change_ == Change::activation) // else the container has undone it already
            {
                if (!told)
                    inPlaceSite_.reset();
                InPlaceDeactivate();
            }
            throw *failure;
        }
    }
    EnableWindow(window(), enabled_);
    SetObjectRects(&place, &clip);
}

HRESULT OleControl::activateUi(const MSG* message)
{
    const HRESULT result = activateInPlace();
    if (result != S_OK)
        return result;
    if (!std::exchange(uiActive_, true))
    {
        auto* self = static_cast<IOleInPlaceActiveObject*>(this);
        tellUi(true, inPlaceSite_, &IOleInPlaceSite::OnUIActivate);
        tellUi(true, frame_, &IOleInPlaceUIWindow::SetActiveObject, self, nullptr);
        tellUi(true, frame_, &IOleInPlaceUIWindow::SetBorderSpace, nullptr); // the dialog has no tools for it
        tellUi(true, document_, &IOleInPlaceUIWindow::SetActiveObject, self, nullptr);
    }
    if (!uiActive_ || !window())
        return E_ABORT;
    const HWND focus = GetFocus();
    if (focus && IsChild(window(), focus))
        return S_OK;
    const bool byTab = message && message->message == WM_KEYDOWN && message->wParam == VK_TAB;
    if (!byTab && returnFocus())
        return uiActive_ && window() ? S_OK : E_ABORT;
    // Whoever comes by Shift+Tab meets the last control first.
    const bool backwards = byTab && GetKeyState(VK_SHIFT) < 0;
    if (const HWND entered = backwards ? lastTabStop() : firstTabStop())
        SendMessageW(window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(entered), TRUE);
    else
        SetFocus(window());
    return uiActive_ && window() ? S_OK : E_ABORT;
}

void OleControl::hide() noexcept
{
    UIDeactivate();
    if (window())
        ShowWindow(window(), SW_HIDE);
}

void OleControl::runModal(const std::function<void()>& box) const
{
    const ModelessDisabled disabled(frame_);
    if (!window())
        throw Failure(E_ABORT); // the container has ended the dialog in the call
    const bool hadFocus = hasFocus();
    box();
    if (hadFocus && window() && !hasFocus()) // not every container's window hands it on
        returnFocus();
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
    return held([&] {
        ComPtr<IOleInPlaceSite> site;
        {
            const Changing change(*this, Change::deactivation);
            UIDeactivate();
            site = std::move(inPlaceSite_);
            const auto frame = std::move(frame_);
            const auto document = std::move(document_);
            if (site)
                parkWindow();
        }
        if (site)
            site->OnInPlaceDeactivate();
    });
}

STDMETHODIMP OleControl::UIDeactivate()
{
    return held([&] {
        if (!std::exchange(uiActive_, false))
            return;
        const auto site = inPlaceSite_; // it was told of the activation: also told when that is over within
        const auto frame = frame_;
        tellUi(false, document_, &IOleInPlaceUIWindow::SetActiveObject, nullptr, nullptr);
        tellUi(false, frame, &IOleInPlaceUIWindow::SetActiveObject, nullptr, nullptr);
        tellUi(false, site, &IOleInPlaceSite::OnUIDeactivate, FALSE);
    });
}

STDMETHODIMP OleControl::SetObjectRects(LPCRECT place, LPCRECT clip)
{
    if (!place)
        return E_POINTER;
    return held([&] {
        takePosition(*place);
        if (takeDpi()) // not every container's windows are told of it
            dpiChanged();
        if (const RECT own = placeInContainer(); resizable() && !EqualRect(&own, place))
            takeSize(toTwips(static_cast<float>(place->right) - static_cast<float>(place->left), dpi()),
                     toTwips(static_cast<float>(place->bottom) - static_cast<float>(place->top), dpi()));
        moveWindow(clip ? *clip : *place);
        const RECT own = placeInContainer();
        if (!EqualRect(&own, place))
            insistOnSize();
    });
}

/// The corner of a place, as far as a window can be there.
void OleControl::takePosition(const RECT& place) noexcept
{
    const auto coordinate = [](LONG wanted) { return std::clamp(wanted, -32768L, 32767L); };
    position_ = {coordinate(place.left), coordinate(place.top)};
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
    const auto site = inPlaceSite_;
    if (!site || insisting_)
        return;
    insisting_ = true;
    site->OnPosRectChange(&place);
    insisting_ = false;
}

} // namespace korvane
