#include "demo/host/tour/Picture.h"

#include "demo/host/Display.h"
#include "demo/host/GdiObject.h"
#include "demo/host/tour/Screen.h"

#include <algorithm>

#include <objidl.h>

// Its headers of Windows' kits up to 10.0.19041 take the macros of these names for granted.
namespace Gdiplus
{
using std::max, std::min; // NOLINT(misc-unused-using-decls)
} // namespace Gdiplus

#include <gdiplus.h>

#include <cstdint>
#include <new>
#include <set>
#include <vector>

namespace korvane::host
{

namespace
{

constexpr CLSID pngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

/// The drawing library, for as long as it is used.
class Drawing
{
public:
    Drawing()
    {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok)
            throw tourFailure(L"pictures cannot be written here");
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() { Gdiplus::GdiplusShutdown(token_); }

private:
    ULONG_PTR token_ = 0;
};

struct Pixels
{
    int width;
    int height;
    std::vector<std::uint32_t> values; ///< rows from the top, without gaps
};

/// A copy of the screen's pixels in a rectangle.
Pixels copyOfScreen(const RECT& place)
{
    Pixels pixels{place.right - place.left, place.bottom - place.top, {}};
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = pixels.width;
    format.bmiHeader.biHeight = -pixels.height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;

    void* bits = nullptr;
    const GdiObject<HBITMAP> bitmap(CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    const MemoryContext memory(CreateCompatibleDC(nullptr));
    if (!bitmap || !memory)
        throw std::bad_alloc();
    const HGDIOBJ former = SelectObject(memory.get(), bitmap.get());
    const HDC screen = GetDC(nullptr);
    BitBlt(memory.get(), 0, 0, pixels.width, pixels.height, screen, place.left, place.top, SRCCOPY);
    ReleaseDC(nullptr, screen);
    GdiFlush();
    SelectObject(memory.get(), former);

    const auto* first = static_cast<const std::uint32_t*>(bits);
    pixels.values.assign(first, first + static_cast<std::ptrdiff_t>(pixels.width) * pixels.height);
    return pixels;
}

bool isOnItsScreen(HWND window, const RECT& place)
{
    const RECT screen = workArea(window);
    RECT seen{};
    return IntersectRect(&seen, &place, &screen) && EqualRect(&seen, &place);
}

} // namespace

void savePicture(HWND window, const std::wstring& file)
{
    RECT place{};
    GetWindowRect(window, &place);
    if (GetWindow(window, GW_OWNER) && !isOnItsScreen(window, place))
        throw tourFailure(L"a part of the dialog is outside of the screen");
    // What was drawn last may be on its way to the screen still.
    Pixels pixels = copyOfScreen(place);
    waitFor(L"the screen is at rest", [&] {
        Sleep(100);
        const Pixels later = copyOfScreen(place);
        const bool same = later.values == pixels.values;
        pixels = later;
        return same;
    });
    if (std::set<std::uint32_t>(pixels.values.begin(), pixels.values.end()).size() < 8)
        throw tourFailure(L"the screen shows nothing where the window is");

    const Drawing drawing;
    Gdiplus::Bitmap picture(pixels.width, pixels.height, pixels.width * 4, PixelFormat32bppRGB,
                            reinterpret_cast<BYTE*>(pixels.values.data()));
    if (picture.Save(file.c_str(), &pngEncoder, nullptr) != Gdiplus::Ok)
        throw tourFailure(L"the picture " + file + L" cannot be written");
}

} // namespace korvane::host
