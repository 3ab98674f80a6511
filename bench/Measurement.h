// Timing: what the library takes against what the raw platform takes, sample by sample in turn.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace korvane::bench
{

/// A measurement could not be made.
class MeasurementError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Throws a MeasurementError when something did not happen that was to be measured.
void demand(bool condition, const char* otherwise);

/// Seconds since some fixed moment.
double now() noexcept;

/// The seconds that one of many runs of the body takes.
template <class Body> double perRun(int runs, Body&& body)
{
    const double start = now();
    for (int run = 0; run < runs; ++run)
        body();
    return (now() - start) / runs;
}

/// A median, and the median absolute deviation from it.
struct Statistic
{
    double median = 0;
    double deviation = 0;
};

Statistic statisticOf(std::vector<double> samples);

/// One sample: the seconds that one operation took.
using Sample = std::function<double()>;

struct Comparison
{
    Statistic library;  ///< seconds
    Statistic platform; ///< seconds
    Statistic ratio;    ///< of each sample to the platform's sample taken next to it
    int samples = 0;
};

/// Takes samples of both in turn, each going first as often as the other: what disturbs the machine for a
/// while disturbs both.
Comparison compare(int samples, const Sample& library, const Sample& platform);

/// The exponent of the power of the size that the times grow with: the slope of the least squares line through
/// the logarithms.
double growthExponent(const std::vector<double>& sizes, const std::vector<double>& times);

} // namespace korvane::bench
