// What the tour tells on the standard output.
#pragma once

#include <string_view>

namespace korvane::host
{

/// Writes a line of text as UTF-8 at once, so that it is there whatever comes.
void print(std::string_view indentation, std::wstring_view line);

/// The same for each line of a text.
void printLines(std::string_view indentation, std::wstring_view text);

} // namespace korvane::host
