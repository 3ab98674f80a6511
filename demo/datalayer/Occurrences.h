// When the occurrences of a repeating activity are.
#pragma once

#include "demo/datalayer/Activity.h"

#include <optional>

namespace korvane::store
{

/// Whether a date is one that activities can have: from 1900 to the end of the year 9999.
bool isPossible(OleDate date) noexcept;

/// Occurrence 1 has the activity's own times, and occurrence n those of the (n-1)-th period counted by the rule,
/// at the same time of day. Periods that lack the day (31 April, 29 February) keep their number and have no
/// occurrence, so that no number ever moves to another date. Empty where there is no such occurrence.
std::optional<Activity> occurrenceOf(const Activity& activity, const Rule& rule, long number);

/// Whether something from t0 to t1 touches the time between two dates. What takes no time touches from where
/// it is.
inline bool touches(OleDate t0, OleDate t1, OleDate from, OleDate to) noexcept
{
    return t0.days < to.days && (t1.days > from.days || t0.days >= from.days);
}

struct Numbers
{
    long first;
    long last; ///< smaller than first when there are none
};

/// Among these are the numbers of all occurrences that touch the time between two dates, and few others.
Numbers numbersBetween(const Activity& activity, const Rule& rule, OleDate from, OleDate to);

} // namespace korvane::store
