// A button for one of several choices.
#pragma once

#include "framework/control/CheckBox.h"

namespace korvane
{

/// One of several: those that follow each other in the layout exclude each other. Tab leads to the one that is chosen,
/// and passes a group by of which none is: Windows checks a button as soon as the focus comes to it by Tab. Access keys
/// and clicks choose, and the arrow keys from there.
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

    void setValue(bool checked) const noexcept override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    Position position_;
};

} // namespace korvane
