#include "bench/Measurement.h"

#include "framework/com/Platform.h"

#include <algorithm>
#include <cmath>

namespace korvane::bench
{

namespace
{

constexpr int warmUps = 3;

double medianOf(std::vector<double>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 != 0)
        return *middle;
    return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

} // namespace

void demand(bool condition, const char* otherwise)
{
    if (!condition)
        throw MeasurementError(otherwise);
}

double now() noexcept
{
    static const double frequency = [] {
        LARGE_INTEGER ticks{};
        QueryPerformanceFrequency(&ticks);
        return static_cast<double>(ticks.QuadPart);
    }();
    LARGE_INTEGER count{};
    QueryPerformanceCounter(&count);
    return static_cast<double>(count.QuadPart) / frequency;
}

Statistic statisticOf(std::vector<double> samples)
{
    demand(!samples.empty(), "there are no samples");
    const double median = medianOf(samples);
    for (double& sample : samples)
        sample = std::abs(sample - median);
    return {median, medianOf(samples)};
}

Comparison compare(int samples, const Sample& library, const Sample& platform)
{
    for (int round = 0; round < warmUps; ++round)
    {
        library();
        platform();
    }
    std::vector<double> ofLibrary;
    std::vector<double> ofPlatform;
    std::vector<double> ratios;
    for (int round = 0; round < samples; ++round)
    {
        const bool libraryFirst = round % 2 == 0;
        const double first = libraryFirst ? library() : platform();
        const double second = libraryFirst ? platform() : library();
        ofLibrary.push_back(libraryFirst ? first : second);
        ofPlatform.push_back(libraryFirst ? second : first);
        demand(ofLibrary.back() > 0 && ofPlatform.back() > 0,
               "a sample took no time: the clock is too coarse for it");
        ratios.push_back(ofLibrary.back() / ofPlatform.back());
    }
    return {statisticOf(std::move(ofLibrary)), statisticOf(std::move(ofPlatform)),
            statisticOf(std::move(ratios)), samples};
}

double growthExponent(const std::vector<double>& sizes, const std::vector<double>& times)
{
    demand(sizes.size() == times.size() && sizes.size() > 1, "growth needs two sizes");
    const auto count = static_cast<double>(sizes.size());
    double sumX = 0;
    double sumY = 0;
    double sumXX = 0;
    double sumXY = 0;
    for (std::size_t index = 0; index < sizes.size(); ++index)
    {
        const double x = std::log(sizes[index]);
        const double y = std::log(times[index]);
        sumX += x;
        sumY += y;
        sumXX += x * x;
        sumXY += x * y;
    }
    return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX);
}

} // namespace korvane::bench
