// A dialog's events, as every container knows them: what the relay calls where the container has no sink.
#pragma once

#include "framework/com/ConnectionPoint.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <functional>

namespace korvane
{

class DialogEvents final
    : public Object<DialogEvents, Inherits<IAppDialogSink, IAppCommandSite>, IAppDialogSink, IAppCommandSite>
{
public:
    /// @param size of the dialog, in pixels.
    DialogEvents(ComPtr<ConnectionPoint> subscribers, std::function<SIZE()> size)
        : subscribers_(std::move(subscribers)), size_(std::move(size))
    {
    }

    // IAppDialogSink
    STDMETHODIMP Done(VARIANT_BOOL cancelled) override;
    STDMETHODIMP Error(long number, BSTR source, BSTR description) override;
    STDMETHODIMP Resize() override;

    // IAppCommandSite
    STDMETHODIMP Accepts(IAppCommand* candidate, VARIANT_BOOL* result) override;
    STDMETHODIMP Offer(IAppCommand* candidate, VARIANT_BOOL* result) override;
    STDMETHODIMP Submit(IAppCommand* candidate, VARIANT_BOOL* result) override;

private:
    HRESULT raise(DISPID event, std::initializer_list<Variant> arguments) noexcept;
    bool submit(IAppCommand* candidate);

    ComPtr<ConnectionPoint> subscribers_;
    std::function<SIZE()> size_;
};

} // namespace korvane
