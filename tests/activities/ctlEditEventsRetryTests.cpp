// What the user sees of the activity dialog when the database has refused what it was to store.
#include "tests/activities/ActivityDialog.h"
#include "tests/support/ComRules.h"
#include "tests/support/Look.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

const ErrorInfo refused{static_cast<HRESULT>(0x80041237), L"KorvaneData.Events", L"Not just now."};

} // namespace

/// An activity dialog with more resources than the tree shows at once, in which every field has been changed.
class ctlEditEventsRetryTests : public ActivityDialog
{
protected:
    void SetUp() override
    {
        ActivityDialog::SetUp();
        data.newRule = Rule{0, 0, 10, 0};
        for (long id = 30; id < 60; ++id)
            data.names.push_back({id, L"Driver " + std::to_wstring(id), 4});
    }

    void fillIn()
    {
        setTime(picker(0), monday + 13 * hour);
        setTime(picker(1), monday + 15 * hour);
        SetFocus(types());
        container.press(VK_DOWN);
        toggleByKey(node(L"Driver 40", L"Drivers"));
        if (!isChecked(repeat()))
            Container::click(repeat());
        Container::click(option(L"By &Month"));
        retype(intervalBox(), L"3");
        retype(countBox(), L"12");
        retype(textBox(), L"one\rtwo\rthree\rfour\rfive\rsix\rseven\reight");
        SendMessageW(textBox(), EM_SETSEL, 30, 31);
        SendMessageW(textBox(), WM_VSCROLL, SB_LINEUP, 0);
        SendMessageW(tree(), WM_VSCROLL, SB_TOP, 0);
        for (int line = 0; line < 3; ++line)
            SendMessageW(tree(), WM_VSCROLL, SB_LINEDOWN, 0);
        container.pump();
        data.takeCalls();
    }

    /// All that is seen of the dialog, and who has the focus.
    std::vector<std::string> everything() const
    {
        auto seen = lookOf(container.dialogWindow());
        seen.push_back("focus: " + narrow(Container::text(GetFocus())));
        return seen;
    }
};

TEST_F(ctlEditEventsRetryTests, AFailureLeavesEveryFieldCheckAndPlaceAsItWas)
{
    for (const long operation : {1L, 3L})
        for (const char* failing : {"EventLinks.Create", "EventLinks.AddNames", "EventLinks.SetRecurrence"})
        {
            SCOPED_TRACE(operation);
            SCOPED_TRACE(failing);
            data.events = {{50, 10, 7, monday + 9 * hour, monday + 10 * hour, L"Oil change"}};
            command = create<IAppCommand>(__uuidof(::EditEvents));
            showed(operation);
            fillIn();
            SetFocus(countBox());
            const auto before = everything();
            // Scrolled, and away from the selection.
            ASSERT_EQ(nodeText(next(TVGN_FIRSTVISIBLE)), L"Carla");
            ASSERT_EQ(nodeText(next(TVGN_CARET)), L"Driver 40");
            ASSERT_NE(SendMessageW(textBox(), EM_GETFIRSTVISIBLELINE, 0, 0), 0);
            ASSERT_EQ(Container::text(intervalBox()), L"3");

            data.fail(failing, refused);
            container.press(VK_RETURN);
            EXPECT_THAT(container.errors, ElementsAre(refused));
            EXPECT_THAT(container.done, IsEmpty());
            EXPECT_EQ(everything(), before);

            container.press(VK_RETURN);
            EXPECT_THAT(container.done, ElementsAre(false));
            EXPECT_EQ(data.events.size(), operation == 1 ? 3U : 2U);
            container.close();
            container.errors.clear();
            container.done.clear();
        }
}

TEST_F(ctlEditEventsRetryTests, AFailedDeletionLeavesEveryFieldCheckAndPlaceAsItWas)
{
    showed(3);
    fillIn();
    SetFocus(deletion());
    const auto before = everything();
    data.fail("Events.Remove", refused);
    container.press(VK_SPACE);
    EXPECT_THAT(container.errors, ElementsAre(refused));
    EXPECT_EQ(everything(), before);
    container.press(VK_SPACE);
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(data.events, IsEmpty());
}

} // namespace korvane::test
