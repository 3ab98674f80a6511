#include "demo/host/schedule/Colors.h"

namespace korvane::host
{

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
    // The eye takes green for the brightest and blue for the darkest.
    const int brightness =
        (299 * GetRValue(background) + 587 * GetGValue(background) + 114 * GetBValue(background)) / 1000;
    return brightness >= 140 ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

} // namespace korvane::host
