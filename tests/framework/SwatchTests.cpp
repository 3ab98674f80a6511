// Colours on a dialog: swatches, and buttons with a colour or a picture.
#include "framework/control/ControlArray.h"
#include "framework/control/Dpi.h"
#include "framework/control/Swatch.h"
#include "tests/framework/ControlDialog.h"

#include <PictureIds.h>
#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr long palette[] = {RGB(200, 0, 0), RGB(0, 120, 0), RGB(0, 0, 200)};

struct SwatchLayout
{
    explicit SwatchLayout(DialogWindow& dialog)
        : lblColor(makeControls<3>([&](int index) {
              const std::wstring name = L"Colour " + std::to_wstring(index);
              return Swatch(dialog,
                            {.name = L"lblColor",
                             .place = {120 + 400.0f * static_cast<float>(index), 120, 360, 360},
                             .text = name.c_str()},
                            index == 0 ? Swatch::Kind::first : Swatch::Kind::further);
          })),
          shpColor{dialog, {.name = L"shpColor", .place = {120, 600, 360, 360}}},
          cmdColor{dialog, {.name = L"cmdColor", .place = {600, 600, 1500, 345}, .text = L"More &colours"}},
          cmdUp{dialog,
                {.name = L"cmdUp", .place = {2400, 600, 400, 400}, .text = L"Move up", .toolTip = L"Move up"},
                PICTURE_MOVE_UP}
    {
        for (std::size_t index = 0; index < lblColor.size(); ++index)
        {
            lblColor[index].setFillColor(palette[index]);
            lblColor[index].onClick = [this, index] { clicked.push_back(index); };
        }
        cmdColor.onClick = [this] { ++pressed; };
        cmdUp.onClick = [this] { ++pressed; };
    }

    ControlArray<Swatch, 3> lblColor;
    Swatch shpColor;
    Button cmdColor;
    Button cmdUp;
    std::vector<std::size_t> clicked;
    int pressed = 0;
};

class SwatchTests : public ControlTest<SwatchLayout>
{
protected:
    Swatch& swatch(std::size_t index) const { return layout().lblColor[index]; }

    /// What the user sees at a point of a control, from its left and upper edge.
    static COLORREF colorAt(const Control& control, int x, int y)
    {
        control.showNow();
        const HDC context = GetDC(control.window());
        const COLORREF color = GetPixel(context, x, y);
        ReleaseDC(control.window(), context);
        return color;
    }

    static COLORREF fillOf(const Control& control) { return colorAt(control, 6, 6); }
};

} // namespace

TEST_F(SwatchTests, ASwatchShowsItsColourAndIsNamedForScreenReaders)
{
    for (std::size_t index = 0; index < 3; ++index)
    {
        EXPECT_EQ(fillOf(swatch(index)), static_cast<COLORREF>(palette[index]));
        EXPECT_EQ(accessibleName(swatch(index).window()), L"Colour " + std::to_wstring(index));
    }
    EXPECT_EQ(fillOf(layout().shpColor), GetSysColor(COLOR_WINDOW));
}

TEST_F(SwatchTests, ASwatchIsClickedByMouseAndByKey)
{
    Container::click(swatch(1).window());
    swatch(0).setFocus();
    container.press(VK_RIGHT);
    container.press(VK_RIGHT);
    EXPECT_EQ(GetFocus(), swatch(2).window());
    container.press(VK_SPACE);
    EXPECT_THAT(layout().clicked, ElementsAre(1, 2));
    container.press(VK_TAB);
    EXPECT_EQ(GetFocus(), layout().cmdColor.window());
}

TEST_F(SwatchTests, EnterOnASwatchConfirmsTheDialog)
{
    swatch(1).setFocus();
    container.press(VK_RETURN);
    EXPECT_THAT(layout().clicked, IsEmpty());
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(SwatchTests, ASwatchIsRaisedOrFlat)
{
    const COLORREF raised = colorAt(swatch(1), 0, 0);
    const COLORREF other = colorAt(swatch(0), 0, 0);
    EXPECT_EQ(raised, other);
    swatch(1).setRaised(false);
    EXPECT_EQ(colorAt(swatch(1), 0, 0), GetSysColor(COLOR_3DSHADOW));
    EXPECT_EQ(colorAt(swatch(1), 1, 1), static_cast<COLORREF>(palette[1])); // one line, and no edge of two
    EXPECT_NE(colorAt(swatch(0), 1, 1), static_cast<COLORREF>(palette[0]));
    swatch(1).setRaised(true);
    EXPECT_EQ(colorAt(swatch(1), 0, 0), raised);
}

TEST_F(SwatchTests, AButtonShowsAColourAndStaysAButton)
{
    Button& button = layout().cmdColor;
    const COLORREF plain = fillOf(button);
    ASSERT_NE(plain, RGB(10, 60, 110));
    button.setFillColor(RGB(10, 60, 110));
    EXPECT_EQ(fillOf(button), RGB(10, 60, 110));
    EXPECT_EQ(accessibleName(button.window()), L"More colours");
    Container::click(button.window());
    SendMessageW(dialog->window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button.window()),
                 TRUE); // as Tab does
    container.press(VK_SPACE);
    container.press(VK_RETURN); // it is the default button while it has the focus
    container.press('C', false, true);
    EXPECT_EQ(layout().pressed, 4);
    EXPECT_THAT(container.done, IsEmpty());
    button.setFillColor(std::nullopt);
    EXPECT_EQ(fillOf(button), plain);
}

TEST_F(SwatchTests, AButtonShowsAPictureAndKeepsItsName)
{
    Button& button = layout().cmdUp;
    auto* const icon = reinterpret_cast<HICON>(SendMessageW(button.window(), BM_GETIMAGE, IMAGE_ICON, 0));
    ICONINFO parts{};
    ASSERT_TRUE(GetIconInfo(icon, &parts));
    BITMAP picture{};
    GetObjectW(parts.hbmColor, sizeof picture, &picture);
    DeleteObject(parts.hbmColor);
    DeleteObject(parts.hbmMask);
    EXPECT_EQ(picture.bmWidth, toPixels(240, windowDpi(button.window())));
    EXPECT_EQ(accessibleName(button.window()), L"Move up");
    Container::click(button.window());
    EXPECT_EQ(layout().pressed, 1);
}

} // namespace korvane::test
