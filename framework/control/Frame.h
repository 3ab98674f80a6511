// A region of a dialog.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

/// A region of the dialog. What stands in it moves, shows and hides with it.
class Frame : public Control
{
public:
    Frame(Surface surface, const Design& design) : Control(surface, design) {}

    DialogWindow& dialog() const noexcept { return dialog_; }

    /// Whether what stands in the frame keeps its distance from the right end.
    virtual bool alignsRight() const noexcept { return false; }

protected:
    HWND createWindow(HWND, int) override { return nullptr; }
};

} // namespace korvane
