#include "framework/control/DialogFont.h"

#include "framework/com/Bstr.h"
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
    make(design);
}

void DialogFont::set(IUnknown* font)
{
    const auto original = queryFor<IFont>(font);
    if (!original)
        throw Failure(E_NOINTERFACE);
    // Made anew from its properties: a font's own clone is not freed whole by every platform.
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    Bstr name;
    call(original, &IFont::get_Name, name.put());
    description.lpstrName = name.get();
    call(original, &IFont::get_Size, &description.cySize);
    call(original, &IFont::get_Weight, &description.sWeight);
    call(original, &IFont::get_Charset, &description.sCharset);
    call(original, &IFont::get_Italic, &description.fItalic);
    call(original, &IFont::get_Underline, &description.fUnderline);
    call(original, &IFont::get_Strikethrough, &description.fStrikethrough);
    make(description);
}

void DialogFont::make(FONTDESC& description)
{
    ComPtr<IFont> made;
    require(OleCreateFontIndirect(&description, IID_IFont, made.putVoid()));
    font_ = std::move(made);
}

HFONT DialogFont::handle(int dpi) const
{
    call(font_, &IFont::SetRatio, dpi, 2540L);
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
