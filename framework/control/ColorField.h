// A field of one colour, as swatches and coloured buttons draw it.
#pragma once

#include "framework/com/Platform.h"

namespace korvane
{

enum class FieldEdge
{
    flat,
    raised,
    sunken
};

/// Fills a field with a colour; below 1 stands for none. Edges are in the colours of the system, in which a field is
/// told from what is around it whatever its own colour is.
void drawColorField(HDC context, RECT place, long color, FieldEdge edge, bool focused) noexcept;

/// Black or white, whichever is read more easily on a colour.
COLORREF textColorOn(long color) noexcept;

} // namespace korvane
