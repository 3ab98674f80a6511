#include "demo/host/schedule/Moment.h"

#include <array>
#include <cmath>

namespace korvane::host
{

namespace
{

constexpr double secondsPerDay = 86400;

/// Days since a Saturday, the one that OLE dates count from.
long dayNumber(OleDate moment) noexcept
{
    return static_cast<long>(std::floor(moment.days));
}

SYSTEMTIME systemTime(OleDate moment) noexcept
{
    SYSTEMTIME time{};
    VariantTimeToSystemTime(moment.days, &time);
    return time;
}

} // namespace

OleDate later(OleDate moment, long minutes) noexcept
{
    const double days = moment.days + static_cast<double>(minutes) / minutesPerDay;
    return {std::round(days * secondsPerDay) / secondsPerDay};
}

long minutesBetween(OleDate from, OleDate to) noexcept
{
    return std::lround((to.days - from.days) * minutesPerDay);
}

OleDate startOfDay(OleDate moment) noexcept
{
    // A fraction short of midnight is midnight.
    return {std::floor(std::round(moment.days * secondsPerDay) / secondsPerDay)};
}

OleDate startOfWeek(OleDate moment) noexcept
{
    constexpr long firstMonday = 2;
    const OleDate day = startOfDay(moment);
    const long past = (dayNumber(day) - firstMonday) % 7;
    return {day.days - static_cast<double>(past < 0 ? past + 7 : past)};
}

bool isWeekend(OleDate moment) noexcept
{
    return startOfDay(moment).days - startOfWeek(moment).days >= 5;
}

OleDate morningOf(OleDate day) noexcept
{
    return later(startOfDay(day), 7 * 60);
}

OleDate startOfWork(OleDate day) noexcept
{
    return later(startOfDay(day), 9 * 60);
}

OleDate now() noexcept
{
    SYSTEMTIME time{};
    GetLocalTime(&time);
    OleDate result;
    SystemTimeToVariantTime(&time, &result.days);
    return result;
}

std::wstring shownDay(OleDate moment, const wchar_t* picture)
{
    const SYSTEMTIME time = systemTime(startOfDay(moment));
    std::array<wchar_t, 80> text{};
    GetDateFormatW(LOCALE_USER_DEFAULT, 0, &time, picture, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::wstring shownTime(OleDate moment)
{
    const SYSTEMTIME time = systemTime(moment);
    std::array<wchar_t, 80> text{};
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text.data(),
                   static_cast<int>(text.size()));
    return text.data();
}

} // namespace korvane::host
