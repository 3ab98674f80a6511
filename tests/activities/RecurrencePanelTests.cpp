#include "tests/activities/ActivityDialog.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

const ErrorInfo refused{static_cast<HRESULT>(0x80041235), L"KorvaneData", L"No rules today."};

} // namespace

class RecurrencePanelTests : public RecurrencePanel
{
};

TEST_F(RecurrencePanelTests, IsClosedForAnActivityWithoutRule)
{
    showed(3);
    EXPECT_FALSE(isChecked(repeat()));
    EXPECT_FALSE(container.visible(option(L"By &Day")));
    EXPECT_FALSE(container.visible(intervalBox()));
}

TEST_F(RecurrencePanelTests, CheckingTheBoxMakesADailyRuleAtOnce)
{
    showed(1);
    Container::click(repeat());
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.NewRecurrence(1)"));
    EXPECT_TRUE(isChecked(option(L"By &Day")));
    EXPECT_TRUE(container.visible(option(L"By &Day")));
    EXPECT_EQ(Container::text(countBox()), L"10");
    EXPECT_EQ(Container::text(intervalBox()), L"");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(100, day 0/10/0)");
}

TEST_F(RecurrencePanelTests, TheDialogGrowsAndShrinksWithThePanel)
{
    showed(1);
    const SIZE closed = container.site->extent();
    const LONG buttonTop = container.place(ok()).top;
    Container::click(repeat());
    EXPECT_EQ(container.resizes, 1);
    const SIZE open = container.site->extent();
    EXPECT_GT(open.cy, closed.cy);
    EXPECT_EQ(container.place(ok()).top - buttonTop, open.cy - closed.cy);
    EXPECT_LE(container.place(ok()).bottom, open.cy);
    Container::click(repeat());
    EXPECT_EQ(container.resizes, 2);
    EXPECT_EQ(container.site->extent().cy, closed.cy);
    EXPECT_EQ(container.place(ok()).top, buttonTop);
    closeAndForget();
    showedWith({2, 1, 4, 0});
    EXPECT_EQ(container.resizes, 3); // told by Ready
    EXPECT_EQ(container.site->extent().cy, open.cy);
}

TEST_F(RecurrencePanelTests, UncheckingTheBoxDropsTheRule)
{
    showedWith({2, 1, 4, 0});
    Container::click(repeat());
    EXPECT_FALSE(container.visible(intervalBox()));
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, none)");
}

TEST_F(RecurrencePanelTests, AStoredRuleIsShownAndStaysAsItIs)
{
    const wchar_t* const captions[] = {L"By &Day", L"By &Week", L"By &Month", L"By &Year", L"By &Easter"};
    const char* const kinds[] = {"day", "week", "month", "year", "Easter"};
    for (long kind = 1; kind <= 5; ++kind)
    {
        showedWith({kind, 2, 7, 42});
        EXPECT_TRUE(isChecked(option(captions[kind - 1])));
        EXPECT_EQ(Container::text(intervalBox()), L"3");
        EXPECT_EQ(Container::text(countBox()), L"7");
        EXPECT_EQ(storedRule(), std::string("Events.SetRecurrence(50, ") + kinds[kind - 1] + " 2/7/42)");
        closeAndForget();
    }
}

TEST_F(RecurrencePanelTests, NumbersBeyondTheArrowsAreShownAndKept)
{
    showedWith({1, -1, 0, 0});
    EXPECT_EQ(Container::text(intervalBox()), L"0");
    EXPECT_EQ(Container::text(countBox()), L"0");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, day -1/0/0)");
}

TEST_F(RecurrencePanelTests, ANumberThatIsTypedReplacesOneBeyondTheArrows)
{
    showedWith({1, 0, 0, 0});
    retype(countBox(), L"1");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, day 0/1/0)");
    closeAndForget();
    showedWith({1, 0, 20000, 0});
    retype(countBox(), L"9999");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, day 0/9999/0)");
    closeAndForget();
    showedWith({1, -1, 4, 0});
    retype(intervalBox(), L"1");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, day 0/4/0)");
}

TEST_F(RecurrencePanelTests, ABoxTakesNoMoreDigitsThanTheArrowsReach)
{
    showedWith({1, 0, 7, 0});
    retype(countBox(), L"12000");
    EXPECT_EQ(Container::text(countBox()), L"1200");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, day 0/1200/0)");
}

TEST_F(RecurrencePanelTests, WhatEnterSavesStandsInTheBox)
{
    showedWith({1, 0, 7, 0});
    std::wstring submitted;
    container.onSubmit = [&](IAppCommand&) {
        submitted = Container::text(countBox());
        return false;
    };
    retype(countBox(), L"0");
    EXPECT_EQ(Container::text(countBox()), L"0");
    container.press(VK_RETURN);
    EXPECT_EQ(submitted, L"7");
}

