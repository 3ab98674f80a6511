// What the activity command writes, call by call.
#include "activities/EditEvents.h"

#include "tests/activities/ActivityFixture.h"

namespace korvane::test
{

using testing::ElementsAre;

class EditEventsExecuteTests : public ActivityTests<EditEvents>
{
protected:
    void newActivity(long nameId)
    {
        let(L"N0", nameId);
        let(L"TypeID", 2L);
        let(L"T0", nine);
        let(L"T1", ten);
        let(L"Text", Variant(Bstr(L"Visit")));
        prepare(1);
        data.takeCalls();
    }

    /// The call that adds it.
    static std::string visitOf(long nameId)
    {
        return "Events.Add(" + shown(nameId) + ", 2, 2026-11-20 09:00:00, 2026-11-20 10:00:00, \"Visit\")";
    }

    void giveRule(const Rule& rule)
    {
        data.newRule = rule;
        call(data.root, &IRoot::NewRecurrence, rule.kind, object->Rule.put());
        data.takeCalls();
    }
};

TEST_F(EditEventsExecuteTests, AnAdditionForOneResourceIsASingleActivity)
{
    newActivity(5);
    EXPECT_FALSE(execute(1));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Events()", visitOf(5), "Root.Events()", "Events.SetRecurrence(100, none)"));
    EXPECT_EQ(number(L"EventID"), 100);
}

TEST_F(EditEventsExecuteTests, TheRuleOfAnAdditionIsWrittenTwice)
{
    newActivity(5);
    giveRule({2, 0, 10, 7});
    EXPECT_FALSE(execute(1));
    EXPECT_THAT(steps(), ElementsAre(visitOf(5), "Events.SetRecurrence(100, week 0/10/7)",
                                     "Events.SetRecurrence(100, week 0/10/7)"));
}

TEST_F(EditEventsExecuteTests, AnAdditionForSeveralResourcesIsALinkGroup)
{
    newActivity(5);
    object->SetName(7, true);
    object->SetName(6, true);
    EXPECT_FALSE(execute(1));
    // The resource chosen last is the primary one; the others follow as they were chosen.
    EXPECT_THAT(steps(), ElementsAre(visitOf(6), "EventLinks.Create(100)", "EventLinks.AddNames(100, [5, 7])",
                                     "EventLinks.SetRecurrence(100, none)"));
    EXPECT_EQ(number(L"EventID"), 100);
}

TEST_F(EditEventsExecuteTests, TheRuleOfALinkedAdditionIsWrittenTwiceForTheGroup)
{
    newActivity(5);
    object->SetName(6, true);
    giveRule({4, 1, 3, 0});
    EXPECT_FALSE(execute(1));
    EXPECT_THAT(steps(), ElementsAre(visitOf(6), "EventLinks.Create(100)", "EventLinks.AddNames(100, [5])",
                                     "EventLinks.SetRecurrence(100, year 1/3/0)",
                                     "EventLinks.SetRecurrence(100, year 1/3/0)"));
}

TEST_F(EditEventsExecuteTests, AnAdditionWithoutItsFirstResourceBooksTheOneChosenLast)
{
    newActivity(5);
    object->SetName(5, false);
    object->SetName(6, true);
    object->SetName(8, true);
    EXPECT_FALSE(execute(1));
    EXPECT_EQ(number(L"N0"), 8);
    EXPECT_THAT(steps(), ElementsAre(visitOf(8), "EventLinks.Create(100)", "EventLinks.AddNames(100, [6])",
                                     "EventLinks.SetRecurrence(100, none)"));
}

TEST_F(EditEventsExecuteTests, AnAdditionForAnotherSingleResourceBooksThatOne)
{
    newActivity(5);
    object->SetName(5, false);
    object->SetName(6, true);
    execute(1);
    EXPECT_THAT(steps(), ElementsAre(visitOf(6), "Events.SetRecurrence(100, none)"));
}

TEST_F(EditEventsExecuteTests, AnAdditionWithoutAnyResourceBooksThePrimaryOne)
{
    newActivity(5);
    object->SetName(5, false);
    giveRule({1, 0, 2, 0});
    execute(1);
    EXPECT_THAT(steps(), ElementsAre(visitOf(5), "Events.SetRecurrence(100, day 0/2/0)",
                                     "Events.SetRecurrence(100, day 0/2/0)"));
}

TEST_F(EditEventsExecuteTests, AnAdditionIsAnActivityAsAWhole)
{
    newActivity(5);
    let(L"Instance", 3L);
    execute(1);
    EXPECT_EQ(number(L"Instance"), 0);
}

TEST_F(EditEventsExecuteTests, ADeletionRemovesTheActivityAlone)
{
    open(11, 2);
    EXPECT_FALSE(execute(2));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Events()", "Events.Remove(11, 0)"));
}

TEST_F(EditEventsExecuteTests, ADeletionRemovesOneOccurrence)
{
    let(L"Instance", 4L);
    open(11, 2);
    EXPECT_FALSE(execute(2));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Events()", "Events.Remove(11, 4)"));
    EXPECT_EQ(number(L"Instance"), 4);
}

TEST_F(EditEventsExecuteTests, ADeletionRemovesTheWholeLinkGroup)
{
    open(21, 2);
    EXPECT_FALSE(execute(2));
    EXPECT_THAT(data.takeCalls(), ElementsAre("EventLinks.RemoveAll(20)"));
}

TEST_F(EditEventsExecuteTests, ADeletionRemovesOneOccurrenceOfTheLinkGroup)
{
    data.event(20)->rule = Rule{1, 0, 5, 0};
    let(L"Instance", 4L);
    open(20, 2);
    EXPECT_FALSE(execute(2));
    EXPECT_THAT(data.takeCalls(), ElementsAre("EventLinks.RemoveOccurrence(20, 4)"));
}

TEST_F(EditEventsExecuteTests, ADeletionDoesNotLookAtTheChoice)
{
    open(20, 2);
    object->SetName(8, true);
    object->SetName(5, false);
    execute(2);
    EXPECT_THAT(data.takeCalls(), ElementsAre("EventLinks.RemoveAll(20)"));
}

TEST_F(EditEventsExecuteTests, AChangeOfASingleActivityWritesItAndItsRule)
{
    data.event(11)->rule = Rule{3, 1, 12, 4};
    open(11, 3);
    let(L"Text", Variant(Bstr(L"Test run")));
    let(L"TypeID", 6L);
    let(L"T1", dateOf("2026-11-20 11:30:00"));
    EXPECT_FALSE(execute(3));
    EXPECT_THAT(
        data.takeCalls(),
        ElementsAre("Root.Events()",
                    "Events.Update(11, 0, 5, 6, 2026-11-20 09:00:00, 2026-11-20 11:30:00, \"Test run\")",
                    "Root.Events()", "Events.SetRecurrence(11, month 1/12/4)"));
    EXPECT_EQ(number(L"EventID"), 11);
}

TEST_F(EditEventsExecuteTests, AChangeTakesTheRuleAwayWithNone)
{
    data.event(11)->rule = Rule{3, 1, 12, 4};
    open(11, 3);
    object->Rule.reset();
    execute(3);
    EXPECT_THAT(
        steps(),
        ElementsAre("Events.Update(11, 0, 5, 2, 2026-11-20 09:00:00, 2026-11-20 10:00:00, \"Inspection\")",
                    "Events.SetRecurrence(11, none)"));
}

TEST_F(EditEventsExecuteTests, AChangeOfAnOccurrenceLeavesTheRule)
{
    data.event(11)->rule = Rule{3, 1, 12, 4};
    let(L"Instance", 2L);
    open(11, 3);
    EXPECT_FALSE(execute(3));
    EXPECT_THAT(steps(), ElementsAre("Events.Update(11, 2, 5, 2, 2026-11-20 09:00:00, 2026-11-20 10:00:00, "
                                     "\"Inspection\")"));
    EXPECT_EQ(number(L"Instance"), 2);
}

TEST_F(EditEventsExecuteTests, AChangeOfALinkedActivityWritesTheGroupAndItsRule)
{
    open(21, 3);
    giveRule({5, 0, 3, 0});
    let(L"Text", Variant(Bstr(L"Lunch")));
    EXPECT_FALSE(execute(3));
    EXPECT_THAT(
        data.takeCalls(),
        ElementsAre("EventLinks.UpdateLinked(20, 0, 3, 2026-11-20 09:00:00, 2026-11-20 10:00:00, \"Lunch\")",
                    "EventLinks.SetRecurrence(20, Easter 0/3/0)"));
    EXPECT_EQ(number(L"EventID"), 21);
}

TEST_F(EditEventsExecuteTests, AChangeOfALinkedOccurrenceWritesTheRuleToo)
{
    data.event(20)->rule = Rule{1, 0, 5, 0};
    let(L"Instance", 4L);
    open(20, 3);
    EXPECT_FALSE(execute(3));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("EventLinks.UpdateLinked(20, 4, 3, 2026-11-20 09:00:00, 2026-11-20 10:00:00, "
                            "\"Meeting\")",
                            "EventLinks.SetRecurrence(20, day 0/5/0)"));
}

