#include "demo/host/Display.h"

#include "framework/com/Failure.h"

namespace korvane::host
{

int screenDpi() noexcept
{
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

RECT workArea(HWND window) noexcept
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, window ? MONITOR_DEFAULTTONEAREST : MONITOR_DEFAULTTOPRIMARY),
                    &monitor);
    return monitor.rcWork;
}

LOGFONTW messageFont()
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    return metrics.lfMessageFont;
}

Font createMessageFont(int dpi)
{
    LOGFONTW design = messageFont();
    design.lfHeight = MulDiv(design.lfHeight, dpi, screenDpi());
    Font font(CreateFontIndirectW(&design));
    if (!font)
        throw Failure(E_OUTOFMEMORY);
    return font;
}

int textHeight(HFONT font) noexcept
{
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ former = SelectObject(screen, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(screen, &metrics);
    SelectObject(screen, former);
    ReleaseDC(nullptr, screen);
    return metrics.tmHeight;
}

} // namespace korvane::host
