// A button to press.
#pragma once

#include "framework/control/Control.h"

#include <functional>

namespace korvane
{

class Button : public Control
{
public:
    Button(Surface surface, const Design& design) : Control(surface, design, TextProperty::caption) {}

    std::function<void()> onClick; ///< by the user

    void notify(WORD code) override;

protected:
    HWND createWindow(HWND parent, int id) override;
};

} // namespace korvane