TEST_F(RecurrencePanelTests, ARuleOfAnUnknownKindIsKept)
{
    showedWith({9, 2, 7, 1});
    EXPECT_TRUE(isChecked(repeat()));
    EXPECT_FALSE(container.visible(intervalBox()));
    for (const wchar_t* caption : {L"By &Day", L"By &Week", L"By &Month", L"By &Year", L"By &Easter"})
        EXPECT_FALSE(isChecked(option(caption)));
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, kind 9 2/7/1)");
}

TEST_F(RecurrencePanelTests, AnotherKindIsANewRule)
{
    showedWith({2, 3, 4, 5});
    Container::click(option(L"By &Month"));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.NewRecurrence(3)"));
    EXPECT_EQ(Container::text(countBox()), L"10");
    EXPECT_EQ(Container::text(intervalBox()), L"");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, month 0/10/0)");
}

TEST_F(RecurrencePanelTests, TheSameKindAgainKeepsTheRuleAndItsNumbers)
{
    showedWith({2, 3, 4, 5});
    Container::click(option(L"By &Week"));
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 3/4/5)");
}

TEST_F(RecurrencePanelTests, EachKindHasItsOwnTexts)
{
    struct
    {
        long kind;
        const wchar_t* every;
        const wchar_t* period;
    } const kinds[] = {{1, L"Repeat every ", L" . day  "},
                       {2, L"Repeat every ", L" . week  "},
                       {3, L"Repeat every ", L" . month  "},
                       {4, L"Repeat every", L" . year  "},
                       {5, L"Repeat every", L" . easter"}};
    for (const auto& expected : kinds)
    {
        showedWith({expected.kind, 2, 7, 0});
        EXPECT_TRUE(container.visible(label(expected.every)));
        EXPECT_TRUE(container.visible(label(expected.period)));
        EXPECT_TRUE(container.visible(label(L"Repeat ")));
        EXPECT_TRUE(container.visible(label(L" times")));
        closeAndForget();
    }
}

TEST_F(RecurrencePanelTests, WhatFollowsABoxStandsBehindIt)
{
    showedWith({4, 2, 7, 0});
    EXPECT_LE(container.place(label(L"Repeat every")).right, container.place(intervalBox()).left);
    EXPECT_EQ(container.place(intervalBox()).right, container.place(arrows(0)).left);
    EXPECT_LE(container.place(arrows(0)).right, container.place(label(L" . year  ")).left);
    EXPECT_EQ(container.place(countBox()).left, container.place(intervalBox()).left);
}

TEST_F(RecurrencePanelTests, TypedNumbersGoToTheRule)
{
    showedWith({2, 3, 4, 5});
    retype(intervalBox(), L"6");
    retype(countBox(), L"12");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 5/12/5)");
}

TEST_F(RecurrencePanelTests, OnlyDigitsAndBackspaceAreTaken)
{
    showedWith({2, 3, 4, 5});
    for (const HWND box : {intervalBox(), countBox()})
    {
        const std::wstring before = Container::text(box);
        SetFocus(box);
        SendMessageW(box, EM_SETSEL, 9, 9);
        container.type(L"x-., \x16\x03");
        EXPECT_EQ(Container::text(box), before);
        container.type(L"7\b");
        EXPECT_EQ(Container::text(box), before);
    }
}

TEST_F(RecurrencePanelTests, ANumberThatIsNoneLeavesTheRule)
{
    showedWith({2, 3, 4, 5});
    SetWindowTextW(countBox(), L"x"); // pasted, say
    SetWindowTextW(intervalBox(), L"");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 3/4/5)");
}

TEST_F(RecurrencePanelTests, AnIntervalOfOneIsABlank)
{
    showedWith({2, 3, 4, 5});
    retype(intervalBox(), L"1");
    EXPECT_EQ(Container::text(intervalBox()), L"");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 0/4/5)");
}

TEST_F(RecurrencePanelTests, TheArrowsCount)
{
    showedWith({2, 1, 4, 5});
    clickArrow(0, true);
    EXPECT_EQ(Container::text(intervalBox()), L"3");
    clickArrow(0, false);
    clickArrow(0, false);
    EXPECT_EQ(Container::text(intervalBox()), L"");
    clickArrow(0, false);
    EXPECT_EQ(Container::text(intervalBox()), L"");
    clickArrow(1, true);
    EXPECT_EQ(Container::text(countBox()), L"5");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 0/5/5)");
}

TEST_F(RecurrencePanelTests, AnArrowWritesItsNumberOnce)
{
    data.recordRules = true;
    showedWith({2, 1, 4, 5});
    clickArrow(1, true);
    EXPECT_THAT(data.takeCalls(), ElementsAre("Recurrence.put_Count(5)"));
}

