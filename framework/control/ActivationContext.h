// Common controls version 6, whatever the host's manifest says.
#pragma once

#include "framework/com/Platform.h"

namespace korvane
{

/// While it lives, windows are created with the common controls that the module's manifest asks for.
class ControlsContext
{
public:
    ControlsContext() noexcept;
    ControlsContext(const ControlsContext&) = delete;
    ControlsContext& operator=(const ControlsContext&) = delete;
    ~ControlsContext();

private:
    ULONG_PTR cookie_ = 0;
};

/// Lets go of what the first ControlsContext made.
void releaseControlsContext() noexcept;

} // namespace korvane
