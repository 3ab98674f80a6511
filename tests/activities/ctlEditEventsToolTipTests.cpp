// What the activity dialog says when the pointer rests on a control.
#include "tests/activities/ActivityDialog.h"
#include "tests/support/ComRules.h"

namespace korvane::test
{

class ctlEditEventsToolTipTests : public ActivityDialog
{
protected:
    using ToolTips = std::vector<std::pair<HWND, const wchar_t*>>;

    ToolTips expected() const
    {
        return {{label(L"New activity:"), L"New activity"},
                {picker(0), L"Start time"},
                {picker(1), L"End time"},
                {types(), L"Activity type"},
                {textBox(), L"Description for this activity"},
                {tree(), L"One or more names, where the activity is shown."},
                {repeat(), L"Show repetition possibilities"}};
    }

    /// The window that knows the tooltip of a control, and the text of it: the tree has tooltips of its own.
    std::pair<HWND, std::wstring> toolTipOf(HWND control) const
    {
        wchar_t text[200]{};
        TOOLINFOW tool = toolFor(text);
        tool.hwnd = container.dialogWindow();
        tool.uId = reinterpret_cast<UINT_PTR>(control);
        for (const HWND tips : container.toolTips())
        {
            SendMessageW(tips, TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
            if (*text)
                return {tips, text};
        }
        return {};
    }

    /// Rests the pointer on a control, and answers what is shown then.
    std::wstring shownOn(HWND control) const
    {
        const HWND tips = toolTipOf(control).first;
        SendMessageW(tips, TTM_SETDELAYTIME, TTDT_INITIAL, 1);
        SendMessageW(tips, TTM_SETDELAYTIME, TTDT_RESHOW, 1);
        RECT place{};
        GetClientRect(control, &place);
        wchar_t text[200]{};
        TOOLINFOW tool = toolFor(text);
        // Tests that run beside this one have windows and move the pointer too.
        for (int waits = 0; waits < 500 && tool.uId != reinterpret_cast<UINT_PTR>(control); ++waits)
        {
            if (waits % 25 == 0)
            {
                SetWindowPos(GetAncestor(control, GA_ROOT), HWND_TOPMOST, 0, 0, 0, 0,
                             SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
                Container::point(control, {10 + waits / 25, place.bottom / 2});
            }
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
            container.pump();
            if (IsWindowVisible(tips))
                SendMessageW(tips, TTM_GETCURRENTTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        }
        return text;
    }

private:
    static TOOLINFOW toolFor(wchar_t* text)
    {
        TOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.lpszText = text;
        return tool;
    }
};

TEST_F(ctlEditEventsToolTipTests, EachControlHasItsOwn)
{
    showed(1);
    for (const auto& [control, text] : expected())
        EXPECT_EQ(toolTipOf(control).second, text);
    for (const HWND control : {ok(), container.button(L"Cancel"), deletion(), label(L"St&art"), swatch()})
        EXPECT_EQ(toolTipOf(control).second, L"");
}

TEST_F(ctlEditEventsToolTipTests, TheOneOfTheControlUnderThePointerIsShown)
{
    showed(1);
    for (const auto& [control, text] : expected())
        EXPECT_EQ(shownOn(control), text);
}

TEST_F(ctlEditEventsToolTipTests, TheyAreStillShownWhenTheDialogIsReadiedAgain)
{
    showed(1);
    ASSERT_TRUE(container.ready());
    EXPECT_EQ(shownOn(textBox()), L"Description for this activity");
}

} // namespace korvane::test
