// The figures, as a table for people and as JSON for programs.
#pragma once

#include "bench/Environment.h"
#include "bench/Measurement.h"

#include <optional>
#include <string>
#include <vector>

namespace korvane::bench
{

/// One figure. A figure with an aim is met when it is no larger than that.
struct Figure
{
    std::string group;
    std::string name;
    std::string platform; ///< what the platform's side of a comparison is; empty for a plain value
    std::optional<Comparison> compared;
    double value = 0; ///< the ratio of a comparison, else the value itself
    std::string unit; ///< of a plain value
    std::optional<double> aim;

    bool met() const noexcept { return !aim || value <= *aim; }
};

class Report
{
public:
    void add(std::string group, std::string name, std::string platform, const Comparison& comparison,
             std::optional<double> aim = std::nullopt);
    void add(std::string group, std::string name, double value, std::string unit,
             std::optional<double> aim = std::nullopt);
    void failed(std::string group, std::string reason);

    const std::vector<Figure>& figures() const noexcept { return figures_; }
    bool complete() const noexcept { return failures_.empty(); }

    std::string table(const Environment& environment) const;
    std::string json(const Environment& environment) const;

private:
    struct FailedGroup
    {
        std::string group;
        std::string reason;
    };

    std::vector<Figure> figures_;
    std::vector<FailedGroup> failures_;
};

} // namespace korvane::bench
