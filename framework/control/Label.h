// A text on a dialog, which may name the control that follows it.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

class Label : public Control
{
public:
    enum class Kind
    {
        caption,
        data ///< any text: each of its characters counts as such, and it shows as far as there is room
    };

    Label(Surface surface, const Design& design, Kind kind = Kind::caption)
        : Control(surface, design), kind_(kind)
    {
    }

    void setCaption(std::wstring_view caption);

    float neededWidth() const override { return kind_ == Kind::caption ? captionWidth() : 0; }

    /// Makes this the label of a control: its access key leads there, and screen readers name the control by it.
    void labels(const Control& control) const noexcept;

    const std::wstring* accessCaption(std::size_t index) const noexcept override
    {
        return index == 0 ? &Caption() : nullptr;
    }
    bool isWithinReach() const noexcept override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    Kind kind_;
};

} // namespace korvane
