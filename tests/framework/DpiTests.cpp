// Sizes and fonts at other resolutions than that of the screen under test.
#include "framework/control/DialogFont.h"
#include "framework/control/Geometry.h"
#include "tests/framework/ControlDialog.h"
#include "tests/support/Allocation.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstring>

namespace korvane::test
{

namespace
{

using testing::Values;

constexpr UINT dpiChangedAfterParent = 0x02E3; // WM_DPICHANGED_AFTERPARENT

UINT pretended = 0;
FARPROC(WINAPI* originalGetProcAddress)(HMODULE, LPCSTR) = nullptr;

UINT WINAPI pretendedDpi(HWND window)
{
    using GetDpi = UINT(WINAPI*)(HWND);
    static const auto real = reinterpret_cast<GetDpi>(
        reinterpret_cast<void*>(originalGetProcAddress(GetModuleHandleW(L"user32"), "GetDpiForWindow")));
    if (pretended != 0)
        return pretended;
    return real ? real(window) : 0;
}

FARPROC WINAPI lookUp(HMODULE module, LPCSTR name)
{
    if (!IS_INTRESOURCE(name) && std::strcmp(name, "GetDpiForWindow") == 0)
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&pretendedDpi));
    return originalGetProcAddress(module, name);
}

/// Windows stand on a monitor of this resolution. The frame looks the platform's function up by name, once: so the
/// first look-up has to meet the one that pretends.
class Monitor
{
public:
    explicit Monitor(int dpi) { set(dpi); }
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;
    ~Monitor() { pretended = 0; }

    void set(int dpi) { pretended = static_cast<UINT>(dpi); }
};

/// Controls that touch, at places that are no whole pixels.
struct StripedLayout
{
    explicit StripedLayout(DialogWindow& on) : dialog(on) {}

    DialogWindow& dialog;
    Label lblOne{dialog, {.name = L"lblOne", .place = {7, 11, 1003, 217}, .text = L"One"}};
    Label lblTwo{dialog, {.name = L"lblTwo", .place = {1010, 11, 1006, 217}, .text = L"Two"}};
    Label lblThree{dialog, {.name = L"lblThree", .place = {2016, 11, 1009, 217}, .text = L"Three"}};
    Frame fraBelow{dialog, {.name = L"fraBelow", .place = {7, 228, 3018, 431}}};
    Label lblBelow{fraBelow, {.name = L"lblBelow", .place = {0, 0, 1003, 431}, .text = L"Below"}};
};

class DpiTests : public testing::TestWithParam<int>
{
};

class StripedDialogTests : public ControlTest<StripedLayout>, public testing::WithParamInterface<int>
{
protected:
    const Monitor monitor{GetParam()};
};

int heightOf(HFONT font)
{
    LOGFONTW description{};
    GetObjectW(font, sizeof description, &description);
    return std::abs(description.lfHeight);
}

int fontHeight(const Control& control)
{
    return heightOf(reinterpret_cast<HFONT>(SendMessageW(control.window(), WM_GETFONT, 0, 0)));
}

/// Gives the dialog a place away from its corner.
class OffsetSite final : public host::ControlSite
{
public:
    static constexpr POINT corner{12, 8};

    using ControlSite::ControlSite;

    std::vector<POINT> asked; ///< the corners of the places that the dialog asks for

    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO information) override
    {
        const HRESULT result = ControlSite::GetWindowContext(frame, document, place, clip, information);
        OffsetRect(place, corner.x, corner.y);
        *clip = *place;
        return result;
    }
    STDMETHODIMP OnPosRectChange(LPCRECT place) override
    {
        asked.push_back({place->left, place->top});
        return S_OK;
    }
};

class DpiDialogTests : public DialogTest, public testing::WithParamInterface<int>
{
protected:
    void TearDown() override
    {
        DialogTest::TearDown();
        monitor.set(0);
    }

    void expectAt(int dpi) const
    {
        EXPECT_EQ(dialog->dpi(), dpi);
        EXPECT_EQ(size().cx, toPixels(TestDialog::designWidth, dpi));
        EXPECT_EQ(size().cy, toPixels(TestDialog::designHeight, dpi));
        for (const Control* control : dialog->controls())
        {
            if (!control->window())
                continue;
            const Place designed = control->placeOnDialog();
            const RECT shown = container.place(control->window());
            EXPECT_EQ(shown.left, toPixels(designed.left, dpi));
            EXPECT_EQ(shown.bottom, toPixels(designed.bottom(), dpi));
            EXPECT_NEAR(fontHeight(*control), 8.0 * dpi / 72, 1.01);
        }
    }

    Monitor monitor{GetParam()};
};

} // namespace

/// In place before any test: the frame asks for the platform's function once in a process.
[[maybe_unused]] static const bool lookUpInPlace = [] {
    if (void** slot = importSlot(GetModuleHandleW(nullptr), "GetProcAddress"))
    {
        originalGetProcAddress = reinterpret_cast<decltype(originalGetProcAddress)>(*slot);
        static const ImportPatch patch(GetModuleHandleW(nullptr), "GetProcAddress",
                                       reinterpret_cast<void*>(&lookUp));
        return true;
    }
    return false;
}();

