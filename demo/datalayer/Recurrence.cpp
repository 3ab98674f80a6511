#include "demo/datalayer/Recurrence.h"

namespace korvane::store
{

std::optional<Rule> ruleIn(IRecurrence* recurrence)
{
    if (!recurrence)
        return std::nullopt;
    const ComPtr<IRecurrence> held(recurrence);
    return Rule{fetch(held, &IRecurrence::get_Kind), fetch(held, &IRecurrence::get_Interval),
                fetch(held, &IRecurrence::get_Count), fetch(held, &IRecurrence::get_Anchor)};
}

} // namespace korvane::store