TEST_F(EditEventsExecuteTests, TheGroupsNewIdIsTakenOver)
{
    data.nextLink = 42;
    open(20, 3);
    execute(3);
    EXPECT_THAT(data.takeCalls(), testing::Contains("EventLinks.SetRecurrence(42, none)"));
    execute(3);
    EXPECT_THAT(data.takeCalls(), testing::Contains("EventLinks.SetRecurrence(42, none)"));
}

TEST_F(EditEventsExecuteTests, AStopBeforeTheStartIsExchanged)
{
    const DATE second = 1.0 / 86400;
    newActivity(5);
    let(L"T0", ten + second);
    let(L"T1", ten);
    execute(1);
    EXPECT_THAT(steps(),
                testing::Contains("Events.Add(5, 2, 2026-11-20 10:00:00, 2026-11-20 10:00:01, \"Visit\")"));
    EXPECT_EQ(time(L"T0"), ten);
    EXPECT_EQ(time(L"T1"), ten + second);

    open(20, 3);
    let(L"T0", ten);
    let(L"T1", nine);
    execute(3);
    EXPECT_THAT(steps(), testing::Contains("EventLinks.UpdateLinked(20, 0, 3, 2026-11-20 09:00:00, "
                                           "2026-11-20 10:00:00, \"Meeting\")"));

    open(11, 2);
    let(L"T0", ten);
    let(L"T1", nine);
    execute(2);
    EXPECT_EQ(time(L"T0"), nine);
    EXPECT_EQ(time(L"T1"), ten);
}

