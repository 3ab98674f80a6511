#include "framework/control/DialogFont.h"

#include "framework/com/Boundary.h"

#include <cwchar>

namespace korvane
{

namespace
{

/// The sample whose extent says how much larger one font is than another.
constexpr const wchar_t* sample = L"gM";

constexpr int maximumHeight = 10; // inches: with letters of that height no dialog fits in a window

ComPtr<IFont> copyOf(const ComPtr<IFont>& font)
{
    auto copy = fetch(font, &IFont::Clone);
    if (!copy)
        throw Failure(E_FAIL);
    return copy;
}

/// IFont::IsEqual may take the other font for one of its own kind, which a container's need not be.
bool areSame(const ComPtr<IFont>& one, const ComPtr<IFont>& other)
{
    const auto haveSame = [&](auto property, auto value) {
        auto otherValue = value;
        return SUCCEEDED((one.get()->*property)(&value)) &&
               SUCCEEDED((other.get()->*property)(&otherValue)) && value == otherValue;
    };
    const Bstr name = fetchIfAny(one, &IFont::get_Name);
    CY size{};
    CY otherSize{};
    return !name.empty() && fetchIfAny(other, &IFont::get_Name) == name.view() &&
           SUCCEEDED(one->get_Size(&size)) && SUCCEEDED(other->get_Size(&otherSize)) &&
           size.int64 == otherSize.int64 && haveSame(&IFont::get_Weight, short{}) &&
           haveSame(&IFont::get_Charset, short{}) && haveSame(&IFont::get_Italic, BOOL{}) &&
           haveSame(&IFont::get_Underline, BOOL{}) && haveSame(&IFont::get_Strikethrough, BOOL{});
}

} // namespace

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

DialogFont::Scale DialogFont::set(IUnknown* font, int dpi)
{
    const auto original = queryFor<IFont>(font);
    if (!original)
        throw Failure(E_NOINTERFACE);
    if (areSame(original, font_))
        return {};
    DialogFont next(copyOf(original));
    const SIZE after = next.measure(sample, dpi);
    if (after.cx <= 0 || after.cy <= 0 || after.cy > maximumHeight * dpi)
        throw Failure(E_INVALIDARG);
    SIZE before{}; // of a font that fails by now nothing is known
    attempt([&] { before = measure(sample, dpi); });
    context_.reset(); // before its font goes
    *this = std::move(next);
    if (before.cx <= 0 || before.cy <= 0)
        return {};
    return {static_cast<float>(after.cx) / static_cast<float>(before.cx),
            static_cast<float>(after.cy) / static_cast<float>(before.cy)};
}

HFONT DialogFont::handle(int dpi) const
{
    if (dpi_ != dpi)
    {
        context_.reset();
        call(font_, &IFont::SetRatio, dpi, 2540L);
    }
    dpi_ = dpi;
    HFONT handle = nullptr;
    call(font_, &IFont::get_hFont, &handle);
    if (GetObjectType(handle) != OBJ_FONT)
        throw Failure(E_HANDLE);
    return handle;
}

HDC DialogFont::context(int dpi) const
{
    const HFONT font = handle(dpi);
    if (!context_ || context_->font() != font || !static_cast<HDC>(*context_))
        context_ = std::make_unique<TextContext>(font);
    return *context_;
}

ComPtr<IFontDisp> DialogFont::copy() const
{
    return copyOf(font_).as<IFontDisp>();
}

SIZE DialogFont::measure(const wchar_t* text, int dpi) const
{
    SIZE extent{};
    GetTextExtentPoint32W(context(dpi), text, static_cast<int>(std::wcslen(text)), &extent);
    return extent;
}

SIZE DialogFont::measureCaption(std::wstring_view caption, int dpi) const
{
    RECT place{};
    DrawTextW(context(dpi), caption.data(), static_cast<int>(caption.size()), &place,
              DT_CALCRECT | DT_SINGLELINE);
    return {place.right, place.bottom};
}

SIZE DialogFont::measure(std::wstring_view text, int dpi, int width) const
{
    RECT place{0, 0, width, 0};
    // As a box of several lines breaks them.
    DrawTextW(context(dpi), text.data(), static_cast<int>(text.size()), &place,
              DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS);
    return {place.right, place.bottom};
}

} // namespace korvane
