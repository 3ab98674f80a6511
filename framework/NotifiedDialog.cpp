#include "framework/NotifiedDialog.h"

namespace korvane
{

STDMETHODIMP NotifiedDialog::get_Notifier(IXtExecuteEvents** value)
{
    return returns(value, [&] { return ComPtr<IXtExecuteEvents>(this); });
}

STDMETHODIMP NotifiedDialog::OnExecuted(IAppCommand*, VARIANT_BOOL)
{
    return notified();
}

STDMETHODIMP NotifiedDialog::OnOperands(IAppCommand*)
{
    return S_OK; // nothing is stored yet
}

STDMETHODIMP NotifiedDialog::OnRedone(IAppCommand*, VARIANT_BOOL)
{
    return notified();
}

STDMETHODIMP NotifiedDialog::OnUndone(IAppCommand*, VARIANT_BOOL)
{
    return notified();
}

STDMETHODIMP NotifiedDialog::OnTick(long)
{
    return S_OK;
}

STDMETHODIMP NotifiedDialog::Request(BSTR, VARIANT, VARIANT* answer)
{
    return returns(answer, [] { return Variant(); });
}

HRESULT NotifiedDialog::notified() noexcept
{
    return held([&] {
        if (!isLoaded())
            return;
        const Batch batch(*this);
        refresh();
    });
}

} // namespace korvane
