// The container's font, and the layout that follows it.
#include "tests/framework/TestDialog.h"

#include <gmock/gmock.h>

#include <commctrl.h>

#include <cmath>

namespace korvane::test
{

namespace
{

/// Extent of the sample text in a font of the platform.
SIZE sampleExtent(const ComPtr<IFontDisp>& fontObject)
{
    const auto font = fontObject.as<IFont>();
    HFONT handle = nullptr;
    require(font->get_hFont(&handle));
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ former = SelectObject(screen, handle);
    SIZE extent{};
    GetTextExtentPoint32W(screen, L"gM", 2, &extent);
    SelectObject(screen, former);
    ReleaseDC(nullptr, screen);
    return extent;
}

int heightOf(HWND control)
{
    LOGFONTW description{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof description,
               &description);
    return std::abs(description.lfHeight);
}

/// Counts how often a window is moved, shown or hidden.
class Moves
{
public:
    explicit Moves(HWND window) : window_(window)
    {
        SetWindowSubclass(window, &procedure, 0, reinterpret_cast<DWORD_PTR>(this));
    }
    Moves(const Moves&) = delete;
    Moves& operator=(const Moves&) = delete;
    ~Moves() { RemoveWindowSubclass(window_, &procedure, 0); }

    int count = 0;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                                      DWORD_PTR moves) noexcept
    {
        if (message == WM_WINDOWPOSCHANGING)
            ++reinterpret_cast<Moves*>(moves)->count;
        return DefSubclassProc(window, message, first, second);
    }

    HWND window_;
};

/// A host's own font, in front of one of the platform's, that fails where it is told to.
class HostFont final : public Object<HostFont, Inherits<IFont>, IFont>
{
public:
    enum class Failing
    {
        clone,
        nullClone,
        ratio,
        handle,
        nullHandle,
        strangeHandle
    };

    HostFont(const ComPtr<IFont>& font, Failing failing) : font_(font), failing_(failing) {}

    STDMETHODIMP get_Name(BSTR* name) override { return font_->get_Name(name); }
    STDMETHODIMP put_Name(BSTR name) override { return font_->put_Name(name); }
    STDMETHODIMP get_Size(CY* size) override { return font_->get_Size(size); }
    STDMETHODIMP put_Size(CY size) override { return font_->put_Size(size); }
    STDMETHODIMP get_Bold(BOOL* bold) override { return font_->get_Bold(bold); }
    STDMETHODIMP put_Bold(BOOL bold) override { return font_->put_Bold(bold); }
    STDMETHODIMP get_Italic(BOOL* italic) override { return font_->get_Italic(italic); }
    STDMETHODIMP put_Italic(BOOL italic) override { return font_->put_Italic(italic); }
    STDMETHODIMP get_Underline(BOOL* underline) override { return font_->get_Underline(underline); }
    STDMETHODIMP put_Underline(BOOL underline) override { return font_->put_Underline(underline); }
    STDMETHODIMP get_Strikethrough(BOOL* through) override { return font_->get_Strikethrough(through); }
    STDMETHODIMP put_Strikethrough(BOOL through) override { return font_->put_Strikethrough(through); }
    STDMETHODIMP get_Weight(SHORT* weight) override { return font_->get_Weight(weight); }
    STDMETHODIMP put_Weight(SHORT weight) override { return font_->put_Weight(weight); }
    STDMETHODIMP get_Charset(SHORT* charset) override { return font_->get_Charset(charset); }
    STDMETHODIMP put_Charset(SHORT charset) override { return font_->put_Charset(charset); }
    STDMETHODIMP get_hFont(HFONT* font) override
    {
        *font = failing_ == Failing::strangeHandle ? reinterpret_cast<HFONT>(GetStockObject(WHITE_BRUSH))
                                                   : nullptr;
        return failing_ == Failing::handle ? E_FAIL : S_OK;
    }
    STDMETHODIMP Clone(IFont** copy) override
    {
        *copy = nullptr;
        if (failing_ == Failing::clone)
            return E_FAIL;
        if (failing_ != Failing::nullClone)
            *copy = make<HostFont>(font_, failing_).detach();
        return S_OK;
    }
    STDMETHODIMP IsEqual(IFont*) override { return S_FALSE; }
    STDMETHODIMP SetRatio(long, long) override { return failing_ == Failing::ratio ? E_FAIL : S_OK; }
    STDMETHODIMP QueryTextMetrics(TEXTMETRICOLE* metrics) override
    {
        return font_->QueryTextMetrics(metrics);
    }
    STDMETHODIMP AddRefHfont(HFONT) override { return E_NOTIMPL; }
    STDMETHODIMP ReleaseHfont(HFONT) override { return E_NOTIMPL; }
    STDMETHODIMP SetHdc(HDC) override { return E_NOTIMPL; }

private:
    ComPtr<IFont> font_;
    Failing failing_;
};

class DialogFontTests : public DialogTest
{
protected:
    struct Factors
    {
        float x;
        float y;
    };

