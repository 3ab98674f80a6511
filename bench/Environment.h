// What the figures were taken on.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace korvane::bench
{

/// Names and values, in the order in which they are shown.
using Environment = std::vector<std::pair<std::string, std::string>>;

Environment environment();

/// UTF-16 as the UTF-8 of the outputs.
std::string utf8(const wchar_t* text);

} // namespace korvane::bench
