// The font of a dialog.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Platform.h"

#include <string_view>

namespace korvane
{

class DialogFont
{
public:
    /// Starts as the font in which the layouts are designed.
    DialogFont();

    /// Takes over a copy of a font: the container's own is not changed by the dialog's resolution. Throws a
    /// Failure, and keeps the former font, when the font cannot be copied. A font like the former one changes
    /// nothing.
    void set(IUnknown* font);

    /// For a resolution in pixels per inch. Valid until the font is set again or asked for another one.
    HFONT handle(int dpi) const;

    /// Extent of a sample text in pixels.
    SIZE measure(const wchar_t* sample, int dpi) const;
    /// Extent of a text in pixels, its lines broken where they are wider than a width in pixels.
    SIZE measure(std::wstring_view text, int dpi, int width) const;

    ComPtr<IFontDisp> object() const { return font_.as<IFontDisp>(); }

private:
    ComPtr<IFont> font_;
    mutable int dpi_ = 0; ///< what the font was last asked for: asking anew would replace its handle
};

} // namespace korvane
