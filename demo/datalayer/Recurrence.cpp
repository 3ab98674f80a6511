#include "demo/datalayer/Recurrence.h"

namespace korvane::store
{

namespace
{

HRESULT given(long* value, long stored) noexcept
{
    return returns(value, [&] { return long(stored); });
}

long read(const ComPtr<IRecurrence>& recurrence, HRESULT (STDMETHODCALLTYPE IRecurrence::*property)(long*))
{
    long value = 0;
    call(recurrence, property, &value);
    return value;
}

} // namespace

STDMETHODIMP Recurrence::get_Kind(long* value)
{
    return given(value, rule_.kind);
}

STDMETHODIMP Recurrence::get_Interval(long* value)
{
    return given(value, rule_.interval);
}

STDMETHODIMP Recurrence::put_Interval(long value)
{
    rule_.interval = value;
    return S_OK;
}

STDMETHODIMP Recurrence::get_Count(long* value)
{
    return given(value, rule_.count);
}

STDMETHODIMP Recurrence::put_Count(long value)
{
    rule_.count = value;
    return S_OK;
}

STDMETHODIMP Recurrence::get_Anchor(long* value)
{
    return given(value, rule_.anchor);
}

STDMETHODIMP Recurrence::put_Anchor(long value)
{
    rule_.anchor = value;
    return S_OK;
}

std::optional<Rule> ruleIn(IRecurrence* recurrence)
{
    if (!recurrence)
        return std::nullopt;
    const ComPtr<IRecurrence> held(recurrence);
    return Rule{read(held, &IRecurrence::get_Kind), read(held, &IRecurrence::get_Interval),
                read(held, &IRecurrence::get_Count), read(held, &IRecurrence::get_Anchor)};
}

} // namespace korvane::store
