#include "bench/Report.h"

#include <cmath>
#include <cstdio>

namespace korvane::bench
{

namespace
{

std::string number(double value, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

/// Left-aligned, or with a negative width right-aligned.
std::string cell(const std::string& text, int width)
{
    const auto columns = static_cast<std::size_t>(std::abs(width));
    const std::string padding(text.size() < columns ? columns - text.size() : 0, ' ');
    return (width < 0 ? padding + text : text + padding) + "  ";
}

/// A time with its deviation, in the unit that suits it.
std::string duration(const Statistic& seconds)
{
    struct Unit
    {
        double seconds;
        const char* name;
    };
    static constexpr Unit units[] = {{1, "s"}, {1e-3, "ms"}, {1e-6, "us"}, {1e-9, "ns"}};
    const Unit* unit = std::begin(units);
    while (unit + 1 != std::end(units) && seconds.median < unit->seconds)
        ++unit;
    const double median = seconds.median / unit->seconds;
    const int decimals = median < 10 ? 2 : median < 100 ? 1 : 0;
    return number(median, decimals) + " +-" + number(seconds.deviation / unit->seconds, decimals) + " " +
           unit->name;
}

std::string verdict(const Figure& figure)
{
    if (!figure.aim)
        return "";
    return figure.met() ? "met" : "MISSED";
}

std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char character : text)
    {
        if (character == '"' || character == '\\')
            result += '\\';
        result += static_cast<unsigned char>(character) < 0x20 ? ' ' : character;
    }
    return result + '"';
}

std::string member(const char* name, const std::string& json)
{
    return quoted(name) + ": " + json;
}

std::string statistic(const Statistic& value)
{
    char text[96];
    std::snprintf(text, sizeof text, R"({"median": %.6g, "mad": %.3g})", value.median, value.deviation);
    return text;
}

std::string figureJson(const Figure& figure)
{
    std::string json =
        "{" + member("group", quoted(figure.group)) + ", " + member("name", quoted(figure.name));
    json += ", " + member("value", number(figure.value, 4));
    if (figure.compared)
    {
        json += ", " + member("unit", quoted("ratio")) + ", " + member("platform", quoted(figure.platform));
        json += ", " + member("ratio", statistic(figure.compared->ratio));
        json += ", " + member("library_seconds", statistic(figure.compared->library));
        json += ", " + member("platform_seconds", statistic(figure.compared->platform));
        json += ", " + member("samples", std::to_string(figure.compared->samples));
    }
    else
        json += ", " + member("unit", quoted(figure.unit));
    if (figure.aim)
        json += ", " + member("aim", number(*figure.aim, 4)) + ", " +
                member("met", figure.met() ? "true" : "false");
    return json + "}";
}

} // namespace

void Report::add(std::string group, std::string name, std::string platform, const Comparison& comparison,
                 std::optional<double> aim)
{
    // The table comes at the end, and that may be some minutes away.
    std::fprintf(stderr, "%s, %s: %s against %s\n", group.c_str(), name.c_str(),
                 duration(comparison.library).c_str(), duration(comparison.platform).c_str());
    figures_.push_back({std::move(group),
                        std::move(name),
                        std::move(platform),
                        comparison,
                        comparison.ratio.median,
                        {},
                        aim});
}

void Report::add(std::string group, std::string name, double value, std::string unit,
                 std::optional<double> aim)
{
    figures_.push_back({std::move(group), std::move(name), {}, std::nullopt, value, std::move(unit), aim});
}

void Report::failed(std::string group, std::string reason)
{
    failures_.push_back({std::move(group), std::move(reason)});
}

std::string Report::table(const Environment& environment) const
{
    std::string text;
    for (const auto& [name, value] : environment)
        text += cell(name, 12) + value + '\n';

    std::string group;
    for (const Figure& figure : figures_)
    {
        if (figure.group != group)
        {
            group = figure.group;
            text += '\n' + cell(group, 46) + cell("library", -17) + cell("platform", -17) +
                    cell("ratio", -13) + cell("aim", -8) + cell("", 6) + "samples\n";
        }
        std::string line = cell("  " + figure.name, 46);
        if (figure.compared)
        {
            line += cell(duration(figure.compared->library), -17) +
                    cell(duration(figure.compared->platform), -17);
            line += cell(number(figure.value, 2) + " +-" + number(figure.compared->ratio.deviation, 2), -13);
        }
        else
            line += cell("", 17) + cell("", 17) + cell(number(figure.value, 2) + ' ' + figure.unit, -13);
        line += cell(figure.aim ? "<= " + number(*figure.aim, *figure.aim < 10 ? 2 : 0) : "", -8);
        line += cell(verdict(figure), 6);
        if (figure.compared)
            line += cell(std::to_string(figure.compared->samples), -7) + "against " + figure.platform;
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    for (const FailedGroup& failure : failures_)
        text += "\nnot measured: " + failure.group + ": " + failure.reason + '\n';
    text +=
        "\nTimes are medians with their median absolute deviation. A ratio is the median of the ratios of\n"
        "neighbouring samples, which were taken in turn.\n";
    return text;
}

std::string Report::json(const Environment& environment) const
{
    std::string text = "{\n  \"environment\": {\n";
    const char* separator = "";
    for (const auto& [name, value] : environment)
    {
        text += separator + ("    " + member(name.c_str(), quoted(value)));
        separator = ",\n";
    }
    text += "\n  },\n  \"figures\": [\n";
    separator = "";
    for (const Figure& figure : figures_)
    {
        text += separator + ("    " + figureJson(figure));
        separator = ",\n";
    }
    text += "\n  ],\n  \"not_measured\": [";
    separator = "";
    for (const FailedGroup& failure : failures_)
    {
        text += separator + ("{" + member("group", quoted(failure.group)) + ", " +
                             member("reason", quoted(failure.reason)) + "}");
        separator = ", ";
    }
    return text + "]\n}\n";
}

} // namespace korvane::bench
