#include "framework/DialogEvents.h"

#include "framework/com/LateBound.h"

namespace korvane
{

namespace
{

enum DialogEvent : DISPID
{
    eventDone = 1,
    eventError = 2,
    eventResize = 3,
    eventSubmit = 4
};

/// A handler raises as scripts do, or returns what a method has told it, whose error information is the thread's then.
/// None where there is no handler: such a subscriber says that it knows no such event, and does no more. The same number
/// may be the command's failure, which has a text, or be that of a handler that has got further.
std::optional<Failure> failureOfHandler(HRESULT outcome, EXCEPINFO& exception, bool executed)
{
    if (outcome == DISP_E_EXCEPTION)
        return failureOfInvoke(outcome, exception);
    Failure told = Failure::ofHost(outcome);
    if (!told.description().empty())
        return told;
    const bool unknown = outcome == DISP_E_MEMBERNOTFOUND || outcome == DISP_E_UNKNOWNNAME;
    return unknown && !executed ? std::nullopt : std::optional(Failure(outcome));
}

/// What a subscriber answers to a submitted command.
struct Answer
{
    VARIANT_BOOL executed = VARIANT_FALSE;
    long number = 0;
    Bstr source;
    Bstr description;
};

} // namespace

STDMETHODIMP DialogEvents::Done(VARIANT_BOOL cancelled)
{
    return raise(eventDone, {Variant(cancelled != VARIANT_FALSE)});
}

STDMETHODIMP DialogEvents::Error(long number, BSTR source, BSTR description)
{
    return guard([&] {
        require(raise(eventError,
                      {Variant(number), Variant(Bstr(view(source))), Variant(Bstr(view(description)))}));
    });
}

STDMETHODIMP DialogEvents::Resize()
{
    const SIZE size = size_();
    return raise(eventResize, {Variant(long{size.cx}), Variant(long{size.cy})});
}

STDMETHODIMP DialogEvents::Accepts(IAppCommand*, VARIANT_BOOL* result)
{
    return returns(result, [&] { return subscribers_->hasSubscribers(); });
}

STDMETHODIMP DialogEvents::Offer(IAppCommand*, VARIANT_BOOL* result)
{
    return returns(result, [] { return false; });
}

STDMETHODIMP DialogEvents::Submit(IAppCommand* candidate, VARIANT_BOOL* result)
{
    return returns(result, [&] { return submit(candidate); });
}

HRESULT DialogEvents::raise(DISPID event, std::initializer_list<Variant> arguments) noexcept
{
    return guard([&] { subscribers_->raise(event, arguments); });
}

/// Every subscriber is asked, and one that executes the command is enough: what it has done is not to be done again
/// because another one has failed. One that says so and fails then has not done it.
bool DialogEvents::submit(IAppCommand* candidate)
{
    const Variant command{ComPtr<IDispatch>(candidate)};
    bool executed = false;
    std::optional<Failure> failure;
    Answer answer;
    VARIANT arguments[5]{}; // the last one first
    arguments[4] = command.get();
    const auto refer = [&](int index, VARTYPE type, void* value) {
        arguments[index].vt = static_cast<VARTYPE>(VT_BYREF | type);
        arguments[index].byref = value;
    };
    refer(3, VT_BOOL, &answer.executed);
    refer(2, VT_I4, &answer.number);
    refer(1, VT_BSTR, answer.source.inOut());
    refer(0, VT_BSTR, answer.description.inOut());
    subscribers_->raise(eventSubmit, arguments, [&](HRESULT outcome, EXCEPINFO& exception) {
        std::optional<Failure> own;
        if (FAILED(outcome))
            own = failureOfHandler(outcome, exception, answer.executed != VARIANT_FALSE);
        if (!own && answer.number != 0)
            own = Failure(answer.number, answer.source.view(), answer.description.view());
        executed = executed || (answer.executed != VARIANT_FALSE && !own);
        if (own && !failure)
            failure = std::move(own);
        answer.executed = VARIANT_FALSE;
        answer.number = 0;
        answer.source = Bstr();
        answer.description = Bstr();
        SetErrorInfo(0, nullptr); // what this one has left is not the next one's
    });
    if (failure && !executed)
        throw *failure;
    return executed;
}

} // namespace korvane
