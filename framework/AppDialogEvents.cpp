#include "framework/AppDialogEvents.h"

#include "framework/com/Apartment.h"

namespace korvane
{

namespace
{

/// The error that RaiseError is to tell: the last one that a dialog's action met, or else the thread's COM
/// error object, which a host's own dialog may have left. Such an object does not know its number.
std::optional<Failure> takeCurrentError()
{
    if (auto* state = existingApartment(); state && state->currentError)
        return std::exchange(state->currentError, std::nullopt);
    ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, information.put()) != S_OK)
        return std::nullopt;
    const Bstr source = fetchIfAny(information, &IErrorInfo::GetSource);
    const Bstr description = fetchIfAny(information, &IErrorInfo::GetDescription);
    return Failure(DISP_E_EXCEPTION, source.view(), description.view());
}

} // namespace

STDMETHODIMP AppDialogEvents::RaiseDone(VARIANT_BOOL cancelled)
{
    return guard([&] {
        if (const auto sink = sink_) // held: the container may let go of the relay in the call
            call(sink, &IAppDialogSink::Done, cancelled);
    });
}

STDMETHODIMP AppDialogEvents::RaiseError()
{
    return guard([&] {
        const auto sink = sink_;
        if (!sink)
            return;
        if (const auto error = takeCurrentError())
            call(sink, &IAppDialogSink::Error, error->number(), error->source().get(),
                 error->description().get());
    });
}

STDMETHODIMP AppDialogEvents::RaiseResize()
{
    return guard([&] {
        if (const auto sink = sink_)
            call(sink, &IAppDialogSink::Resize);
    });
}

STDMETHODIMP AppDialogEvents::get_Sink(IAppDialogSink** value)
{
    return returns(value, [&] { return sink_; });
}

STDMETHODIMP AppDialogEvents::put_Sink(IAppDialogSink* value)
{
    return putref_Sink(value);
}

STDMETHODIMP AppDialogEvents::putref_Sink(IAppDialogSink* value)
{
    sink_ = ComPtr<IAppDialogSink>(value);
    return S_OK;
}

STDMETHODIMP AppDialogEvents::SubmitCommand(IAppCommand* candidate, VARIANT_BOOL* result)
{
    return returns(result, [&] { return ask(&IAppCommandSite::Submit, candidate); });
}

STDMETHODIMP AppDialogEvents::OfferCommand(IAppCommand* candidate, VARIANT_BOOL* result)
{
    return returns(result, [&] { return ask(&IAppCommandSite::Offer, candidate); });
}

bool AppDialogEvents::ask(Question question, IAppCommand* candidate) const
{
    const auto site = sink_.as<IAppCommandSite>();
    if (!site)
        return false;
    SetErrorInfo(0, nullptr); // what comes out of the call is to be told from what was there before
    VARIANT_BOOL answer = VARIANT_FALSE;
    if (const HRESULT outcome = (site.get()->*question)(candidate, &answer); FAILED(outcome))
        throw Failure::ofHost(outcome);
    return owned(answer);
}

} // namespace korvane
