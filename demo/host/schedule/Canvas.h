// Drawing in a window without a flicker.
#pragma once

#include "demo/host/GdiObject.h"

#include <algorithm>

namespace korvane::host
{

/// The answer to WM_PAINT, which ends whatever happens on the way.
class Painting
{
public:
    explicit Painting(HWND window) noexcept : window_(window) { BeginPaint(window_, &state_); }
    Painting(const Painting&) = delete;
    Painting& operator=(const Painting&) = delete;
    ~Painting() { EndPaint(window_, &state_); }

    HDC context() const noexcept { return state_.hdc; }

private:
    HWND window_;
    PAINTSTRUCT state_{};
};

/// A picture in memory that is shown at once when it is complete.
class Canvas
{
public:
    Canvas(HDC target, const RECT& area)
        : target_(target), area_(area), context_(CreateCompatibleDC(target)),
          bitmap_(CreateCompatibleBitmap(target, std::max(area.right, 1L), std::max(area.bottom, 1L))),
          former_(SelectObject(context_.get(), bitmap_.get()))
    {
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas()
    {
        BitBlt(target_, 0, 0, area_.right, area_.bottom, context_.get(), 0, 0, SRCCOPY);
        SelectObject(context_.get(), former_);
    }

    HDC context() const noexcept { return context_.get(); }

private:
    HDC target_;
    RECT area_;
    MemoryContext context_;
    GdiObject<HBITMAP> bitmap_;
    HGDIOBJ former_;
};

} // namespace korvane::host
