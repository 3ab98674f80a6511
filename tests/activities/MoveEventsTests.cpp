#include "activities/MoveEvents.h"

#include "tests/activities/ActivityFixture.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

class MoveEventsTests : public ActivityTests<MoveEvents>
{
protected:
    /// Drags an activity to the afternoon.
    void drag(long eventId, long source, long target, long operation = 3)
    {
        let(L"N0", source);
        let(L"N1", target);
        let(L"T0", dateOf("2026-11-20 14:00:00"));
        let(L"T1", dateOf("2026-11-20 15:00:00"));
        open(eventId, operation);
    }

    /// A call that writes what was dragged.
    static std::string toTheAfternoon(const std::string& call, const std::string& text)
    {
        return call + ", 2026-11-20 14:00:00, 2026-11-20 15:00:00, \"" + text + "\")";
    }

    long source() const
    {
        const long id = fetch(command.as<IMoveEvents>(), &IMoveEvents::get_SourceName);
        EXPECT_EQ(id, number(L"N0"));
        return id;
    }

    long target() const
    {
        const long id = fetch(command.as<IMoveEvents>(), &IMoveEvents::get_TargetName);
        EXPECT_EQ(id, number(L"N1"));
        return id;
    }

    void updateAll(VARIANT_BOOL all) { call(command.as<IMoveEvents>(), &IMoveEvents::put_UpdateAll, all); }
};

TEST_F(MoveEventsTests, ADataLayerThatFillsNothingErasesNothing)
{
    let(L"TypeID", 77L);
    let(L"Text", Variant(Bstr(L"unstored")));
    data.fetchFillsNothing = true;
    drag(20, 5, 6);
    EXPECT_EQ(number(L"TypeID"), 77);
    EXPECT_EQ(toText(get(L"Text").get()), L"unstored");
    EXPECT_EQ(source(), 5);
}

TEST_F(MoveEventsTests, MovesAndCopiesReadTheActivityAndItsLinks)
{
    for (const long operation : {3L, 4L})
    {
        let(L"EventID", 20L);
        let(L"Instance", 2L);
        EXPECT_TRUE(prepare(operation));
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.EventLinks()", "Root.Events()", "Events.Fetch(20, 2)",
                                                  "EventLinks.Load(20)"));
    }
}

TEST_F(MoveEventsTests, OtherOperationsReadNothing)
{
    let(L"TypeID", 77L);
    let(L"Text", Variant(Bstr(L"unstored")));
    let(L"EventID", 20L);
    const std::string before = operandsOf(command);
    for (const long operation : {0L, 1L, 2L, 5L, -3L})
    {
        EXPECT_TRUE(prepare(operation));
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.EventLinks()"));
        EXPECT_EQ(operandsOf(command), before);
    }
}

TEST_F(MoveEventsTests, TypeAndTextAreTheStoredOnesAndTheTimesThoseOfTheDrag)
{
    let(L"TypeID", 77L);
    let(L"Text", Variant(Bstr(L"unstored")));
    let(L"GroupID", 78L);
    drag(11, 0, 0);
    EXPECT_EQ(number(L"TypeID"), 2);
    EXPECT_EQ(text(L"Text"), L"Inspection");
    EXPECT_EQ(time(L"T0"), dateOf("2026-11-20 14:00:00"));
    EXPECT_EQ(time(L"T1"), dateOf("2026-11-20 15:00:00"));
    EXPECT_EQ(number(L"GroupID"), 78);
    EXPECT_EQ(number(L"EventID"), 11);
}

TEST_F(MoveEventsTests, SourceAndTargetHaveDefaults)
{
    drag(21, 0, 0);
    EXPECT_EQ(source(), 6);
    EXPECT_EQ(target(), 6);
    drag(21, 5, 0);
    EXPECT_EQ(source(), 5);
    EXPECT_EQ(target(), 5);
    drag(21, 0, 8);
    EXPECT_EQ(source(), 6);
    EXPECT_EQ(target(), 8);
    drag(21, 5, 9);
    EXPECT_EQ(source(), 5);
    EXPECT_EQ(target(), 9);
}

TEST_F(MoveEventsTests, BothSetsHoldTheTargetAndTheGroup)
{
    drag(21, 6, 8);
    EXPECT_EQ(object->NameCount(), 4);
    for (const long id : {5L, 6L, 7L, 8L})
        EXPECT_TRUE(object->HasName(id)) << id;
    EXPECT_FALSE(object->HasName(9));
    drag(21, 6, 6);
    EXPECT_EQ(object->NameCount(), 3);
    drag(11, 5, 9);
    EXPECT_EQ(object->NameCount(), 2); // the activity's own resource is announced, too
    drag(11, 5, 5);
    EXPECT_EQ(object->NameCount(), 1);
}

