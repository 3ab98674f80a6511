// The font of a dialog.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Platform.h"
#include "framework/control/TextContext.h"

#include <memory>
#include <string_view>

namespace korvane
{

class DialogFont
{
public:
    /// Starts as the font in which the layouts are designed.
    DialogFont();

    /// How much larger one font is than another.
    struct Scale
    {
        float x = 1;
        float y = 1;
    };

    /// Takes over a copy of a font: the container's own is not changed by the dialog's resolution. Throws a
    /// Failure, and keeps the former font, when the font cannot be copied, scaled to the resolution or measured, or
    /// when no dialog could be laid out with it. A font like the former one changes nothing.
    /// @return how much larger it is than the former one.
    Scale set(IUnknown* font, int dpi);

    /// For a resolution in pixels per inch. Valid until the font is set again or asked for another one.
    HFONT handle(int dpi) const;

    /// Extent of a text in pixels.
    SIZE measure(const wchar_t* text, int dpi) const;
    /// The same of a caption, of which the ampersand before the access key is not shown.
    SIZE measureCaption(std::wstring_view caption, int dpi) const;
    /// The extent of a text, its lines broken where they are wider than a width in pixels.
    SIZE measure(std::wstring_view text, int dpi, int width) const;

    /// A copy: who changes it sets it, and the layout follows.
    ComPtr<IFontDisp> copy() const;

private:
    explicit DialogFont(ComPtr<IFont> font) noexcept : font_(std::move(font)) {}

    HDC context(int dpi) const;

    ComPtr<IFont> font_;
    /// What was measured in last. Each layout measures all of its captions, and making a context takes longer than that.
    mutable std::unique_ptr<TextContext> context_;
    mutable int dpi_ = 0; ///< what the font was last asked for: asking anew would replace its handle
};

} // namespace korvane
