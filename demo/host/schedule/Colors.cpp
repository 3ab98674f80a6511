#include "demo/host/schedule/Colors.h"

#include <cmath>

namespace korvane::host
{

namespace
{

/// The light that a colour gives, 0 to 1: the eye takes green for the brightest and blue for the darkest.
double luminance(COLORREF color) noexcept
{
    const auto linear = [](BYTE part) {
        const double value = part / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
           0.0722 * linear(GetBValue(color));
}

} // namespace

COLORREF blend(COLORREF first, COLORREF second, int percentOfFirst) noexcept
{
    const auto mixed = [&](int one, int other) {
        return static_cast<BYTE>((one * percentOfFirst + other * (100 - percentOfFirst)) / 100);
    };
    return RGB(mixed(GetRValue(first), GetRValue(second)), mixed(GetGValue(first), GetGValue(second)),
               mixed(GetBValue(first), GetBValue(second)));
}

COLORREF paper() noexcept
{
    return GetSysColor(COLOR_WINDOW);
}
COLORREF accent() noexcept
{
    return GetSysColor(COLOR_HIGHLIGHT);
}
COLORREF lineColor() noexcept
{
    return blend(paper(), GetSysColor(COLOR_BTNSHADOW), 55);
}
COLORREF faintLineColor() noexcept
{
    return blend(paper(), GetSysColor(COLOR_BTNSHADOW), 85);
}
COLORREF headerColor() noexcept
{
    return GetSysColor(COLOR_BTNFACE);
}

COLORREF textColorOn(COLORREF background) noexcept
{
    const double light = luminance(background);
    const double contrastOfBlack = (light + 0.05) / 0.05;
    const double contrastOfWhite = 1.05 / (light + 0.05);
    return contrastOfBlack > contrastOfWhite ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

} // namespace korvane::host
