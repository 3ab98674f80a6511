// The relay from a dialog to its container.
#pragma once

#include "framework/com/Object.h"

#include <KorvaneDlg.h>

namespace korvane
{

class AppDialogEvents final : public Object<AppDialogEvents, Inherits<IAppDialogEvents>, IAppDialogEvents>
{
public:
    STDMETHODIMP RaiseDone(VARIANT_BOOL cancelled) override;
    STDMETHODIMP RaiseError() override;
    STDMETHODIMP RaiseResize() override;
    STDMETHODIMP get_Sink(IAppDialogSink** value) override;
    STDMETHODIMP put_Sink(IAppDialogSink* value) override;
    STDMETHODIMP putref_Sink(IAppDialogSink* value) override;
    STDMETHODIMP SubmitCommand(IAppCommand* candidate, VARIANT_BOOL* result) override;
    STDMETHODIMP OfferCommand(IAppCommand* candidate, VARIANT_BOOL* result) override;

private:
    using Question = HRESULT (STDMETHODCALLTYPE IAppCommandSite::*)(IAppCommand*, VARIANT_BOOL*);
    bool ask(Question question, IAppCommand* candidate) const;

    ComPtr<IAppDialogSink> sink_;
};

} // namespace korvane
