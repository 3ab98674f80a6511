// What the tour tells: everything in a file, and on the standard output a line for each step, or everything too.
#pragma once

#include "framework/com/Platform.h"

#include <string>
#include <string_view>

namespace korvane::host
{

/// Writes a line to the standard output as UTF-8 at once, so that it is there whatever comes.
void print(std::wstring_view line);

class Report
{
public:
    Report(const std::wstring& file, bool everything);
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    ~Report();

    /// A detail, or several lines of them.
    void detail(std::wstring_view text, int indentation = 3);
    /// What everybody is told. Where all is told, the details have said it.
    void summary(std::wstring_view line);
    void both(std::wstring_view line)
    {
        detail(line, 0);
        summary(line);
    }

private:
    HANDLE file_;
    bool everything_;
};

} // namespace korvane::host
