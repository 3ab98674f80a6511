#include "framework/control/DialogFont.h"

#include "framework/com/Failure.h"

#include <cwchar>

namespace korvane
{

DialogFont::DialogFont()
{
    FONTDESC design{};
    design.cbSizeofstruct = sizeof design;
    wchar_t face[] = L"MS Shell Dlg";
    design.lpstrName = face;
    design.cySize.int64 = 8 * 10000LL; // points, with four decimals
    design.sWeight = FW_NORMAL;
    design.sCharset = DEFAULT_CHARSET;
    require(OleCreateFontIndirect(&design, IID_IFont, font_.putVoid()));
}

void DialogFont::set(IUnknown* font)
{
    const auto original = queryFor<IFont>(font);
    if (!original)
        throw Failure(E_NOINTERFACE);
    ComPtr<IFont> copy;
    call(original, &IFont::Clone, copy.put());
    font_ = std::move(copy);
    dpi_ = 0;
}

HFONT DialogFont::handle(int dpi) const
{
    if (dpi_ != dpi)
        call(font_, &IFont::SetRatio, dpi, 2540L);
    dpi_ = dpi;
    HFONT handle = nullptr;
    call(font_, &IFont::get_hFont, &handle);
    return handle;
}

SIZE DialogFont::measure(const wchar_t* sample, int dpi) const
{
    const HFONT font = handle(dpi);
    const HDC screen = CreateCompatibleDC(nullptr);
    const HGDIOBJ former = SelectObject(screen, font);
    SIZE extent{};
    GetTextExtentPoint32W(screen, sample, static_cast<int>(std::wcslen(sample)), &extent);
    SelectObject(screen, former);
    DeleteDC(screen);
    return extent;
}

} // namespace korvane
