// A dialog that lays itself out in the size that it is given, and messages that are none of its controls'.
#include "tests/framework/TestDialog.h"

namespace korvane::test
{

namespace
{

/// A list that fills the dialog but for a button below it.
class ResizableDialog final : public Dialog<ResizableDialog, TestDialogCommand>
{
public:
    static constexpr float below = 600;

    static const GUID* classId() noexcept
    {
        static constexpr GUID id{
            0x6E2A5B10, 0x2C41, 0x4F0E, {0x9B, 0x51, 0x0D, 0x7A, 0x31, 0x5E, 0x88, 0x07}};
        return &id;
    }

    ResizableDialog() : Dialog(22000, 4500, 3000) {}

    int posts = 0;

    using DialogWindow::dpi;
    using DialogWindow::postToDialog;
    using OleControl::Height;
    using OleControl::Width;

    /// Counts what it is told: a frame has no window that could tell.
    struct DeafFrame : Frame
    {
        using Frame::Frame;
        void notify(WORD) override { ++told; }
        void posted(LPARAM) override { ++told; }
        int told = 0;
    };

    DeafFrame fraAll{*this, {.name = L"fraAll", .place = {0, 0, 4500, 3000}}};
    ListBox lstAll{fraAll, {.name = L"lstAll", .place = {0, 0, 4500, 3000 - below}}};
    Button cmdBelow{fraAll, {.name = L"cmdBelow", .place = {0, 3000 - below, 1200, 345}}};

private:
    bool load() override { return true; }
    void takeValues() override {}
    void postedToDialog() override { ++posts; }

    bool resizable() const noexcept override { return true; }
    Extent minimumSize() const noexcept override { return {1500, 1500}; }
    void resized() override
    {
        lstAll.setPlace({0, 0, Width(), Height() - below});
        cmdBelow.setTop(Height() - below);
    }
};

class ResizableDialogTests : public DialogTestOf<ResizableDialog>
{
protected:
    ResizableDialogTests() : DialogTestOf({.font = false, .sink = true, .commandSite = true}) {}

    void SetUp() override { ASSERT_TRUE(show()); }

    /// The dialog is of that size, in pixels, and laid out in it.
    void expectLaidOut(SIZE wanted) const
    {
        RECT whole{};
        GetClientRect(container.dialogWindow(), &whole);
        EXPECT_TRUE((SIZE{whole.right, whole.bottom} == wanted)) << whole.right << " x " << whole.bottom;
        const RECT list = container.place(dialog->lstAll.window());
        const RECT button = container.place(dialog->cmdBelow.window());
        EXPECT_NEAR(list.right, wanted.cx, 1);
        EXPECT_NEAR(wanted.cy - list.bottom, toPixels(ResizableDialog::below, dialog->dpi()), 1);
        EXPECT_EQ(button.top, list.bottom);
    }

    SIZE minimum() const { return {toPixels(1500, dialog->dpi()), toPixels(1500, dialog->dpi())}; }
};

} // namespace

TEST_F(ResizableDialogTests, TheDialogTakesThePlaceThatItIsGiven)
{
    expectLaidOut({toPixels(4500, dialog->dpi()), toPixels(3000, dialog->dpi())});
    container.extent = {};
    const RECT place{10, 20, 10 + 447, 20 + 333};
    EXPECT_EQ(dialog->SetObjectRects(&place, &place), S_OK);
    expectLaidOut({447, 333});
    EXPECT_EQ(container.extent.cx, 0) << "it asks for another size";
    SIZEL extent{};
    EXPECT_EQ(dialog.as<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent), S_OK);
    EXPECT_EQ(extent.cx, toHimetric(toTwips(447, dialog->dpi())));
}

TEST_F(ResizableDialogTests, TheDialogTakesTheExtentThatItIsGiven)
{
    SIZEL extent{12000, 9000};
    EXPECT_EQ(dialog->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
    expectLaidOut(
        {toPixels(fromHimetric(12000), dialog->dpi()), toPixels(fromHimetric(9000), dialog->dpi())});
    SIZEL own{};
    EXPECT_EQ(dialog.as<IOleObject>()->GetExtent(DVASPECT_CONTENT, &own), S_OK);
    EXPECT_EQ(own.cx, 12000);
    EXPECT_EQ(own.cy, 9000);
}

TEST_F(ResizableDialogTests, TheDialogInsistsOnItsLeastSize)
{
    for (const RECT place :
         {RECT{0, 0, 5, 5}, RECT{50, 50, 10, 10}, RECT{LONG_MAX, LONG_MAX, LONG_MIN, LONG_MIN}})
    {
        container.extent = {};
        EXPECT_EQ(dialog->SetObjectRects(&place, nullptr), S_OK);
        EXPECT_TRUE(container.extent == minimum());
        expectLaidOut(minimum());
    }
    SIZEL small{-100, 3};
    EXPECT_EQ(dialog->SetExtent(DVASPECT_CONTENT, &small), S_OK);
    expectLaidOut(minimum());
}

TEST_F(ResizableDialogTests, AnotherFontScalesWhatTheDialogHasTaken)
{
    const RECT place{0, 0, 450, 300};
    EXPECT_EQ(dialog->SetObjectRects(&place, &place), S_OK);
    EXPECT_EQ(dialog->putref_Font(host::makeFont(L"MS Shell Dlg", 16).get()), S_OK);
    EXPECT_GT(container.extent.cx, 600);
    EXPECT_GT(container.extent.cy, 400);
    EXPECT_NEAR(dialog->lstAll.Height(), dialog->Height() - ResizableDialog::below, 1);
}

TEST_F(ResizableDialogTests, AMessageThatComesFromNoWindowIsNoControls)
{
    SendMessageW(container.dialogWindow(), WM_COMMAND, MAKEWPARAM(200, 1), 0); // of an accelerator
    SendMessageW(container.dialogWindow(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(dialog->fraAll.told, 0);
    dialog->postToDialog();
    container.pump();
    EXPECT_EQ(dialog->posts, 1);
    EXPECT_EQ(dialog->fraAll.told, 0);
}

} // namespace korvane::test
