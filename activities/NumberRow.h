// A number of a repetition's rule: a box with arrows, between two labels.
#pragma once

#include "framework/control/Frame.h"
#include "framework/control/Label.h"
#include "framework/control/TextBox.h"
#include "framework/control/UpDown.h"

#include <functional>

namespace korvane
{

class NumberRow
{
public:
    struct Names
    {
        const wchar_t* before;
        const wchar_t* box;
        const wchar_t* arrows;
        const wchar_t* after;
    };
    enum class One
    {
        digit,
        blank ///< a single one is shown as a blank between the labels
    };

    NumberRow(Frame& frame, float top, const Names& names, One one);

    std::function<void(long)> onChange; ///< the user has changed the number
    std::function<void()> onLostFocus;  ///< the user has left the box

    /// Shows a number as it is, also where the arrows do not reach that far.
    void show(long number);

    /// @param text id of the first label's text; the second label's follows it.
    void setCaptions(long text);
    float captionWidth() const { return lblBefore.captionWidth(); }
    /// Lines the controls up behind a first label of that width.
    void layOut(float labelWidth);

private:
    static constexpr int largest = 9999;
    static constexpr int digits = 4;

    std::wstring shown(long number) const;
    void typed();
    void changed();

    One one_;
    long number_ = 0; ///< the one shown, which the arrows may not reach
    Label lblBefore;
    TextBox txtNumber;
    UpDown updNumber;
    Label lblAfter;
};

} // namespace korvane