TEST_P(DpiTests, TwipsBecomePixelsInProportion)
{
    const int dpi = GetParam();
    EXPECT_EQ(toPixels(1440, dpi), dpi);
    EXPECT_EQ(toPixels(720, dpi), dpi / 2);
    EXPECT_EQ(toPixels(0, dpi), 0);
    EXPECT_EQ(toPixels(-1440, dpi), -dpi);
    for (float twips = 0; twips < 5000; twips += 7)
        EXPECT_NEAR(toPixels(twips, dpi), twips * static_cast<float>(dpi) / 1440, 0.5);
}

TEST_P(DpiTests, AFittedLengthIsAWholeNumberOfPixelsAndStaysSo)
{
    for (float twips = 0; twips < 5000; twips += 7)
    {
        const float fitted = fitToPixels(twips, GetParam());
        EXPECT_EQ(toPixels(fitted, GetParam()), toPixels(twips, GetParam()));
        EXPECT_EQ(fitToPixels(fitted, GetParam()), fitted);
        EXPECT_NEAR(fitted, twips, 720.0f / static_cast<float>(GetParam()) + 0.01f);
    }
}

TEST_P(DpiTests, AFontIsAsLargeAsTheResolutionAsks)
{
    const DialogFont font;
    EXPECT_NEAR(heightOf(font.handle(GetParam())), 8.0 * GetParam() / 72, 1.01);
    const SIZE at96 = font.measure(L"gM", 96);
    const SIZE here = font.measure(L"gM", GetParam());
    EXPECT_NEAR(here.cy, at96.cy * GetParam() / 96.0, 2.01);
    // The widths of the two characters are whole pixels, here and at 96.
    EXPECT_NEAR(here.cx, at96.cx * GetParam() / 96.0, 1.01 + GetParam() / 96.0);
}

TEST_P(DpiTests, AFontAsksAgainForEachResolution)
{
    const DialogFont font;
    const int here = heightOf(font.handle(GetParam()));
    font.handle(300);
    EXPECT_EQ(heightOf(font.handle(GetParam())), here);
}

TEST_P(StripedDialogTests, ControlsThatTouchInTheLayoutTouchOnTheScreen)
{
    ASSERT_EQ(dialog->dpi(), GetParam());
    const RECT one = container.place(layout().lblOne.window());
    const RECT two = container.place(layout().lblTwo.window());
    const RECT three = container.place(layout().lblThree.window());
    const RECT below = container.place(layout().lblBelow.window());
    EXPECT_EQ(one.right, two.left);
    EXPECT_EQ(two.right, three.left);
    EXPECT_EQ(one.bottom, below.top);
    EXPECT_EQ(one.left, below.left);
    EXPECT_EQ(one.right, below.right);
}

TEST_P(DpiDialogTests, ADialogOpensAtTheResolutionOfItsWindow)
{
    ASSERT_TRUE(show());
    expectAt(GetParam());
}

TEST_P(DpiDialogTests, ADialogFollowsItsWindowToAnotherMonitor)
{
    monitor.set(96);
    ASSERT_TRUE(show());
    expectAt(96);
    for (const int dpi : {GetParam(), 120, 96})
    {
        monitor.set(dpi);
        SendMessageW(container.dialogWindow(), dpiChangedAfterParent, 0, 0);
        expectAt(dpi);
    }
    EXPECT_TRUE(container.errors.empty());
}

TEST_P(DpiDialogTests, WhatWasEnteredSurvivesTheMove)
{
    monitor.set(96);
    ASSERT_TRUE(show());
    dialog->txtName.setText(L"entered");
    monitor.set(GetParam());
    SendMessageW(container.dialogWindow(), dpiChangedAfterParent, 0, 0);
    EXPECT_EQ(dialog->txtName.Text(), L"entered");
    EXPECT_EQ(dialog->loads, 1);
}

TEST_P(DpiDialogTests, TheContainerIsAskedForTheSizeAtThatResolution)
{
    monitor.set(96);
    ASSERT_TRUE(show());
    monitor.set(GetParam());
    SendMessageW(container.dialogWindow(), dpiChangedAfterParent, 0, 0);
    if (GetParam() != 96)
    {
        EXPECT_EQ(container.extent.cx, toPixels(TestDialog::designWidth, GetParam()));
        EXPECT_EQ(container.extent.cy, toPixels(TestDialog::designHeight, GetParam()));
    }
}

TEST_P(DpiDialogTests, TheSizeAtThatResolutionIsAskedForWhereTheContainerPutsTheDialog)
{
    const auto site = make<OffsetSite>(container.window());
    container.site = ComPtr<host::ControlSite>(site.get());
    ASSERT_TRUE(show());
    EXPECT_EQ(site->asked.empty(), GetParam() == 96);
    for (const POINT corner : site->asked)
    {
        EXPECT_EQ(corner.x, OffsetSite::corner.x);
        EXPECT_EQ(corner.y, OffsetSite::corner.y);
    }
}

TEST_P(DpiDialogTests, AContainerThatIsToldAloneTakesTheDialogAlong)
{
    monitor.set(96);
    ASSERT_TRUE(show());
    monitor.set(GetParam());
    container.site->resize(size());
    expectAt(GetParam());
}

INSTANTIATE_TEST_SUITE_P(EachResolution, DpiTests, Values(96, 144, 192));
INSTANTIATE_TEST_SUITE_P(EachResolution, StripedDialogTests, Values(96, 144, 192));
INSTANTIATE_TEST_SUITE_P(EachResolution, DpiDialogTests, Values(96, 144, 192));

} // namespace korvane::test
