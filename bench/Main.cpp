// usage: korvane_bench [--quick] [--json FILE] [GROUP...]
//
// Prints a table; GROUP is texts, creation, dialogs, filling, activities, arranging, messages, rows, calls or size. The library
// must be registered.
// The exit code is 0 when everything was measured, whether or not it meets its aim, 1 when not, and 2 for
// arguments that it does not know.
#include "bench/Benchmarks.h"
#include "bench/Library.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string_view>

namespace korvane::bench
{

namespace
{

struct Group
{
    const char* name;
    void (*measure)(Report& report, const Effort& effort);
};

constexpr Group groups[] = {
    {"texts", &measureTexts},       {"creation", &measureCreation},     {"dialogs", &measureDialogs},
    {"filling", &measureFilling},   {"activities", &measureActivities}, {"arranging", &measureArranging},
    {"messages", &measureMessages}, {"rows", &measureInfoRows},         {"calls", &measureCalls},
    {"size", &measureSize},
};

struct Arguments
{
    Effort effort;
    std::string jsonFile;
    std::vector<std::string_view> chosen;

    bool wants(const Group& group) const
    {
        return chosen.empty() || std::find(chosen.begin(), chosen.end(), group.name) != chosen.end();
    }
};

bool isGroup(std::string_view name)
{
    return std::any_of(std::begin(groups), std::end(groups),
                       [&](const Group& group) { return group.name == name; });
}

bool read(int count, char** values, Arguments& arguments)
{
    for (int index = 1; index < count; ++index)
    {
        const std::string_view value = values[index];
        if (value == "--quick")
            arguments.effort.divisor = 20;
        else if (value == "--json" && index + 1 < count)
            arguments.jsonFile = values[++index];
        else if (isGroup(value))
            arguments.chosen.push_back(value);
        else
            return false;
    }
    return true;
}

std::string describe(const Failure& failure)
{
    char number[16];
    std::snprintf(number, sizeof number, "0x%08lX", static_cast<unsigned long>(failure.number()));
    return std::string(number) + " " + utf8(failure.description().c_str());
}

void measure(const Group& group, const Effort& effort, Report& report)
{
    try
    {
        group.measure(report, effort);
    }
    catch (const Failure& failure)
    {
        report.failed(group.name, describe(failure));
    }
    catch (const std::exception& error)
    {
        report.failed(group.name, error.what());
    }
}

int run(const Arguments& arguments)
{
    // The library stays loaded from here on; what it does once per process is done.
    const auto resources = create<IResources>(resourcesProgId);

    Report report;
    for (const Group& group : groups)
        if (arguments.wants(group))
            measure(group, arguments.effort, report);

    const Environment taken = environment();
    std::fputs(report.table(taken).c_str(), stdout);
    if (!arguments.jsonFile.empty())
    {
        std::ofstream file(arguments.jsonFile, std::ios::binary);
        file << report.json(taken);
        file.close();
        if (!file)
        {
            std::fprintf(stderr, "%s cannot be written\n", arguments.jsonFile.c_str());
            return EXIT_FAILURE;
        }
    }
    return report.complete() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

void measureSize(Report& report, const Effort&)
{
    WIN32_FILE_ATTRIBUTE_DATA file{};
    demand(GetFileAttributesExW(libraryPath().c_str(), GetFileExInfoStandard, &file),
           "the library's file is not found");
    report.add("Size", "KorvaneDlg.dll", file.nFileSizeLow / 1024.0, "KB", 480);
}

} // namespace korvane::bench

int main(int count, char** values)
{
    using namespace korvane::bench;
    Arguments arguments;
    if (!read(count, values, arguments))
    {
        std::fputs("usage: korvane_bench [--quick] [--json FILE] "
                   "[texts|creation|dialogs|filling|activities|arranging|messages|calls|size]...\n",
                   stderr);
        return 2;
    }
    if (FAILED(OleInitialize(nullptr)))
        return EXIT_FAILURE;
    int result = EXIT_FAILURE;
    try
    {
        result = run(arguments);
    }
    catch (const korvane::Failure& failure)
    {
        std::fprintf(stderr, "the library cannot be created (%s): is it registered?\n",
                     describe(failure).c_str());
    }
    OleUninitialize();
    return result;
}
