// Decimal digits of a number.
#pragma once

#include <charconv>
#include <iterator>
#include <string>

namespace korvane
{

/// As std::to_wstring, whose formatted output would be the largest part of a small DLL.
inline std::wstring decimal(long number)
{
    char digits[12];
    auto* const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    return {std::begin(digits), end};
}

} // namespace korvane
