// Room for texts that are longer than those that a layout was designed with.
//
// A control takes the room that is free at its right first. Where that is not enough, the layout is drawn apart there:
// what stands to the right moves on, and what spans the place becomes wider. The buttons at the end of a dialog grow to
// the left.
#pragma once

#include "framework/control/Frame.h"

#include <vector>

namespace korvane
{

class TextRoom
{
public:
    /// @param width of the dialog. @param fixed whether the dialog lays itself out in its size: then only its buttons
    /// grow.
    TextRoom(const std::vector<Control*>& controls, float width, bool fixed)
        : controls_(controls), width_(width), fixed_(fixed)
    {
    }

    /// Widens the controls until each shows all of its caption.
    /// @return how much wider the dialog is to become.
    float make();

private:
    void widen(Control& control);
    void widenToLeft(Control& control);
    void keepWithin();
    float roomAtRight(const Control& control) const;
    void drawApart(float at, float by, const Control* reaching = nullptr);

    const std::vector<Control*>& controls_;
    float width_;
    bool fixed_;
    float wider_ = 0;
};

} // namespace korvane
