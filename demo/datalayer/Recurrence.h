// The rule of a repeating activity, as its holder works with it.
#pragma once

#include "demo/datalayer/Activity.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

#include <optional>

namespace korvane::store
{

/// A copy: what is set counts from when the rule is stored, which is also when it is checked.
class Recurrence final : public Object<Recurrence, Inherits<IRecurrence>, IRecurrence>
{
public:
    explicit Recurrence(const Rule& rule) : rule_(rule) {}

    STDMETHODIMP get_Kind(long* value) override { return read(value, rule_.kind); }
    STDMETHODIMP get_Interval(long* value) override { return read(value, rule_.interval); }
    STDMETHODIMP put_Interval(long value) override { return write(rule_.interval, value); }
    STDMETHODIMP get_Count(long* value) override { return read(value, rule_.count); }
    STDMETHODIMP put_Count(long value) override { return write(rule_.count, value); }
    STDMETHODIMP get_Anchor(long* value) override { return read(value, rule_.anchor); }
    STDMETHODIMP put_Anchor(long value) override { return write(rule_.anchor, value); }

private:
    Rule rule_;
};

/// What a rule object holds, whoever made it; empty for Nothing.
std::optional<Rule> ruleIn(IRecurrence* recurrence);

} // namespace korvane::store
