// What a tour consists of.
#pragma once

#include "demo/host/tour/Visitor.h"

#include <span>

namespace korvane::host
{

struct Step
{
    const wchar_t* title;
    void (*run)(Visitor& visitor);
};

/// Steps that build on each other, in a database of their own.
struct Chapter
{
    const wchar_t* title;
    std::span<const Step> steps;
    /// What stands in the database, to be told after each step.
    std::vector<std::wstring> (*rows)(Visitor& visitor);
};

} // namespace korvane::host
