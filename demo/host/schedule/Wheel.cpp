#include "demo/host/schedule/Wheel.h"

namespace korvane::host
{

namespace
{

UINT chosen(UINT setting) noexcept
{
    UINT value = 3; // of a new installation
    SystemParametersInfoW(setting, 0, &value, 0);
    return value;
}

} // namespace

int wheelLines(int linesOfAPage) noexcept
{
    const UINT lines = chosen(SPI_GETWHEELSCROLLLINES);
    return lines == WHEEL_PAGESCROLL ? linesOfAPage : static_cast<int>(lines);
}

int wheelColumns() noexcept
{
    return static_cast<int>(chosen(SPI_GETWHEELSCROLLCHARS));
}

} // namespace korvane::host
