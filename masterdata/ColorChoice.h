// The choice of a colour: a row of swatches, the platform's colour dialog, and the chosen colour to see.
#pragma once

#include "framework/control/Button.h"
#include "framework/control/ControlArray.h"
#include "framework/control/Label.h"
#include "framework/control/Swatch.h"

namespace korvane
{

class ColorChoice
{
public:
    /// The texts by their ids.
    struct Texts
    {
        const wchar_t* caption;
        const wchar_t* more;
        const wchar_t* toolTip;
    };

    /// @param place of the caption and, right of it, of the row; the rest stands below.
    ColorChoice(Surface surface, const Place& caption, const Place& row, const Texts& texts);

    /// The colour of what is new.
    static long defaultColor() noexcept;

    /// Shows a colour, and marks its swatch where it has one. @param color RGB; below 1 for none.
    void show(long color);

    std::function<void(long color)> onChoose; ///< by the user

private:
    static constexpr std::size_t count = 16;

    void mark(std::size_t chosen);
    void choose(const Swatch& swatch);
    void chooseCustom();

    DialogWindow& dialog_;
    long color_ = 0;
    Label lblColors;
    ControlArray<Swatch, count> lblColor;
    Swatch shpColor;
    Button cmdCustomColor;
};

} // namespace korvane
