// A text on a dialog, which may name the control that follows it.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

class Label : public Control
{
public:
    Label(Surface surface, const Design& design) : Control(surface, design) {}

    void setCaption(std::wstring_view caption) { setTextValue(caption); }

    float neededWidth() const override { return captionWidth(); }

    /// Makes this the label of a control: its access key leads there, and screen readers name the control by it.
    void labels(const Control& control) const noexcept;

    const std::wstring* accessCaption(std::size_t index) const noexcept override
    {
        return index == 0 ? &Caption() : nullptr;
    }
    bool isWithinReach() const noexcept override;

protected:
    HWND createWindow(HWND parent, int id) override;
};

} // namespace korvane
