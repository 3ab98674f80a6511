// The steps of the tour through the groups.
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

std::span<const Step> groupSteps() noexcept;

} // namespace korvane::host
