// A button for one of several choices.
#pragma once

#include "framework/control/CheckBox.h"

namespace korvane
{

/// One of several: those that follow each other in the layout exclude each other.
class OptionButton : public CheckableButton
{
public:
    enum class Position
    {
        first,
        further
    };

    OptionButton(Surface surface, const Design& design, Position position = Position::further)
        : CheckableButton(surface, design), position_(position)
    {
    }

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    Position position_;
};

} // namespace korvane
