// A field that shows a colour, and may be clicked. Its text is not shown: screen readers name it by that.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

class Swatch : public Control
{
public:
    enum class Kind
    {
        shown,  ///< is looked at only
        first,  ///< is clicked, also by the space bar, and begins a group in which the arrow keys lead on
        further ///< is another one of the group
    };

    Swatch(Surface surface, const Design& design, Kind kind = Kind::shown)
        : Control(surface, design), kind_(kind)
    {
    }

    /// @param color RGB; below 1 for none.
    void setFillColor(long color);
    long FillColor() const noexcept { return color_; }

    bool Raised() const noexcept { return raised_; }
    void setRaised(bool raised);

    std::function<void()> onClick; ///< by the user

    bool stretches() const noexcept override { return false; }
    void notify(WORD code) override;
    void draw(const DRAWITEMSTRUCT& item) const override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    Kind kind_;
    long color_ = 0;
    bool raised_ = kind_ != Kind::shown;
};

} // namespace korvane
