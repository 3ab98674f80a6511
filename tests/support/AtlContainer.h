// A container of the platform's own, which offers nothing beyond what every control may expect.
#pragma once

#include "framework/com/ComPtr.h"

namespace korvane::test
{

class AtlContainer
{
public:
    /// @param size of the control's place, in pixels.
    explicit AtlContainer(SIZE size);
    AtlContainer(const AtlContainer&) = delete;
    AtlContainer& operator=(const AtlContainer&) = delete;
    ~AtlContainer();

    /// Hosts a control that is there already.
    void attach(IUnknown* control);
    /// Creates a control by its name, and hosts it.
    ComPtr<IUnknown> create(const wchar_t* progId);

    /// The control's place, and the window around it.
    HWND window() const noexcept { return window_; }
    HWND top() const noexcept { return top_; }
    /// Where a window is on the control's place.
    RECT place(HWND control) const;

    static void type(const wchar_t* characters);

private:
    HMODULE atl_;
    HWND top_ = nullptr;
    HWND window_ = nullptr;
};

} // namespace korvane::test
