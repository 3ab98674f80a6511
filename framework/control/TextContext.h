// A font in which texts are measured.
#pragma once

#include "framework/com/Platform.h"

namespace korvane
{

/// A context of the screen's resolution with the font, for as long as it lives.
class TextContext
{
public:
    explicit TextContext(HFONT font) noexcept
        : font_(font), context_(CreateCompatibleDC(nullptr)), former_(SelectObject(context_, font))
    {
    }
    TextContext(const TextContext&) = delete;
    TextContext& operator=(const TextContext&) = delete;
    ~TextContext()
    {
        SelectObject(context_, former_);
        DeleteDC(context_);
    }

    operator HDC() const noexcept { return context_; }
    HFONT font() const noexcept { return font_; }

private:
    HFONT font_;
    HDC context_;
    HGDIOBJ former_;
};

} // namespace korvane