    static Factors factors(const ComPtr<IFontDisp>& font)
    {
        const SIZE before = sampleExtent(host::makeFont(L"MS Shell Dlg", 8));
        const SIZE after = sampleExtent(font);
        return {static_cast<float>(after.cx) / static_cast<float>(before.cx),
                static_cast<float>(after.cy) / static_cast<float>(before.cy)};
    }

    /// The layout is the designed one times the factors, up to a pixel of rounding.
    void expectScaled(Factors by) const
    {
        const int dpi = dialog->dpi();
        EXPECT_NEAR(size().cx, toPixels(TestDialog::designWidth * by.x, dpi), 1);
        EXPECT_NEAR(size().cy, toPixels(TestDialog::designHeight * by.y, dpi), 1);
        const RECT box = container.place(dialog->txtName.window());
        EXPECT_NEAR(box.left, toPixels(1200 * by.x, dpi), 1);
        EXPECT_NEAR(box.top, toPixels(720 * by.y, dpi), 1);
        EXPECT_NEAR(box.right, toPixels(2700 * by.x, dpi), 1);
        EXPECT_NEAR(box.bottom, toPixels(1035 * by.y, dpi), 1);
        // On a frame: the frame's place and the control's own are both scaled.
        const RECT inner = container.place(dialog->txtInner.window());
        EXPECT_NEAR(inner.left, toPixels(2970 * by.x, dpi), 1);
        EXPECT_NEAR(inner.top, toPixels(240 * by.y, dpi), 1);
    }
};

} // namespace

TEST_F(DialogFontTests, TheDesignedFontChangesNothing)
{
    ASSERT_TRUE(show());
    expectScaled({1, 1});
}

TEST_F(DialogFontTests, ALargerFontEnlargesTheLayout)
{
    container.site->font = host::makeFont(L"MS Shell Dlg", 16);
    ASSERT_TRUE(show());
    const Factors by = factors(container.site->font);
    EXPECT_GT(by.x, 1.5F);
    EXPECT_GT(by.y, 1.5F);
    expectScaled(by);
    EXPECT_TRUE(container.extent == size());
}

TEST_F(DialogFontTests, EveryControlHasTheFont)
{
    container.site->font = host::makeFont(L"MS Shell Dlg", 16);
    ASSERT_TRUE(show());
    const int expected = MulDiv(16, dialog->dpi(), 72);
    for (const Control* control : dialog->controls())
    {
        if (control->window()) // a frame has none
        {
            EXPECT_NEAR(heightOf(control->window()), expected, 1) << std::wstring(control->name());
        }
    }
}

TEST_F(DialogFontTests, AnotherFontRescalesFromTheFormerOne)
{
    ASSERT_TRUE(show());
    container.site->font = host::makeFont(L"MS Shell Dlg", 16);
    EXPECT_EQ(dialog->OnAmbientPropertyChange(DISPID_AMBIENT_FONT), S_OK);
    expectScaled(factors(container.site->font));
    container.site->font = host::makeFont(L"MS Shell Dlg", 8);
    EXPECT_EQ(dialog->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK);
    expectScaled({1, 1});
}

TEST_F(DialogFontTests, TheSameFontTwiceScalesOnce)
{
    container.site->font = host::makeFont(L"MS Shell Dlg", 16);
    ASSERT_TRUE(show());
    const SIZE first = size();
    ASSERT_TRUE(container.ready());
    EXPECT_TRUE(size() == first);
}

TEST_F(DialogFontTests, ADialogThatIsReadiedAgainKeepsItsFont)
{
    ASSERT_TRUE(show());
    const HWND box = dialog->txtName.window();
    const LRESULT font = SendMessageW(box, WM_GETFONT, 0, 0);
    ASSERT_TRUE(container.ready());
    EXPECT_EQ(SendMessageW(box, WM_GETFONT, 0, 0), font);
}

TEST_F(DialogFontTests, OnlyAnotherLayoutMovesControls)
{
    ASSERT_TRUE(show());
    const Moves moves(dialog->txtName.window());
    ASSERT_TRUE(container.ready());
    EXPECT_EQ(moves.count, 0);
    EXPECT_EQ(dialog->putref_Font(host::makeFont(L"MS Shell Dlg", 16).get()), S_OK);
    EXPECT_GT(moves.count, 0);
}

