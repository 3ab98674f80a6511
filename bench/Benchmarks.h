// The groups of measurements.
#pragma once

#include "bench/Report.h"

namespace korvane::bench
{

/// How many samples: all of them, or a few to see that everything works.
struct Effort
{
    int divisor = 1;
    int samples(int full) const noexcept { return full / divisor > 3 ? full / divisor : 3; }
};

void measureTexts(Report& report, const Effort& effort);
void measureCreation(Report& report, const Effort& effort);
void measureDialogs(Report& report, const Effort& effort);
void measureFilling(Report& report, const Effort& effort);
void measureActivities(Report& report, const Effort& effort);
void measureArranging(Report& report, const Effort& effort);
void measureMessages(Report& report, const Effort& effort);
void measureInfoRows(Report& report, const Effort& effort);
void measureCalls(Report& report, const Effort& effort);
void measureSize(Report& report, const Effort& effort);

} // namespace korvane::bench
