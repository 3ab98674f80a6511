// A dialog in a container of the platform's own, which offers nothing beyond what every control may expect.
#include "tests/framework/TestDialog.h"
#include "tests/support/AtlContainer.h"
#include "tests/support/Messages.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

class AtlContainerTests : public testing::Test
{
protected:
    void SetUp() override
    {
        container.attach(dialog.as<IUnknown>().get());
        call(dialog.as<IAppDialog>(), &IAppDialog::putref_Command, command.as<IDispatch>().get());
    }

    void TearDown() override { setCurrentResources(nullptr); }

    bool ready() const { return fetch(dialog.as<IAppDialog>(), &IAppDialog::get_Ready); }

    AtlContainer container{{toPixels(TestDialog::designWidth, 96), toPixels(TestDialog::designHeight, 96)}};
    ComPtr<TestDialogCommand> command = make<TestDialogCommand>();
    ComPtr<TestDialog> dialog = make<TestDialog>();
};

} // namespace

TEST_F(AtlContainerTests, TheDialogIsReadyAndStandsInTheContainersWindow)
{
    EXPECT_TRUE(ready());
    EXPECT_EQ(dialog->loads, 1);
    EXPECT_TRUE(IsChild(container.window(), dialog->window()));
    const RECT all = container.place(dialog->window());
    EXPECT_EQ(all.left, 0);
    EXPECT_EQ(all.top, 0);
    EXPECT_EQ(all.right, toPixels(TestDialog::designWidth, dialog->dpi()));
    EXPECT_EQ(all.bottom, toPixels(TestDialog::designHeight, dialog->dpi()));
}

TEST_F(AtlContainerTests, ControlsAreVisibleWhereTheyWereDesigned)
{
    ASSERT_TRUE(ready());
    for (const Control* control : dialog->controls())
    {
        if (!control->window())
            continue;
        EXPECT_TRUE(IsWindowVisible(control->window()));
        const Place designed = control->placeOnDialog();
        const RECT shown = container.place(control->window());
        EXPECT_EQ(shown.left, toPixels(designed.left, dialog->dpi()));
        EXPECT_EQ(shown.top, toPixels(designed.top, dialog->dpi()));
        EXPECT_EQ(shown.right, toPixels(designed.left + designed.width, dialog->dpi()));
        EXPECT_EQ(shown.bottom, toPixels(designed.bottom(), dialog->dpi()));
    }
}

TEST_F(AtlContainerTests, WithoutAContainersFontTheDesignedOneStays)
{
    ASSERT_TRUE(ready());
    const auto font = fetch(dialog.as<IDialogControl>(), &IDialogControl::get_Font);
    CY size{};
    call(font.as<IFont>(), &IFont::get_Size, &size);
    EXPECT_NEAR(static_cast<double>(size.int64) / 10000, 8, 0.3);
}

TEST_F(AtlContainerTests, ControlsArePainted)
{
    ASSERT_TRUE(ready());
    RedrawWindow(container.top(), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_ERASE);
    pumpMessages();
    const RECT box = container.place(dialog->lstInner.window());
    const HDC context = GetDC(container.window());
    EXPECT_EQ(GetPixel(context, (box.left + box.right) / 2, (box.top + box.bottom) / 2),
              GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(GetPixel(context, 2, 2), GetSysColor(COLOR_BTNFACE));
    ReleaseDC(container.window(), context);
}

TEST_F(AtlContainerTests, TextIsTypedAndTheButtonsDoNoHarm)
{
    ASSERT_TRUE(ready());
    dialog->txtName.setText(L"");
    SetFocus(dialog->txtName.window());
    AtlContainer::type(L"Vans");
    EXPECT_EQ(dialog->txtName.Text(), L"Vans");

    Container::click(dialog->fraCommands.cmdOk.window());
    EXPECT_EQ(dialog->taken, 1);
    EXPECT_EQ(command->name, L"Vans");
    EXPECT_EQ(command->executions, 0); // nobody executes it
    Container::click(dialog->fraCommands.cmdCancel.window());
    EXPECT_EQ(dialog->txtName.Text(), L"Vans");
    EXPECT_TRUE(IsWindowVisible(dialog->window()));
}

TEST_F(AtlContainerTests, AFailureThatNobodyHearsDoesNoHarm)
{
    ASSERT_TRUE(ready());
    dialog->onTake = [] { throw Failure(E_FAIL, L"test", L"refused"); };
    Container::click(dialog->fraCommands.cmdOk.window());
    dialog->onTake = nullptr;
    Container::click(dialog->fraCommands.cmdOk.window());
    EXPECT_EQ(dialog->taken, 2);
    // An error object of a test is not an error of the next one.
    SetErrorInfo(0, nullptr);
}

TEST_F(AtlContainerTests, TheEndOfTheContainersWindowReleasesEverything)
{
    ASSERT_TRUE(ready());
    SetFocus(dialog->txtName.window());
    const HWND dialogWindow = dialog->window();
    DestroyWindow(container.window());
    pumpMessages();
    EXPECT_FALSE(IsWindow(dialogWindow));
    EXPECT_EQ(dialog->window(), nullptr);
    ComPtr<IOleClientSite> site;
    EXPECT_EQ(dialog->GetClientSite(site.put()), S_OK);
    EXPECT_FALSE(site);
    EXPECT_EQ(dialog->referenceCount(), 1U);
}

TEST_F(AtlContainerTests, TheEndOfTheWindowAboveReleasesEverythingToo)
{
    ASSERT_TRUE(ready());
    DestroyWindow(container.top());
    pumpMessages();
    EXPECT_EQ(dialog->window(), nullptr);
    EXPECT_EQ(dialog->referenceCount(), 1U);
}

} // namespace korvane::test
