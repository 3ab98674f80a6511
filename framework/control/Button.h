// A button to press.
#pragma once

#include "framework/control/Control.h"

#include <functional>

namespace korvane
{

class Button : public Control
{
public:
    Button(Surface surface, const Design& design) : Control(surface, design) {}

    std::function<void()> onClick; ///< by the user

    void notify(WORD code) override;
    const std::wstring* accessCaption(std::size_t index) const noexcept override
    {
        return index == 0 ? &Caption() : nullptr;
    }

protected:
    HWND createWindow(HWND parent, int id) override;
};

} // namespace korvane
