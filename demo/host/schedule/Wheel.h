// Turns of a mouse wheel, or of a touchpad that tells them in small parts.
#pragma once

#include "framework/com/Platform.h"

namespace korvane::host
{

/// Adds up the parts.
class WheelTurns
{
public:
    /// @param delta as the message tells it.
    /// @param perNotch how much one notch of a wheel is worth.
    /// @return how much has come together; the rest counts for the next time.
    int add(int delta, int perNotch) noexcept
    {
        rest_ += delta * perNotch;
        const int whole = rest_ / WHEEL_DELTA;
        rest_ -= whole * WHEEL_DELTA;
        return whole;
    }

private:
    int rest_ = 0;
};

/// Lines per notch, as the user has chosen.
int wheelLines(int linesOfAPage) noexcept;
/// The same for a wheel, or a tilt, that goes sideways.
int wheelColumns() noexcept;

} // namespace korvane::host
