#include "framework/control/OleControl.h"

namespace korvane
{

STDMETHODIMP OleControl::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context, LPCRECTL bounds,
                              LPCRECTL, BOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR)
{
    if (!bounds)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    const RECT target{bounds->left, bounds->top, bounds->right, bounds->bottom};
    if (!window())
    {
        FillRect(context, &target, GetSysColorBrush(COLOR_BTNFACE));
        return S_OK;
    }
    // Each window draws itself in its own extent; the mapping brings it to the extent asked for. The controls are asked
    // one by one, as not every platform passes the message on to them.
    const RECT own = placeInContainer();
    const int saved = SaveDC(context);
    SetMapMode(context, MM_ANISOTROPIC);
    SetWindowExtEx(context, own.right - own.left, own.bottom - own.top, nullptr);
    SetViewportExtEx(context, target.right - target.left, target.bottom - target.top, nullptr);
    SetViewportOrgEx(context, target.left, target.top, nullptr);
    const auto print = [&](HWND printed, const Place& place) {
        const int unmoved = SaveDC(context);
        OffsetWindowOrgEx(context, -toPixels(place.left, dpi()), -toPixels(place.top, dpi()), nullptr);
        // A themed control asks its parent for the ground, and gets that of the whole dialog.
        IntersectClipRect(context, 0, 0, toPixels(place.width, dpi()), toPixels(place.height, dpi()));
        SendMessageW(printed, WM_PRINT, reinterpret_cast<WPARAM>(context),
                     PRF_NONCLIENT | PRF_CLIENT | PRF_ERASEBKGND);
        RestoreDC(context, unmoved);
    };
    print(window(), {0, 0, Width(), Height()});
    for (const Control* control : controls())
        if (control->window() && control->shows())
            print(control->window(), control->placeOnDialog());
    RestoreDC(context, saved);
    return S_OK;
}

STDMETHODIMP OleControl::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors)
{
    if (!colors)
        return E_POINTER;
    *colors = nullptr;
    return S_FALSE;
}

STDMETHODIMP OleControl::Freeze(DWORD, LONG, void*, DWORD* freeze)
{
    if (freeze)
        *freeze = 0;
    return E_NOTIMPL;
}

STDMETHODIMP OleControl::Unfreeze(DWORD)
{
    return E_NOTIMPL;
}

STDMETHODIMP OleControl::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink)
{
    return held([&] {
        viewAspects_ = aspects;
        viewFlags_ = flags;
        viewSink_ = ComPtr<IAdviseSink>(sink);
        if (flags & ADVF_PRIMEFIRST)
            viewChanged();
    });
}

STDMETHODIMP OleControl::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink)
{
    if (aspects)
        *aspects = viewAspects_;
    if (flags)
        *flags = viewFlags_;
    if (sink)
        *sink = ComPtr(viewSink_).detach();
    return S_OK;
}

STDMETHODIMP OleControl::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL extent)
{
    return GetExtent(aspect, extent);
}

void OleControl::viewChanged() noexcept
{
    if (const auto sink = viewSink_)
    {
        if (viewFlags_ & ADVF_ONLYONCE)
            viewSink_.reset();
        sink->OnViewChange(DVASPECT_CONTENT, -1);
    }
}

} // namespace korvane
