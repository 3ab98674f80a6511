// A field that shows a colour.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

/// A field of one colour.
class Swatch : public Control
{
public:
    Swatch(Surface surface, const Design& design) : Control(surface, design) {}

    /// @param color RGB; below 1 for none.
    void setFillColor(long color);
    long FillColor() const noexcept { return color_; }

    void draw(const DRAWITEMSTRUCT& item) const override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    long color_ = 0;
};

} // namespace korvane