TEST_F(MoveEventsTests, ChoosingMovesNeitherSourceNorTarget)
{
    drag(21, 6, 8);
    object->SetName(9, true);
    object->SetName(9, true);
    object->SetName(5, false);
    object->SetName(5, false);
    EXPECT_TRUE(object->HasName(9));
    EXPECT_FALSE(object->HasName(5));
    EXPECT_EQ(object->NameCount(), 4);
    EXPECT_EQ(source(), 6);
    EXPECT_EQ(target(), 8);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(MoveEventsTests, ASingleActivityMovesWithinItsRow)
{
    drag(11, 5, 0);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Events()", toTheAfternoon("Events.Update(11, 0, 5, 2", "Inspection")));
}

TEST_F(MoveEventsTests, ASingleActivityMovesToAnotherResource)
{
    for (const VARIANT_BOOL all : {VARIANT_FALSE, VARIANT_TRUE}) // there is no group to update
    {
        drag(11, 5, 9);
        updateAll(all);
        EXPECT_TRUE(execute(3));
        EXPECT_THAT(steps(), ElementsAre(toTheAfternoon("Events.Update(11, 0, 9, 2", "Inspection")));
        EXPECT_EQ(number(L"EventID"), 11);
    }
}

TEST_F(MoveEventsTests, AnOccurrenceOfASingleActivityMovesByItself)
{
    let(L"Instance", 4L);
    drag(11, 5, 9);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(steps(), ElementsAre(toTheAfternoon("Events.Update(11, 4, 9, 2", "Inspection")));
    EXPECT_EQ(number(L"Instance"), 4);
}

TEST_F(MoveEventsTests, TheWholeGroupMovesInTime)
{
    drag(21, 6, 6);
    updateAll(VARIANT_TRUE);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(data.takeCalls(), ElementsAre(toTheAfternoon("EventLinks.UpdateLinked(20, 0, 3", "Meeting")));
    EXPECT_EQ(data.event(20)->nameId, 5);
    EXPECT_EQ(data.event(21)->nameId, 6);
    EXPECT_EQ(data.event(22)->nameId, 7);
}

TEST_F(MoveEventsTests, AnOccurrenceOfTheWholeGroupMovesInTime)
{
    let(L"Instance", 3L);
    drag(21, 6, 8);
    updateAll(VARIANT_TRUE);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(data.takeCalls(), ElementsAre(toTheAfternoon("EventLinks.UpdateLinked(20, 3, 3", "Meeting")));
}

TEST_F(MoveEventsTests, TheGroupsNewIdIsTakenOver)
{
    data.nextLink = 42;
    drag(21, 6, 6);
    updateAll(VARIANT_TRUE);
    execute(3);
    data.takeCalls();
    execute(3);
    EXPECT_THAT(data.takeCalls(), ElementsAre(testing::StartsWith("EventLinks.UpdateLinked(42, ")));
}

TEST_F(MoveEventsTests, OneOfTheGroupIsDetachedAndMoved)
{
    drag(21, 6, 8);
    EXPECT_TRUE(execute(3)); // the group as a whole only moves when that is asked for
    EXPECT_THAT(data.takeCalls(), ElementsAre("EventLinks.Detach(20, 6)", "Root.Events()",
                                              toTheAfternoon("Events.Update(21, 0, 8, 3", "Meeting")));
    EXPECT_FALSE(data.event(21)->link);
    EXPECT_EQ(data.event(20)->link, data.event(22)->link);
    EXPECT_EQ(data.event(20)->t0, nine);
}

TEST_F(MoveEventsTests, UpdateAllCanBeTakenBack)
{
    drag(21, 6, 6);
    updateAll(VARIANT_TRUE);
    updateAll(VARIANT_FALSE);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(steps(),
                ElementsAre("EventLinks.Detach(20, 6)", testing::StartsWith("Events.Update(21, 0, 6, ")));
}

TEST_F(MoveEventsTests, TheSourceIsDetachedWhicheverActivityIsMoved)
{
    drag(21, 5, 8);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(steps(),
                ElementsAre("EventLinks.Detach(20, 5)", testing::StartsWith("Events.Update(21, 0, 8, ")));
}

TEST_F(MoveEventsTests, MovingAnOccurrenceLeavesTheOthersInTheGroup)
{
    let(L"Instance", 2L);
    drag(21, 6, 8);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Events()", toTheAfternoon("Events.Update(21, 2, 8, 3", "Meeting")));
    EXPECT_EQ(data.event(21)->link, 20);
}

TEST_F(MoveEventsTests, ACopyIsASingleActivityOfTheTarget)
{
    data.event(21)->rule = Rule{1, 0, 5, 0};
    let(L"Instance", 2L);
    drag(21, 6, 8, 4);
    updateAll(VARIANT_TRUE);
    EXPECT_TRUE(execute(4));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Events()", toTheAfternoon("Events.Add(8, 3", "Meeting")));
    EXPECT_EQ(number(L"EventID"), 100);
    EXPECT_EQ(number(L"Instance"), 0);
    EXPECT_FALSE(data.event(100)->link);
    EXPECT_FALSE(data.event(100)->rule);
    EXPECT_EQ(data.event(21)->nameId, 6);
}

TEST_F(MoveEventsTests, AStopBeforeTheStartIsExchanged)
{
    const DATE second = 1.0 / 86400;
    drag(11, 5, 5);
    let(L"T0", ten + second);
    let(L"T1", ten);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(steps(), ElementsAre("Events.Update(11, 0, 5, 2, 2026-11-20 10:00:00, 2026-11-20 10:00:01, "
                                     "\"Inspection\")"));
    EXPECT_EQ(time(L"T0"), ten);
    EXPECT_EQ(time(L"T1"), ten + second);

    let(L"T0", ten);
    let(L"T1", nine);
    EXPECT_TRUE(execute(4));
    EXPECT_THAT(steps(),
                ElementsAre("Events.Add(5, 2, 2026-11-20 09:00:00, 2026-11-20 10:00:00, \"Inspection\")"));
}

TEST_F(MoveEventsTests, EqualTimesStay)
{
    drag(11, 5, 5);
    let(L"T0", ten);
    let(L"T1", ten);
    EXPECT_TRUE(execute(3));
    EXPECT_THAT(steps(), ElementsAre("Events.Update(11, 0, 5, 2, 2026-11-20 10:00:00, 2026-11-20 10:00:00, "
                                     "\"Inspection\")"));
}

} // namespace korvane::test
