#include "tests/support/RecordedValues.h"

#include "framework/com/Failure.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace korvane::test
{

namespace
{

constexpr double secondsOfDay = 86400;

/// Day 0 of OLE dates.
constexpr std::chrono::sys_days firstDay = std::chrono::year(1899) / 12 / 30;

/// The elements of an array of VARIANTs; empty for anything else.
std::optional<std::vector<VARIANT>> elements(const VARIANT& array)
{
    if (array.vt != (VT_ARRAY | VT_VARIANT) || SafeArrayGetDim(array.parray) != 1)
        return std::nullopt;
    const auto& bound = array.parray->rgsabound[0];
    const auto* first = static_cast<const VARIANT*>(array.parray->pvData);
    return std::vector<VARIANT>(first, first + bound.cElements);
}

std::string shownType(VARTYPE type)
{
    return "type " + std::to_string(type);
}

} // namespace

std::string quoted(std::wstring_view text)
{
    std::string result(1, '"');
    for (const wchar_t character : text)
        result += character < 0x80 ? static_cast<char>(character) : '?';
    return result + '"';
}

std::string shown(long number)
{
    return std::to_string(number);
}

std::string stamp(DATE time)
{
    const auto seconds = static_cast<long long>(std::llround(time * secondsOfDay));
    const auto ofDay = static_cast<int>(seconds % static_cast<int>(secondsOfDay));
    const auto days = static_cast<int>(seconds / static_cast<int>(secondsOfDay));
    const std::chrono::year_month_day date(firstDay + std::chrono::days(days));
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), ofDay / 3600,
                  ofDay / 60 % 60, ofDay % 60);
    return text;
}

DATE dateOf(const char* stamp)
{
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (std::sscanf(stamp, "%d-%u-%u %d:%d:%d", &year, &month, &day, &hour, &minute, &second) != 6)
        throw Failure(E_INVALIDARG);
    const std::chrono::sys_days date =
        std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
    return static_cast<double>((date - firstDay).count()) +
           (hour * 3600 + minute * 60 + second) / secondsOfDay;
}

std::string shownLink(const VARIANT& link)
{
    if (link.vt == VT_EMPTY)
        return "Empty";
    return link.vt == VT_I4 ? shown(link.lVal) : shownType(link.vt);
}

std::optional<long> linkIn(const VARIANT& link)
{
    return link.vt == VT_I4 ? std::optional(link.lVal) : std::nullopt;
}

std::string shownIds(const VARIANT& ids)
{
    const auto values = elements(ids);
    if (!values)
        return shownType(ids.vt);
    std::string result;
    for (const VARIANT& value : *values)
        result +=
            (result.empty() ? "" : ", ") + (value.vt == VT_I4 ? shown(value.lVal) : shownType(value.vt));
    return '[' + result + ']';
}

std::vector<long> idsIn(const VARIANT& ids)
{
    std::vector<long> result;
    for (const VARIANT& value : elements(ids).value_or(std::vector<VARIANT>()))
        if (value.vt == VT_I4)
            result.push_back(value.lVal);
    return result;
}

std::string shownRule(const std::optional<Rule>& rule)
{
    static constexpr const char* kinds[] = {"day", "week", "month", "year", "Easter"};
    if (!rule)
        return "none";
    const std::string kind =
        rule->kind >= 1 && rule->kind <= 5 ? kinds[rule->kind - 1] : "kind " + shown(rule->kind);
    return kind + ' ' + shown(rule->interval) + '/' + shown(rule->count) + '/' + shown(rule->anchor);
}

std::optional<Rule> ruleIn(IRecurrence* rule)
{
    if (!rule)
        return std::nullopt;
    Rule result{};
    require(rule->get_Kind(&result.kind));
    require(rule->get_Interval(&result.interval));
    require(rule->get_Count(&result.count));
    require(rule->get_Anchor(&result.anchor));
    return result;
}

} // namespace korvane::test
