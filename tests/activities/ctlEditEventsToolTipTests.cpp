// What the activity dialog says when the pointer rests on a control.
#include "tests/activities/ActivityDialog.h"
#include "tests/support/ComRules.h"

namespace korvane::test
{

class ctlEditEventsToolTipTests : public ActivityDialog
{
protected:
    std::wstring toolTipOf(HWND control) const
    {
        wchar_t text[200]{};
        TOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.hwnd = container.dialogWindow();
        tool.uId = reinterpret_cast<UINT_PTR>(control);
        tool.lpszText = text;
        // The tree has tooltips of its own, which do not know the control.
        for (HWND tips = nullptr; !*text;)
        {
            tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr);
            if (!tips)
                break;
            if (GetWindowThreadProcessId(tips, nullptr) == GetCurrentThreadId())
                SendMessageW(tips, TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
        }
        return text;
    }

    /// Whether the pointer in the middle of a control is that control's own, as its tooltip needs.
    static bool getsThePointer(HWND control)
    {
        RECT place{};
        GetWindowRect(control, &place);
        const int x = (place.left + place.right) / 2;
        const int y = (place.top + place.bottom) / 2;
        return SendMessageW(control, WM_NCHITTEST, 0, MAKELPARAM(x, y)) != HTTRANSPARENT;
    }
};

TEST_F(ctlEditEventsToolTipTests, EachControlHasItsOwn)
{
    showed(1);
    const std::pair<HWND, const wchar_t*> expected[] = {
        {label(L"New activity:"), L"New activity"},
        {picker(0), L"Start time"},
        {picker(1), L"End time"},
        {types(), L"Activity type"},
        {textBox(), L"Description for this activity"},
        {tree(), L"One or more names, where the activity is shown."},
        {repeat(), L"Show repetition possibilities"}};
    for (const auto& [control, text] : expected)
    {
        EXPECT_EQ(toolTipOf(control), text);
        EXPECT_TRUE(getsThePointer(control)) << narrow(text);
    }
    for (const HWND control : {ok(), container.button(L"Cancel"), deletion(), label(L"St&art"), swatch()})
        EXPECT_EQ(toolTipOf(control), L"");
}

} // namespace korvane::test