TEST_F(DialogFontTests, AFontOfTheSameNameAndSizeButBoldIsAnotherOne)
{
    ASSERT_TRUE(show());
    const auto bold = host::makeFont(L"MS Shell Dlg", 8);
    EXPECT_EQ(bold.as<IFont>()->put_Bold(TRUE), S_OK);
    EXPECT_EQ(dialog->putref_Font(bold.get()), S_OK);
    LOGFONTW description{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(dialog->txtName.window(), WM_GETFONT, 0, 0)),
               sizeof description, &description);
    EXPECT_EQ(description.lfWeight, FW_BOLD);
}

TEST_F(DialogFontTests, TheDialogsOwnFontMayBeChangedAndSetAgain)
{
    ASSERT_TRUE(show());
    ComPtr<IFontDisp> own;
    EXPECT_EQ(dialog->get_Font(own.put()), S_OK);
    CY size{};
    size.int64 = 160000; // 16 points
    EXPECT_EQ(own.as<IFont>()->put_Size(size), S_OK);
    EXPECT_EQ(dialog->putref_Font(own.get()), S_OK);
    EXPECT_NEAR(heightOf(dialog->txtName.window()), MulDiv(16, dialog->dpi(), 72), 1);
}

TEST_F(DialogFontTests, ANewSizeOfTheFontIsTheDesignSize)
{
    container.site->font = host::makeFont(L"MS Shell Dlg", 16);
    ASSERT_TRUE(show());
    const SIZE own = size();
    const RECT other{0, 0, 30, 30};
    EXPECT_EQ(dialog->SetObjectRects(&other, &other), S_OK);
    EXPECT_TRUE(size() == own);
}

TEST_F(DialogFontTests, AFontThatCannotBeUsedIsRefusedAndTheNextIsTaken)
{
    const auto plain = host::makeFont(L"MS Shell Dlg", 20).as<IFont>();
    using Failing = HostFont::Failing;
    for (const auto failing : {Failing::clone, Failing::nullClone, Failing::ratio, Failing::handle,
                               Failing::nullHandle, Failing::strangeHandle})
    {
        DialogFont font;
        const HFONT former = font.handle(96);
        const auto bad = make<HostFont>(plain, failing);
        EXPECT_THROW(font.set(bad.as<IFont>().get(), 96), Failure) << static_cast<int>(failing);
        EXPECT_EQ(font.handle(96), former);
        EXPECT_GT(font.set(plain.get(), 96).y, 1.5F);
    }
}

TEST_F(DialogFontTests, AFontOfAbsurdSizeIsRefusedAndTheLayoutStays)
{
    ASSERT_TRUE(show());
    const SIZE own = size();
    EXPECT_EQ(dialog->putref_Font(host::makeFont(L"MS Shell Dlg", 5000).get()), E_INVALIDARG);
    EXPECT_TRUE(size() == own);
    const auto font = host::makeFont(L"MS Shell Dlg", 12);
    EXPECT_EQ(dialog->putref_Font(font.get()), S_OK);
    expectScaled(factors(font));
}

TEST_F(DialogFontTests, TheFontThatIsGivenOutIsACopy)
{
    ASSERT_TRUE(show());
    ComPtr<IFontDisp> own;
    EXPECT_EQ(dialog->get_Font(own.put()), S_OK);
    CY larger{};
    larger.int64 = 160000;
    EXPECT_EQ(own.as<IFont>()->put_Size(larger), S_OK);
    EXPECT_NEAR(heightOf(dialog->txtName.window()), MulDiv(8, dialog->dpi(), 72), 1);
    expectScaled({1, 1});
    EXPECT_EQ(dialog->putref_Font(own.get()), S_OK);
    expectScaled(factors(own));
}

TEST_F(DialogFontTests, TheContainersFontIsNotTheDialogsOwn)
{
    ASSERT_TRUE(show());
    ComPtr<IFontDisp> own;
    EXPECT_EQ(dialog->get_Font(own.put()), S_OK);
    ASSERT_TRUE(own);
    EXPECT_NE(own.as<IUnknown>().get(), container.site->font.as<IUnknown>().get());
}

TEST_F(DialogFontTests, AFontMayBeSetByTheHost)
{
    ASSERT_TRUE(show());
    const auto font = host::makeFont(L"MS Shell Dlg", 12);
    EXPECT_EQ(dialog->putref_Font(font.get()), S_OK);
    expectScaled(factors(font));
    EXPECT_EQ(dialog->putref_Font(nullptr), E_POINTER);
    expectScaled(factors(font));
}

} // namespace korvane::test
