// What containers such as the forms of Office and Visual Basic do in one call: they give their site and their sinks, and
// learn what they would have asked for. Nothing here is not to be had by the calls one by one.
#include "framework/control/OleControl.h"

namespace korvane
{

STDMETHODIMP OleControl::QuickActivate(QACONTAINER* container, QACONTROL* control)
{
    if (!container || !control)
        return E_POINTER;
    *control = {sizeof *control, miscStatus, 0, 0, 0, 0};
    return held([&] {
        require(SetClientSite(container->pClientSite));
        if (container->pAdviseSink)
            require(SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink));
        // No property tells of its changes. A sink that is not taken has no cookie.
        const ComPtr<IUnknown> sink(container->pUnkEventSink);
        GUID events{};
        if (!sink || FAILED(GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events)))
            return;
        const auto point = fetchIfAny(queryFor<IConnectionPointContainer>(identity()),
                                      &IConnectionPointContainer::FindConnectionPoint, events);
        if (point)
            point->Advise(sink.get(), &control->dwEventCookie);
    });
}

STDMETHODIMP OleControl::SetContentExtent(LPSIZEL extent)
{
    return SetExtent(DVASPECT_CONTENT, extent);
}

STDMETHODIMP OleControl::GetContentExtent(LPSIZEL extent)
{
    return GetExtent(DVASPECT_CONTENT, extent);
}

} // namespace korvane
