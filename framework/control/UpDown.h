// Arrows that count a number up and down, also by the arrow keys in the box beside them.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

class UpDown : public Control
{
public:
    /// @param buddy the box of the number, which the owner keeps in line.
    UpDown(Surface surface, const Design& design, const Control& buddy, int minimum, int maximum)
        : Control(surface, design), buddy_(buddy), minimum_(minimum), maximum_(maximum)
    {
    }

    int Min() const noexcept { return minimum_; }
    int Max() const noexcept { return maximum_; }
    int Value() const noexcept;
    /// The nearest value within the limits. Where it is below them, Up leads to the least one.
    void setValue(int value) const noexcept;

    std::function<void()> onChange; ///< by the user; setValue does not raise it

    bool stretches() const noexcept override { return false; }
    void scrolled() override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    int position() const noexcept; ///< the value, or one step below the limits
    void setLimits(int minimum) const noexcept;

    const Control& buddy_;
    int minimum_;
    int maximum_;
};

} // namespace korvane
