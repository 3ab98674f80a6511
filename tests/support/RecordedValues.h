// Values of the data layer's calls, as the records of calls show them.
#pragma once

#include "framework/com/Bstr.h"

#include <KorvaneData.h>

#include <optional>
#include <string>
#include <vector>

namespace korvane::test
{

/// What a recurrence rule holds.
struct Rule
{
    long kind = 0;
    long interval = 0;
    long count = 0;
    long anchor = 0;
    friend bool operator==(const Rule&, const Rule&) = default;
};

std::string quoted(std::wstring_view text);
std::string shown(long number);

/// "2026-11-20 09:00:00", to the nearest second, and the way back.
std::string stamp(DATE time);
DATE dateOf(const char* stamp);

// The arguments of a call, one after the other.
inline std::string argument(long number)
{
    return shown(number);
}
inline std::string argument(DATE time)
{
    return stamp(time);
}
inline std::string argument(BSTR text)
{
    return quoted(view(text));
}
inline std::string argument(const std::wstring& text)
{
    return test::quoted(text);
}
inline std::string argument(const std::string& shown)
{
    return shown;
}
inline std::string listed()
{
    return {};
}
template <class First, class... More> std::string listed(const First& first, const More&... more)
{
    return (argument(first) + ... + (", " + argument(more)));
}

/// Replaces a text that is given in and out.
inline void put(BSTR* text, const std::wstring& value)
{
    SysReAllocStringLen(text, value.data(), static_cast<UINT>(value.size()));
}

/// A link id: a number, or `Empty`.
std::string shownLink(const VARIANT& link);
std::optional<long> linkIn(const VARIANT& link);

/// Ids in an array of VARIANTs that hold Longs: `[5, 6]`. Anything else is shown by its type, as the data layer takes
/// nothing else.
std::string shownIds(const VARIANT& ids);
std::vector<long> idsIn(const VARIANT& ids);

/// A rule with interval, count and anchor: `week 0/10/0`, or `none`.
std::string shownRule(const std::optional<Rule>& rule);
std::optional<Rule> ruleIn(IRecurrence* rule);

} // namespace korvane::test
