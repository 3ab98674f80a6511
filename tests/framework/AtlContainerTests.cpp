// A dialog in a container of the platform's own, which offers nothing beyond what every control may expect.
#include "tests/framework/TestDialog.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

template <class Function> Function* entryPoint(HMODULE module, const char* name)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

class AtlContainerTests : public testing::Test
{
protected:
    void SetUp() override
    {
        const HMODULE atl = LoadLibraryW(L"atl.dll");
        ASSERT_TRUE(atl) << "the platform has no atl.dll";
        static const BOOL windowClassIsThere = entryPoint<BOOL WINAPI()>(atl, "AtlAxWinInit")();
        ASSERT_TRUE(windowClassIsThere);
        attach = entryPoint<HRESULT WINAPI(IUnknown*, HWND, IUnknown**)>(atl, "AtlAxAttachControl");
        ASSERT_TRUE(attach);
        top = CreateWindowExW(WS_EX_CONTROLPARENT, L"Static", L"Container", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                              40, 40, 500, 400, nullptr, nullptr, nullptr, nullptr);
        window = CreateWindowExW(WS_EX_CONTROLPARENT, L"AtlAxWin", L"", WS_CHILD | WS_VISIBLE, 30, 20,
                                 pixels(TestDialog::designWidth), pixels(TestDialog::designHeight), top,
                                 nullptr, nullptr, nullptr);
        ASSERT_TRUE(window);
        // Without a place for it, one implementation of the platform makes no container at all.
        ComPtr<IUnknown> container;
        ASSERT_EQ(attach(dialog.as<IUnknown>().get(), window, container.put()), S_OK);
        ASSERT_TRUE(container);
        call(dialog.as<IAppDialog>(), &IAppDialog::putref_Command, command.as<IDispatch>().get());
    }

    void TearDown() override
    {
        if (IsWindow(top))
            DestroyWindow(top);
        setCurrentResources(nullptr);
    }

    static int pixels(float twips) { return toPixels(twips, 96); }

    bool ready() const
    {
        VARIANT_BOOL result = VARIANT_FALSE;
        call(dialog.as<IAppDialog>(), &IAppDialog::get_Ready, &result);
        return result != VARIANT_FALSE;
    }

    static void pump()
    {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    static void type(const wchar_t* characters)
    {
        for (; *characters; ++characters)
            PostMessageW(GetFocus(), WM_CHAR, *characters, 1);
        pump();
    }

    /// Place in the container's window.
    RECT place(HWND control) const
    {
        RECT result{};
        GetWindowRect(control, &result);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&result), 2);
        return result;
    }

    HRESULT(WINAPI* attach)(IUnknown*, HWND, IUnknown**) = nullptr;
    HWND top = nullptr;
    HWND window = nullptr;
    ComPtr<TestDialogCommand> command = make<TestDialogCommand>();
    ComPtr<TestDialog> dialog = make<TestDialog>();
};

} // namespace

TEST_F(AtlContainerTests, TheDialogIsReadyAndStandsInTheContainersWindow)
{
    EXPECT_TRUE(ready());
    EXPECT_EQ(dialog->loads, 1);
    EXPECT_TRUE(IsChild(window, dialog->window()));
    const RECT all = place(dialog->window());
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
        const RECT shown = place(control->window());
        EXPECT_EQ(shown.left, toPixels(designed.left, dialog->dpi()));
        EXPECT_EQ(shown.top, toPixels(designed.top, dialog->dpi()));
        EXPECT_EQ(shown.right, toPixels(designed.left + designed.width, dialog->dpi()));
        EXPECT_EQ(shown.bottom, toPixels(designed.bottom(), dialog->dpi()));
    }
}

TEST_F(AtlContainerTests, WithoutAContainersFontTheDesignedOneStays)
{
    ASSERT_TRUE(ready());
    ComPtr<IFontDisp> font;
    call(dialog.as<IDialogControl>(), &IDialogControl::get_Font, font.put());
    CY size{};
    call(font.as<IFont>(), &IFont::get_Size, &size);
    EXPECT_NEAR(static_cast<double>(size.int64) / 10000, 8, 0.3);
}

TEST_F(AtlContainerTests, ControlsArePainted)
{
    ASSERT_TRUE(ready());
    RedrawWindow(top, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_ERASE);
    pump();
    const RECT box = place(dialog->lstInner.window());
    const HDC context = GetDC(window);
    EXPECT_EQ(GetPixel(context, (box.left + box.right) / 2, (box.top + box.bottom) / 2),
              GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(GetPixel(context, 2, 2), GetSysColor(COLOR_BTNFACE));
    ReleaseDC(window, context);
}

TEST_F(AtlContainerTests, TextIsTypedAndTheButtonsDoNoHarm)
{
    ASSERT_TRUE(ready());
    dialog->txtName.setText(L"");
    SetFocus(dialog->txtName.window());
    type(L"Vans");
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
    DestroyWindow(window);
    pump();
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
    DestroyWindow(top);
    pump();
    EXPECT_EQ(dialog->window(), nullptr);
    EXPECT_EQ(dialog->referenceCount(), 1U);
}

} // namespace korvane::test
