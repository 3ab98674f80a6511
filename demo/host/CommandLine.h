// What the command line asks for.
#pragma once

#include <span>
#include <string>

namespace korvane::host
{

/// The options, for who gets them wrong.
extern const wchar_t* const usage;

struct Options
{
    std::wstring database;   ///< file; empty for the default one
    std::wstring account;    ///< login name; empty for the built-in administrator
    std::wstring tourFolder; ///< where the tour puts its pictures; empty for no tour
    bool verbose = false;    ///< the tour tells all its details
    bool empty = false;      ///< a new database stays without a sample

    bool tour() const noexcept { return !tourFolder.empty(); }
};

/// Reads the arguments after the program's name. Throws a Failure that says what is wrong with them.
Options readOptions(std::span<const std::wstring> arguments);

} // namespace korvane::host
