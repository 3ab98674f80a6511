// What users do with activities from day to day, in the dialogs and on the demo's real data layer.
#include "tests/activities/Story.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(StoryTests, AWeeklySeriesKeepsItsExceptionsWhenTheTextIsChangedForAll)
{
    openNew(10);
    retype(textBox(), L"Sweep");
    Container::click(repeat());
    Container::click(option(L"By &Week"));
    retype(countBox(), L"4");
    confirm();
    const long id = operandNumber(L"EventID");
    EXPECT_THAT(schedule(), ElementsAre(L"A 11-23 09:00 Sweep", L"A 11-30 09:00 Sweep",
                                        L"A 12-07 09:00 Sweep", L"A 12-14 09:00 Sweep"));

    openStored(id, 2, 'N');
    Container::click(deletion());
    ASSERT_THAT(container.done, ElementsAre(false));
    ASSERT_TRUE(drag(id, 3, 10, 10, monday + 14 + 15 * hour, 'N'));
    ASSERT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(schedule(),
                ElementsAre(L"A 11-23 09:00 Sweep", L"A 12-07 15:00 Sweep", L"A 12-14 09:00 Sweep"));

    openStored(id, 1, 'Y');
    retype(textBox(), L"Clean");
    confirm();
    EXPECT_THAT(schedule(),
                ElementsAre(L"A 11-23 09:00 Clean", L"A 12-07 15:00 Sweep", L"A 12-14 09:00 Clean"));
}

TEST_F(SharedActivityStoryTests, ABarDroppedOnAnotherResourceMovesAlone)
{
    ASSERT_TRUE(drag(ofA, 0, 10, 11, monday + 9 * hour, 'N'));
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(questions.asked, IsEmpty());
    EXPECT_THAT(schedule(), testing::UnorderedElementsAre(L"B 11-23 09:00 Lift", L"C 11-23 09:00 Lift"));
    EXPECT_THAT(linked(ofA), ElementsAre(11));
}

TEST_F(SharedActivityStoryTests, ABarDroppedOnAResourceOfTheSameActivityLeavesTheOtherOneAlone)
{
    ASSERT_TRUE(drag(ofA, 0, 10, 12, monday + 11 * hour, 'N'));
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(questions.asked, IsEmpty());
    // Both stand in C's row now: the dragged one by itself, the other one as it was.
    EXPECT_THAT(schedule(), ElementsAre(L"C 11-23 09:00 Lift", L"C 11-23 11:00 Lift"));
    EXPECT_THAT(linked(ofA), ElementsAre(12));
    EXPECT_THAT(linked(ofC), ElementsAre(12));
}

TEST_F(SharedActivityStoryTests, ADragInTimeForThisOneOnlyLeavesTheOther)
{
    ASSERT_TRUE(drag(ofA, 0, 10, 10, monday + 11 * hour, 'N'));
    EXPECT_THAT(schedule(), ElementsAre(L"C 11-23 09:00 Lift", L"A 11-23 11:00 Lift"));
}

TEST_F(SharedActivityStoryTests, ADragInTimeForAllMovesAll)
{
    ASSERT_TRUE(drag(ofA, 0, 10, 10, monday + 11 * hour, 'Y'));
    EXPECT_THAT(schedule(), testing::UnorderedElementsAre(L"A 11-23 11:00 Lift", L"C 11-23 11:00 Lift"));
    EXPECT_THAT(linked(ofA), testing::UnorderedElementsAre(10, 12));
}

TEST_F(SharedActivityStoryTests, ACancelledDragChangesNothing)
{
    EXPECT_FALSE(drag(ofA, 0, 10, 10, monday + 11 * hour, VK_ESCAPE));
    EXPECT_EQ(questions.asked.size(), 1U);
    EXPECT_THAT(schedule(), testing::UnorderedElementsAre(L"A 11-23 09:00 Lift", L"C 11-23 09:00 Lift"));
    EXPECT_THAT(linked(ofA), testing::UnorderedElementsAre(10, 12));
}

TEST_F(SharedActivityStoryTests, UncheckedDownToOneItIsASingleActivityAgain)
{
    openStored(ofA, 0, 'Y');
    toggleByKey(node(L"A", L"Crew"));
    confirm();
    EXPECT_THAT(schedule(), ElementsAre(L"C 11-23 09:00 Lift"));
    EXPECT_THAT(linked(operandNumber(L"EventID")), ElementsAre(12));
    EXPECT_EQ(sqlText("SELECT count(*) FROM events WHERE link IS NOT NULL"), L"0");
}

TEST_F(StoryTests, AnActivityIsGivenToAnotherResource)
{
    openNew(10);
    confirm();
    openStored(operandNumber(L"EventID"), 0, 'Y');
    toggleByKey(node(L"A", L"Crew"));
    toggleByKey(node(L"B", L"Crew"));
    confirm();
    EXPECT_THAT(schedule(), ElementsAre(L"B 11-23 09:00 "));
}

TEST_F(StoryTests, OneOccurrenceIsEditedWithTreeAndRepetitionLocked)
{
    openNew(10);
    Container::click(repeat());
    Container::click(option(L"By &Week"));
    retype(countBox(), L"4");
    confirm();
    openStored(operandNumber(L"EventID"), 3, 'N');
    EXPECT_FALSE(IsWindowEnabled(tree()));
    EXPECT_FALSE(IsWindowEnabled(repeat()));
    retype(textBox(), L"Only this");
    confirm();
    EXPECT_THAT(schedule(), ElementsAre(L"A 11-23 09:00 ", L"A 11-30 09:00 ", L"A 12-07 09:00 Only this",
                                        L"A 12-14 09:00 "));
}

TEST_F(StoryTests, ThreeResourcesAreBookedByTheKeyboardAlone)
{
    openNew(10);
    container.press('D', false, true);
    container.type(L"Inventory");
    container.press('S', false, true);
    container.press(VK_DOWN);
    container.press(VK_SPACE);
    container.press(VK_DOWN);
    container.press(VK_SPACE);
    confirm();
    EXPECT_THAT(schedule(),
                testing::UnorderedElementsAre(L"A 11-23 09:00 Inventory", L"B 11-23 09:00 Inventory",
                                              L"C 11-23 09:00 Inventory"));
}

TEST_F(StoryTests, OkPressedTwiceQuicklyBooksOnce)
{
    openNew(10);
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
    container.pump();
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_EQ(sqlText("SELECT count(*) FROM events"), L"1");
}

} // namespace korvane::test
