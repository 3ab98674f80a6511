#include "demo/datalayer/Activity.h"

#include "demo/datalayer/Trace.h"

namespace korvane::store
{

std::wstring shown(const Activity& activity)
{
    return shown(activity.name) + line(L",", activity.type, activity.t0, activity.t1, activity.text);
}

std::wstring shown(const std::optional<Rule>& rule)
{
    return rule ? line(L"kind", rule->kind) + line(L", interval", rule->interval) +
                      line(L", count", rule->count) + line(L", anchor", rule->anchor)
                : L"Nothing";
}

} // namespace korvane::store
