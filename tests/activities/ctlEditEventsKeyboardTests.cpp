// The activity dialog for those who use no mouse.
#include "tests/activities/ActivityDialog.h"

namespace korvane::test
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ctlEditEventsKeyboardTests : public ActivityDialog
{
protected:
    void showedWith(const Rule& rule)
    {
        data.events[0].rule = rule;
        showed(3);
    }

    /// Where Tab leads from the start time, up to a number of controls.
    std::vector<HWND> tabOrder(int controls)
    {
        std::vector<HWND> order;
        SetFocus(picker(0));
        for (int step = 0; step < controls; ++step)
        {
            order.push_back(GetFocus());
            container.press(VK_TAB);
        }
        return order;
    }

    HWND cancel() const { return container.button(L"Cancel"); }
};

TEST_F(ctlEditEventsKeyboardTests, EnterConfirmsAndCtrlEnterBreaksTheLine)
{
    showed(1);
    SetFocus(textBox());
    container.type(L"a");
    container.press(VK_RETURN, false, false, true);
    EXPECT_THAT(container.done, IsEmpty());
    container.type(L"b");
    EXPECT_EQ(Container::text(textBox()), L"a\r\nb");
    container.press(VK_RETURN);
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_EQ(text(L"Text"), L"a\r\nb");
}

TEST_F(ctlEditEventsKeyboardTests, TabFollowsTheEye)
{
    showed(1);
    EXPECT_THAT(tabOrder(9), ElementsAre(picker(0), picker(1), types(), textBox(), tree(), repeat(), ok(),
                                         cancel(), picker(0)));
}

TEST_F(ctlEditEventsKeyboardTests, TabLeadsThroughTheOpenPanelByTheKindThatIsChosen)
{
    showedWith({3, 1, 4, 0});
    EXPECT_THAT(tabOrder(13),
                ElementsAre(picker(0), picker(1), types(), textBox(), tree(), repeat(), option(L"By &Month"),
                            intervalBox(), countBox(), ok(), cancel(), deletion(), picker(0)));
}

// Windows checks an option as soon as the focus comes to it by Tab; Wine does not, but has the same tab stops.
TEST_F(ctlEditEventsKeyboardTests, TabPassesTheKindsByWhenNoneIsChosen)
{
    showedWith({9, 1, 4, 0});
    EXPECT_THAT(tabOrder(9), ElementsAre(picker(0), picker(1), types(), textBox(), tree(), repeat(), ok(),
                                         cancel(), deletion()));
    container.press('M', false, true);
    EXPECT_TRUE(isChecked(option(L"By &Month")));
    SetFocus(repeat());
    container.press(VK_TAB);
    EXPECT_EQ(GetFocus(), option(L"By &Month"));
}

TEST_F(ctlEditEventsKeyboardTests, TheAccessKeyOfALockedTreeLeadsNowhere)
{
    data.mayCreateForOthers = false;
    showed(1);
    ASSERT_FALSE(IsWindowEnabled(tree()));
    SetFocus(picker(0));
    container.press('S', false, true);
    EXPECT_EQ(GetFocus(), picker(0));
}

TEST_F(ctlEditEventsKeyboardTests, ShiftTabLeadsBack)
{
    showedWith({3, 1, 4, 0});
    SetFocus(picker(0));
    std::vector<HWND> order;
    for (int step = 0; step < 7; ++step)
    {
        container.press(VK_TAB, true);
        order.push_back(GetFocus());
    }
    EXPECT_THAT(order, ElementsAre(deletion(), cancel(), ok(), countBox(), intervalBox(),
                                   option(L"By &Month"), repeat()));
}

TEST_F(ctlEditEventsKeyboardTests, AccessKeysLeadToTheirControls)
{
    showed(3);
    const std::pair<WORD, HWND> keys[] = {
        {'A', picker(0)}, {'P', picker(1)}, {'T', types()}, {'D', textBox()}, {'S', tree()}};
    for (const auto& [key, control] : keys)
    {
        SetFocus(ok());
        container.press(key, false, true);
        EXPECT_EQ(GetFocus(), control) << static_cast<char>(key);
    }
    container.press('R', false, true);
    EXPECT_TRUE(isChecked(repeat()));
}

TEST_F(ctlEditEventsKeyboardTests, AccessKeysChooseAKind)
{
    showedWith({1, 1, 4, 0});
    const std::pair<WORD, const wchar_t*> keys[] = {
        {'W', L"By &Week"}, {'M', L"By &Month"}, {'Y', L"By &Year"}, {'E', L"By &Easter"}};
    long kind = 1;
    for (const auto& [key, caption] : keys)
    {
        SetFocus(ok());
        container.press(key, false, true);
        EXPECT_TRUE(isChecked(option(caption))) << static_cast<char>(key);
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.NewRecurrence(" + std::to_string(++kind) + ")"));
    }
}

TEST_F(ctlEditEventsKeyboardTests, AccessKeysOfTheClosedPanelLeadNowhere)
{
    showed(3);
    SetFocus(ok());
    for (const WORD key : std::initializer_list<WORD>{'W', 'M', 'Y', 'E'})
    {
        container.press(key, false, true);
        EXPECT_EQ(GetFocus(), ok()) << static_cast<char>(key);
    }
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(ctlEditEventsKeyboardTests, ASharedAccessKeyTakesTurns)
{
    showedWith({1, 1, 4, 0});
    SetFocus(ok());
    container.press('D', false, true);
    EXPECT_EQ(GetFocus(), textBox());
    container.press('D', false, true);
    EXPECT_EQ(GetFocus(), option(L"By &Day"));
    EXPECT_EQ(Container::text(textBox()), L"Oil change");
}

TEST_F(ctlEditEventsKeyboardTests, TheAccessKeyOfDeleteDeletes)
{
    showed(3);
    container.press('L', false, true);
    EXPECT_THAT(data.takeCalls(), Contains("Events.Remove(50, 0)"));
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlEditEventsKeyboardTests, TheAccessKeyOfDeleteDoesNothingForANewActivity)
{
    showed(1);
    container.press('L', false, true);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_THAT(container.done, IsEmpty());
}

} // namespace korvane::test
