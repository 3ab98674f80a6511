// The schedule's colours: those of the system, and mixtures of them.
#pragma once

#include "framework/com/Platform.h"

namespace korvane::host
{

COLORREF blend(COLORREF first, COLORREF second, int percentOfFirst) noexcept;

COLORREF paper() noexcept;
COLORREF accent() noexcept;
COLORREF lineColor() noexcept;
COLORREF faintLineColor() noexcept;
COLORREF headerColor() noexcept;

/// Black or white, whichever has the better contrast with a colour.
COLORREF textColorOn(COLORREF background) noexcept;

} // namespace korvane::host
