#include "framework/control/OleControl.h"

namespace korvane
{

STDMETHODIMP OleControl::SetClientSite(IOleClientSite* site)
{
    return held([&] {
        if (clientSite_.get() == site)
            return;
        const ComPtr<IOleClientSite> next(site);
        if (next)
            InPlaceDeactivate();
        else
            end();
        clientSite_ = next;
    });
}

STDMETHODIMP OleControl::GetClientSite(IOleClientSite** site)
{
    return returns(site, [&] { return clientSite(); });
}

STDMETHODIMP OleControl::SetHostNames(LPCOLESTR, LPCOLESTR)
{
    return S_OK;
}

STDMETHODIMP OleControl::Close(DWORD)
{
    return held([&] {
        end();
        if (advises_)
            advises_->SendOnClose();
    });
}

void OleControl::end() noexcept
{
    const Changing change(*this, Change::deactivation);
    // The window goes before the activation does: to keep it for another activation would be in vain.
    UIDeactivate();
    destroyWindow();
    InPlaceDeactivate();
    closing();
    destroyWindow(); // the container may have readied the dialog meanwhile
}

void OleControl::lastReleased() noexcept
{
    // Nobody is told any more: whoever lets go of a dialog without ending it may be gone himself.
    change_ = Change::deactivation;
    uiActive_ = focused_ = false;
    inPlaceSite_.reset();
    destroyWindow();
}

STDMETHODIMP OleControl::SetMoniker(DWORD, IMoniker*)
{
    return E_NOTIMPL;
}

STDMETHODIMP OleControl::GetMoniker(DWORD, DWORD, IMoniker** moniker)
{
    if (!moniker)
        return E_POINTER;
    *moniker = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP OleControl::InitFromData(IDataObject*, BOOL, DWORD)
{
    return E_NOTIMPL;
}

STDMETHODIMP OleControl::GetClipboardData(DWORD, IDataObject** data)
{
    if (!data)
        return E_POINTER;
    *data = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP OleControl::DoVerb(LONG verb, LPMSG message, IOleClientSite*, LONG, HWND, LPCRECT)
{
    return held([&] {
        switch (verb)
        {
        case OLEIVERB_PRIMARY:
        case OLEIVERB_UIACTIVATE:
            return activateUi(message);
        case OLEIVERB_SHOW:
        case OLEIVERB_INPLACEACTIVATE:
            return activateInPlace();
        case OLEIVERB_HIDE:
            hide();
            return S_OK;
        case OLEIVERB_DISCARDUNDOSTATE:
            return S_OK;
        default:
            return verb < 0 ? E_NOTIMPL : OLEOBJ_S_INVALIDVERB;
        }
    });
}

STDMETHODIMP OleControl::EnumVerbs(IEnumOLEVERB** verbs)
{
    if (!verbs)
        return E_POINTER;
    *verbs = nullptr;
    return OLEOBJ_E_NOVERBS;
}

STDMETHODIMP OleControl::Update()
{
    return S_OK;
}

STDMETHODIMP OleControl::IsUpToDate()
{
    return S_OK;
}

STDMETHODIMP OleControl::GetUserClassID(CLSID* classId)
{
    return GetClassID(classId);
}

STDMETHODIMP OleControl::GetUserType(DWORD form, LPOLESTR* type)
{
    if (!type)
        return E_POINTER;
    *type = nullptr;
    return OleRegGetUserType(classId_, form, type);
}

STDMETHODIMP OleControl::SetExtent(DWORD aspect, SIZEL* extent)
{
    if (!extent)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    return held([&] {
        const auto isOwn = [&] {
            return extent->cx == toHimetric(width_) && extent->cy == toHimetric(height_);
        };
        if (isOwn())
            return;
        if (resizable())
            takeSize(fromHimetric(extent->cx), fromHimetric(extent->cy));
        if (isOwn())
            moveWindow(placeInContainer());
        else
            insistOnSize();
    });
}

STDMETHODIMP OleControl::GetExtent(DWORD aspect, SIZEL* extent)
{
    if (!extent)
        return E_POINTER;
    *extent = {};
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    *extent = {toHimetric(width_), toHimetric(height_)};
    return S_OK;
}

STDMETHODIMP OleControl::Advise(IAdviseSink* sink, DWORD* connection)
{
    if (!connection)
        return E_POINTER;
    *connection = 0;
    if (!sink)
        return E_POINTER;
    return guard([&] {
        if (!advises_)
            require(CreateOleAdviseHolder(advises_.put()));
        return advises_->Advise(sink, connection);
    });
}

STDMETHODIMP OleControl::Unadvise(DWORD connection)
{
    return advises_ ? advises_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

STDMETHODIMP OleControl::EnumAdvise(IEnumSTATDATA** advises)
{
    if (!advises)
        return E_POINTER;
    *advises = nullptr;
    return advises_ ? advises_->EnumAdvise(advises) : S_OK;
}

STDMETHODIMP OleControl::GetMiscStatus(DWORD aspect, DWORD* status)
{
    if (!status)
        return E_POINTER;
    *status = aspect == DVASPECT_CONTENT ? miscStatus : 0;
    return S_OK;
}

STDMETHODIMP OleControl::SetColorScheme(LOGPALETTE*)
{
    return E_NOTIMPL;
}

} // namespace korvane
