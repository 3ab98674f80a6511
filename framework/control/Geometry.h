// Places on a dialog. Everything is kept in twips (1440 to the inch) as single-precision numbers, as layouts are
// designed and rescaled in them; pixels appear only where a window is placed.
#pragma once

#include "framework/com/Platform.h"

#include <cmath>

namespace korvane
{

struct Place
{
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;

    float bottom() const noexcept { return top + height; }
};

inline int toPixels(float twips, int dpi) noexcept
{
    return static_cast<int>(std::lround(twips * static_cast<float>(dpi) / 1440.0f));
}

/// The nearest length that is a whole number of pixels.
inline float fitToPixels(float twips, int dpi) noexcept
{
    return static_cast<float>(toPixels(twips, dpi)) * 1440.0f / static_cast<float>(dpi);
}

/// OLE measures a control in HIMETRIC, hundredths of a millimetre.
inline long toHimetric(float twips) noexcept
{
    return std::lround(twips * 2540.0f / 1440.0f);
}

} // namespace korvane
