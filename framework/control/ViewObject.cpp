#include "framework/control/OleControl.h"

namespace korvane
{

namespace
{

/// Lets what is drawn in an extent, from 0 on, appear in bounds of the mapping that the container has chosen.
/// @param window what the container maps to the whole of a metafile.
void mapOnto(HDC context, SIZE extent, RECT bounds, const RECT& window) noexcept
{
    if (GetObjectType(context) == OBJ_METADC)
    {
        // The viewport is that of whoever plays it.
        const int width = bounds.right - bounds.left;
        const int height = bounds.bottom - bounds.top;
        SetWindowOrgEx(context, MulDiv(window.left - bounds.left, extent.cx, width),
                       MulDiv(window.top - bounds.top, extent.cy, height), nullptr);
        SetWindowExtEx(context, MulDiv(window.right - window.left, extent.cx, width),
                       MulDiv(window.bottom - window.top, extent.cy, height), nullptr);
        return;
    }
    LPtoDP(context, reinterpret_cast<POINT*>(&bounds), 2);
    ModifyWorldTransform(context, nullptr, MWT_IDENTITY);
    SetMapMode(context, MM_ANISOTROPIC);
    SetWindowOrgEx(context, 0, 0, nullptr);
    SetWindowExtEx(context, extent.cx, extent.cy, nullptr);
    SetViewportExtEx(context, bounds.right - bounds.left, bounds.bottom - bounds.top, nullptr);
    SetViewportOrgEx(context, bounds.left, bounds.top, nullptr);
}

RECT rectangle(const RECTL& sides) noexcept
{
    return {sides.left, sides.top, sides.right, sides.bottom};
}

} // namespace

STDMETHODIMP OleControl::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context, LPCRECTL bounds,
                              LPCRECTL windowBounds, BOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR)
{
    if (!bounds)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    const RECT target = rectangle(*bounds);
    if (!window())
    {
        FillRect(context, &target, GetSysColorBrush(COLOR_BTNFACE));
        return S_OK;
    }
    // Each window draws itself in its own extent; the mapping brings it to the extent asked for. The controls are asked
    // one by one, as not every platform passes the message on to them.
    const RECT own = placeInContainer();
    const int saved = SaveDC(context);
    mapOnto(context, {own.right - own.left, own.bottom - own.top}, target,
            windowBounds ? rectangle(*windowBounds) : target);
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