TEST_F(RecurrencePanelTests, TheArrowKeysCountInTheBoxes)
{
    showedWith({2, 1, 4, 5});
    SetFocus(countBox());
    container.press(VK_UP);
    EXPECT_EQ(Container::text(countBox()), L"5");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 1/5/5)");
}

TEST_F(RecurrencePanelTests, TheArrowsCountOnFromWhatStandsInTheBox)
{
    showedWith({2, 3, 4, 5});
    retype(countBox(), L"8");
    container.press(VK_UP);
    EXPECT_EQ(Container::text(countBox()), L"9");
    retype(intervalBox(), L"1"); // a blank
    container.press(VK_UP);
    EXPECT_EQ(Container::text(intervalBox()), L"2");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 1/9/5)");
}

TEST_F(RecurrencePanelTests, TheArrowsOfAnEmptiedBoxKeepTheirNumber)
{
    showedWith({2, 3, 4, 5});
    retype(countBox(), L"\b");
    container.press(VK_DOWN);
    EXPECT_EQ(Container::text(countBox()), L"3");
    retype(intervalBox(), L"\b");
    container.press(VK_UP);
    EXPECT_EQ(Container::text(intervalBox()), L"5");
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 4/3/5)");
}

TEST_F(RecurrencePanelTests, WithoutACountTheFirstUpGivesOne)
{
    showedWith({2, 1, 0, 0});
    retype(countBox(), L"\b");
    container.press(VK_DOWN);
    EXPECT_EQ(Container::text(countBox()), L"");
    container.press(VK_UP);
    EXPECT_EQ(Container::text(countBox()), L"1");
    container.press(VK_UP);
    container.press(VK_DOWN);
    container.press(VK_DOWN);
    EXPECT_EQ(Container::text(countBox()), L"1");
    closeAndForget();
    showedWith({2, 1, 0, 0});
    clickArrow(1, true);
    EXPECT_EQ(Container::text(countBox()), L"1");
}

TEST_F(RecurrencePanelTests, TheArrowKeysChooseAKindAndStayAmongTheKinds)
{
    showedWith({5, 1, 4, 5});
    SetFocus(option(L"By &Easter"));
    container.press(VK_DOWN);
    EXPECT_TRUE(isChecked(option(L"By &Day")));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.NewRecurrence(1)"));
    container.press(VK_UP);
    EXPECT_TRUE(isChecked(option(L"By &Easter")));
}

TEST_F(RecurrencePanelTests, AFailedFirstRuleLeavesThePanelClosed)
{
    showed(1);
    data.fail("Root.NewRecurrence", refused);
    Container::click(repeat());
    EXPECT_THAT(container.errors, ElementsAre(refused));
    EXPECT_FALSE(isChecked(repeat()));
    EXPECT_FALSE(container.visible(option(L"By &Day")));
    EXPECT_EQ(container.resizes, 0);
    Container::click(repeat());
    EXPECT_TRUE(container.visible(option(L"By &Day")));
}

TEST_F(RecurrencePanelTests, AFailedChangeOfKindKeepsTheFormerOne)
{
    showedWith({2, 3, 4, 5});
    data.fail("Root.NewRecurrence", refused);
    Container::click(option(L"By &Month"));
    EXPECT_THAT(container.errors, ElementsAre(refused));
    EXPECT_TRUE(isChecked(option(L"By &Week")));
    EXPECT_FALSE(isChecked(option(L"By &Month")));
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 3/4/5)");
}

TEST_F(RecurrencePanelTests, ADataLayerThatGivesNoRuleChangesNone)
{
    const ErrorInfo nothing{S_FALSE, {}, {}};
    showedWith({2, 3, 4, 5});
    data.fail("Root.NewRecurrence", nothing);
    Container::click(option(L"By &Month"));
    EXPECT_EQ(container.errors.size(), 1U);
    EXPECT_TRUE(isChecked(option(L"By &Week")));
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 3/4/5)");
    closeAndForget();

    showed(1);
    data.fail("Root.NewRecurrence", nothing);
    Container::click(repeat());
    EXPECT_EQ(container.errors.size(), 1U);
    EXPECT_FALSE(isChecked(repeat()));
    EXPECT_FALSE(container.visible(option(L"By &Day")));
}

TEST_F(RecurrencePanelTests, ADialogShownAgainShowsTheRuleOfItsCommand)
{
    showedWith({2, 3, 4, 5});
    Container::click(option(L"By &Month"));
    Container::click(repeat());
    data.events[0].rule = Rule{4, 1, 2, 0};
    EXPECT_TRUE(container.ready());
    EXPECT_TRUE(isChecked(repeat()));
    EXPECT_TRUE(isChecked(option(L"By &Year")));
    EXPECT_EQ(Container::text(intervalBox()), L"2");
}

} // namespace korvane::test
