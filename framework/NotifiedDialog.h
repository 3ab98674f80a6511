// The base of the dialogs that stay open while commands are executed, and show what has become of the data.
#pragma once

#include "framework/AppDialog.h"

namespace korvane
{

class NotifiedDialog : public AppDialog, public IXtExecuteEvents
{
public:
    STDMETHODIMP get_Notifier(IXtExecuteEvents** value) override;

    // IXtExecuteEvents
    STDMETHODIMP OnExecuted(IAppCommand* executed, VARIANT_BOOL success) override;
    STDMETHODIMP OnOperands(IAppCommand* executed) override;
    STDMETHODIMP OnRedone(IAppCommand* executed, VARIANT_BOOL success) override;
    STDMETHODIMP OnUndone(IAppCommand* executed, VARIANT_BOOL success) override;
    STDMETHODIMP OnTick(long elapsed) override;
    STDMETHODIMP Request(BSTR topic, VARIANT argument, VARIANT* answer) override;

protected:
    using AppDialog::AppDialog;

    /// The data may have changed: shows it as it is now, and keeps what the user is entering. Not called before a Ready
    /// has succeeded.
    virtual void refresh() = 0;

private:
    HRESULT notified() noexcept;
};

} // namespace korvane
