#include "demo/datalayer/Easter.h"

namespace korvane::store
{

/// The church's reckoning, by the age of its moon: the paschal full moon is the first one from 21 March on, and
/// Easter is the Sunday after it.
std::chrono::sys_days easterSunday(std::chrono::year year) noexcept
{
    using namespace std::chrono;
    const int number = static_cast<int>(year);
    const int century = number / 100;
    const int placeInMoonCycle = number % 19;

    // What the moon lags behind the cycle of 19 years: the leap days that centuries leave out, and the moon's own
    // correction of 8 days in 25 centuries.
    const int leapDaysLeftOut = century - century / 4;
    const int moonCorrection = (8 * century + 13) / 25;
    int daysToFullMoon = (19 * placeInMoonCycle + leapDaysLeftOut - moonCorrection + 15) % 30;

    // A moon of 30 days is cut to 29 where the full moon would come too late, or twice in a cycle.
    if (daysToFullMoon == 29 || (daysToFullMoon == 28 && placeInMoonCycle > 10))
        --daysToFullMoon;

    const sys_days fullMoon = sys_days(year / March / 21) + days(daysToFullMoon);
    const days toSunday = Sunday - weekday(fullMoon);
    return fullMoon + (toSunday == days(0) ? days(7) : toSunday);
}

} // namespace korvane::store