TEST_F(EditEventsExecuteTests, EqualTimesStay)
{
    newActivity(5);
    let(L"T0", ten);
    let(L"T1", ten);
    execute(1);
    EXPECT_THAT(steps(),
                testing::Contains("Events.Add(5, 2, 2026-11-20 10:00:00, 2026-11-20 10:00:00, \"Visit\")"));
    EXPECT_EQ(time(L"T0"), ten);
    EXPECT_EQ(time(L"T1"), ten);
}

TEST_F(EditEventsExecuteTests, AnAdditionThatFailedHalfWayIsCompletedByTheNextAttempt)
{
    newActivity(5);
    object->SetName(6, true);
    data.fail("EventLinks.AddNames", {E_FAIL, L"KorvaneData", L"The database is locked."});
    VARIANT_BOOL result = VARIANT_TRUE;
    call(command, &IAppCommand::put_Operation, 1L);
    EXPECT_EQ(command->Execute(&result), E_FAIL);
    SetErrorInfo(0, nullptr);
    data.takeCalls();

    EXPECT_FALSE(execute(1));
    EXPECT_THAT(steps(), testing::Each(testing::Not(testing::StartsWith("Events.Add("))));
    EXPECT_EQ(number(L"EventID"), 100);
    ASSERT_EQ(data.events.size(), 6U);
    EXPECT_EQ(data.events[4].nameId, 6);
    EXPECT_EQ(data.events[5].nameId, 5);
    EXPECT_EQ(data.events[5].link, data.events[4].link);
}

TEST_F(EditEventsExecuteTests, AnAdditionHasNothingOfTheActivityThatTheCommandWasFor)
{
    data.event(20)->rule = Rule{2, 0, 4, 0};
    data.event(20)->exception = 1;
    open(20, 3);
    ASSERT_TRUE(object->links.isLinked());
    newActivity(5);
    EXPECT_EQ(object->ExceptionFlag(), 0);
    execute(1);
    EXPECT_THAT(steps(), ElementsAre(visitOf(5), "Events.SetRecurrence(100, none)"));
}

TEST_F(EditEventsExecuteTests, APreparedAdditionAddsWhateverFailedBefore)
{
    newActivity(5);
    data.fail("Events.SetRecurrence", {E_FAIL, L"KorvaneData", L"The database is locked."});
    VARIANT_BOOL result = VARIANT_TRUE;
    call(command, &IAppCommand::put_Operation, 1L);
    EXPECT_EQ(command->Execute(&result), E_FAIL);
    SetErrorInfo(0, nullptr);

    newActivity(6);
    execute(1);
    EXPECT_THAT(steps(), ElementsAre(visitOf(6), "Events.SetRecurrence(101, none)"));
}

} // namespace korvane::test
