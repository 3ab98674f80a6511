#include "framework/control/Dpi.h"

namespace korvane
{

int screenDpi() noexcept
{
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

int windowDpi(HWND window) noexcept
{
    // Looked up by name: the function came with Windows 10.
    using GetDpi = UINT(WINAPI*)(HWND);
    static const auto getDpi = reinterpret_cast<GetDpi>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32"), "GetDpiForWindow")));
    const UINT dpi = getDpi ? getDpi(window) : 0;
    return dpi != 0 ? static_cast<int>(dpi) : screenDpi();
}

} // namespace korvane
