// A field for a date and a time of day, in the user's own format.
#pragma once

#include "framework/com/Variant.h"
#include "framework/control/Control.h"

namespace korvane
{

class DateTimePicker : public Control
{
public:
    DateTimePicker(Surface surface, const Design& design) : Control(surface, design) {}

    /// To the second.
    OleDate Value() const;
    /// Throws DISP_E_OVERFLOW for what is no date that the picker can show.
    void setValue(OleDate value) const;

    std::function<void()> onChange; ///< by the user; setValue does not raise it

    LRESULT notified(const NMHDR& notification) override;
    void completeEdit() override;

protected:
    HWND createWindow(HWND parent, int id) override;
};

} // namespace korvane
