// What an activity is made of.
#pragma once

#include "framework/com/Variant.h"

#include <optional>
#include <string>

namespace korvane::store
{

struct Activity
{
    long name = 0; ///< the resource that it is booked for
    long type = 0;
    OleDate t0;
    OleDate t1;
    std::wstring text;
};

/// When an activity repeats.
struct Rule
{
    enum Kind : long
    {
        day = 1,
        week = 2,
        month = 3,
        year = 4,
        easter = 5
    };

    long kind = 0;
    long interval = 0; ///< periods left out between two occurrences
    long count = 10;   ///< numbers that there are
    long anchor = 0;   ///< kept for the callers

    bool isKnown() const noexcept { return kind >= day && kind <= easter; }
};

// As the trace shows them.
std::wstring shown(const Activity& activity);
std::wstring shown(const std::optional<Rule>& rule);

} // namespace korvane::store
