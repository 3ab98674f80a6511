#include "demo/datalayer/Occurrences.h"

#include "demo/datalayer/Easter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace korvane::store
{

namespace
{

using namespace std::chrono;

constexpr sys_days dayZero = 1899y / December / 30;
constexpr std::int64_t lastDay = (sys_days(9999y / December / 31) - dayZero).count();

// Days are counted as in OLE dates. The dates here are not before the first one, where the time of day counts
// backwards.
std::int64_t dayOf(OleDate date) noexcept
{
    return static_cast<std::int64_t>(std::floor(std::clamp(date.days, 0.0, static_cast<double>(lastDay))));
}

year_month_day calendarDate(std::int64_t day) noexcept
{
    return dayZero + days(day);
}

std::int64_t dayOf(sys_days date) noexcept
{
    return (date - dayZero).count();
}

std::int64_t yearOf(std::int64_t day) noexcept
{
    return static_cast<int>(calendarDate(day).year());
}

std::int64_t monthOf(std::int64_t day) noexcept
{
    return yearOf(day) * 12 + static_cast<unsigned>(calendarDate(day).month()) - 1;
}

std::int64_t easterOf(std::int64_t calendarYear) noexcept
{
    return dayOf(easterSunday(year(static_cast<int>(calendarYear))));
}

std::optional<std::int64_t> dayInMonth(std::int64_t month, std::chrono::day day) noexcept
{
    const year_month_day date(year(static_cast<int>(month / 12)),
                              std::chrono::month(static_cast<unsigned>(month % 12 + 1)), day);
    return date.ok() ? std::optional(dayOf(sys_days(date))) : std::nullopt;
}

/// The day that is a number of the rule's periods after the first one.
std::optional<std::int64_t> dayAfter(std::int64_t first, long kind, std::int64_t periods) noexcept
{
    switch (kind)
    {
    case Rule::day:
        return first + periods;
    case Rule::week:
        return first + 7 * periods;
    case Rule::month:
        return dayInMonth(monthOf(first) + periods, calendarDate(first).day());
    case Rule::year:
        return dayInMonth(monthOf(first) + 12 * periods, calendarDate(first).day());
    default:
        return easterOf(yearOf(first) + periods) + first - easterOf(yearOf(first));
    }
}

/// The number of periods from the one that holds the first day to the one that holds another.
std::int64_t periodsTo(std::int64_t day, std::int64_t first, long kind) noexcept
{
    switch (kind)
    {
    case Rule::day:
        return day - first;
    case Rule::week:
        return (day - first) / 7;
    case Rule::month:
        return monthOf(day) - monthOf(first);
    default:
        return yearOf(day) - yearOf(first);
    }
}

/// How many periods lie after the last possible date in any case: all that are more.
std::int64_t periodsLeft(std::int64_t first, long kind) noexcept
{
    return periodsTo(lastDay, first, kind);
}

OleDate shifted(OleDate date, std::int64_t byDays) noexcept
{
    return {date.days + static_cast<double>(byDays)};
}

} // namespace

bool isPossible(OleDate date) noexcept
{
    return date.days >= 2 && date.days < static_cast<double>(lastDay + 1);
}

std::optional<Activity> occurrenceOf(const Activity& activity, const Rule& rule, long number)
{
    if (number < 1 || number > rule.count)
        return std::nullopt;
    const std::int64_t first = dayOf(activity.t0);
    const std::int64_t periods = (std::int64_t(number) - 1) * (std::int64_t(rule.interval) + 1);
    if (periods > periodsLeft(first, rule.kind))
        return std::nullopt;
    const auto day = dayAfter(first, rule.kind, periods);
    if (!day)
        return std::nullopt;
    Activity result = activity;
    result.t0 = shifted(activity.t0, *day - first);
    result.t1 = shifted(activity.t1, *day - first);
    return isPossible(result.t1) ? std::optional(std::move(result)) : std::nullopt;
}

Numbers numbersBetween(const Activity& activity, const Rule& rule, OleDate from, OleDate to)
{
    // Days off Easter may lie in the year before or after.
    const std::int64_t slack = rule.kind == Rule::easter ? 1 : 0;
    const std::int64_t first = dayOf(activity.t0);
    const std::int64_t step = std::int64_t(rule.interval) + 1;
    const OleDate earliest{from.days - (activity.t1.days - activity.t0.days)};
    const std::int64_t before = periodsTo(std::max(dayOf(earliest), first), first, rule.kind) - slack;
    const std::int64_t until = periodsTo(dayOf(to), first, rule.kind) + slack;
    if (dayOf(to) < first)
        return {1, 0};
    return {static_cast<long>(std::max<std::int64_t>(before, 0) / step + 1),
            static_cast<long>(std::min<std::int64_t>(until / step + 1, rule.count))};
}

} // namespace korvane::store
