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

struct Extent
{
    float width = 0;
    float height = 0;
};

inline int toPixels(float twips, int dpi) noexcept
{
    return static_cast<int>(std::lround(twips * static_cast<float>(dpi) / 1440.0f));
}

inline float toTwips(float pixels, int dpi) noexcept
{
    return pixels * 1440.0f / static_cast<float>(dpi);
}

/// The nearest length that is a whole number of pixels.
inline float fitToPixels(float twips, int dpi) noexcept
{
    return toTwips(static_cast<float>(toPixels(twips, dpi)), dpi);
}

/// OLE measures a control in HIMETRIC, hundredths of a millimetre.
inline long toHimetric(float twips) noexcept
{
    return std::lround(twips * 2540.0f / 1440.0f);
}

inline float fromHimetric(long length) noexcept
{
    return static_cast<float>(length) * 1440.0f / 2540.0f;
}

} // namespace korvane
