// Buttons with a state.
#pragma once

#include "framework/control/Button.h"

namespace korvane
{

/// A button with a state.
class CheckableButton : public Button
{
public:
    using Button::Button;

    /// With the mark before the caption, and the frame that shows the focus.
    float neededWidth() const override { return captionWidth() + 300; }

    bool Value() const noexcept { return send(BM_GETCHECK) == BST_CHECKED; }
    /// Does not raise onClick.
    virtual void setValue(bool checked) const noexcept;
};

class CheckBox : public CheckableButton
{
public:
    using CheckableButton::CheckableButton;

protected:
    HWND createWindow(HWND parent, int id) override;
};

} // namespace korvane
