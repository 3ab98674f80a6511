// The activity command before anything is written: its properties, its preparation, and the choice of resources.
#include "activities/EditEvents.h"

#include "tests/activities/ActivityFixture.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

class EditEventsTests : public ActivityTests<EditEvents>
{
protected:
    /// Which of the resources 5 to 9 are chosen.
    std::vector<long> chosen() const
    {
        std::vector<long> result;
        for (long id = 5; id <= 9; ++id)
            if (object->HasName(id))
                result.push_back(id);
        EXPECT_EQ(static_cast<std::size_t>(object->NameCount()), result.size());
        return result;
    }

    ErrorInfo tryPrepare(long operation)
    {
        call(command, &IAppCommand::put_Operation, operation);
        VARIANT_BOOL result = VARIANT_TRUE;
        const HRESULT outcome = command->Prepare(&result);
        EXPECT_EQ(result, VARIANT_FALSE);
        return errorOf(outcome);
    }
};

TEST_F(EditEventsTests, AnAdditionStartsWithThePrimaryResourceAlone)
{
    let(L"N0", 6L);
    let(L"T0", nine);
    let(L"T1", ten);
    let(L"TypeID", 2L);
    const std::string before = operandsOf(command);

    EXPECT_TRUE(prepare(1));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.EventLinks()"));
    EXPECT_EQ(operandsOf(command), before);
    EXPECT_THAT(chosen(), ElementsAre(6));
    EXPECT_FALSE(object->Rule);
    EXPECT_EQ(object->ExceptionFlag(), 0);
}

TEST_F(EditEventsTests, ASecondPreparationOfAnAdditionStartsAnew)
{
    let(L"N0", 6L);
    prepare(1);
    object->SetName(7, true);
    prepare(1);
    EXPECT_THAT(chosen(), ElementsAre(7));
}

TEST_F(EditEventsTests, AnyOtherOperationReadsTheActivity)
{
    for (const long operation : {2L, 3L, 0L, 4L, -1L})
    {
        let(L"EventID", 11L);
        EXPECT_TRUE(prepare(operation));
        EXPECT_THAT(data.takeCalls(),
                    ElementsAre("Root.EventLinks()", "Root.Events()", "Events.Fetch(11, 0)",
                                "EventLinks.Load(11)", "EventLinks.HasAccess(3, 11)", "Root.Events()",
                                "Events.GetRecurrence(11)", "Root.Events()", "Events.IsException(11)"));
    }
}

TEST_F(EditEventsTests, TheStoredValuesReplaceThoseOfTheHost)
{
    for (const wchar_t* name : {L"N0", L"TypeID"})
        let(name, 77L);
    let(L"T0", 1.0);
    let(L"T1", 2.0);
    let(L"Text", Variant(Bstr(L"unstored")));
    let(L"GroupID", 78L);
    open(11, 3);
    EXPECT_EQ(number(L"EventID"), 11);
    EXPECT_EQ(number(L"N0"), 5);
    EXPECT_EQ(number(L"TypeID"), 2);
    EXPECT_EQ(time(L"T0"), nine);
    EXPECT_EQ(time(L"T1"), ten);
    EXPECT_EQ(text(L"Text"), L"Inspection");
    EXPECT_EQ(number(L"GroupID"), 78);
    EXPECT_EQ(number(L"Instance"), 0);
}

TEST_F(EditEventsTests, ADataLayerThatFillsNothingErasesNothing)
{
    let(L"N0", 7L);
    let(L"TypeID", 77L);
    let(L"T0", nine);
    let(L"Text", Variant(Bstr(L"unstored")));
    data.fetchFillsNothing = true;
    open(11, 3);
    EXPECT_EQ(number(L"N0"), 7);
    EXPECT_EQ(number(L"TypeID"), 77);
    EXPECT_EQ(time(L"T0"), nine);
    EXPECT_EQ(text(L"Text"), L"unstored");
}

TEST_F(EditEventsTests, WhatTheLinksAnnounceToOthersDoesNotTouchTheChoice)
{
    open(20, 3);
    const auto before = chosen();
    ASSERT_GT(before.size(), 1U);
    data.announceClear(EventsOf::links);
    EXPECT_EQ(chosen(), before);
    const auto other =
        create<IAppCommand>(__uuidof(::EditEvents)); // of the same database, and the same links
    call(other, &IAppCommand::put_Operand, Bstr(L"Root").get(), Variant(data.root.as<IDispatch>()).get());
    call(other, &IAppCommand::put_Operand, Bstr(L"EventID").get(), Variant(11L).get());
    call(other, &IAppCommand::put_Operation, 3L);
    EXPECT_TRUE(fetch(other, &IAppCommand::Prepare));
    EXPECT_EQ(chosen(), before);
}

TEST_F(EditEventsTests, AnOccurrenceIsReadByItsNumber)
{
    let(L"EventID", 11L);
    let(L"Instance", 4L);
    prepare(3);
    EXPECT_THAT(data.takeCalls(), testing::Contains("Events.Fetch(11, 4)"));
    EXPECT_EQ(number(L"Instance"), 4);
}

TEST_F(EditEventsTests, ASingleActivityIsBookedForItsResource)
{
    open(11, 3);
    EXPECT_THAT(chosen(), ElementsAre(5));
}

TEST_F(EditEventsTests, ASharedActivityIsBookedForAllOfItsResources)
{
    open(21, 3);
    EXPECT_EQ(number(L"N0"), 6);
    EXPECT_THAT(chosen(), ElementsAre(5, 6, 7));
}

TEST_F(EditEventsTests, ASecondPreparationForgetsTheFormerActivity)
{
    open(20, 3);
    object->SetName(9, true);
    open(11, 3);
    EXPECT_THAT(chosen(), ElementsAre(5));
    execute(2);
    EXPECT_THAT(steps(), ElementsAre("Events.Remove(11, 0)")); // no link group any more
}

TEST_F(EditEventsTests, ASharedActivityIsRefusedWithoutTheRightToEditForOthers)
{
    data.mayEditForOthers = false;
    data.event(20)->rule = Rule{2, 0, 10, 0};
    let(L"EventID", 20L);
    EXPECT_EQ(tryPrepare(3),
              (ErrorInfo{static_cast<HRESULT>(0x80040000 + 4691), L"korvane_activity_command_tests",
                         L"You are not authorized to edit activity-bars for other ressources."}));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.EventLinks()", "Root.Events()", "Events.Fetch(20, 0)",
                                              "EventLinks.Load(20)", "EventLinks.HasAccess(3, 20)"));

    EXPECT_EQ(tryPrepare(2).number, static_cast<HRESULT>(0x80040000 + 4691)); // a deletion is refused too
}

TEST_F(EditEventsTests, ASingleActivityNeedsNoRightToEditForOthers)
{
    data.mayEditForOthers = false;
    let(L"EventID", 11L);
    EXPECT_TRUE(prepare(3));
}

TEST_F(EditEventsTests, TheRuleIsCopiedValueByValue)
{
    data.recordRules = true;
    data.event(11)->rule = Rule{2, 1, 10, 33};
    let(L"EventID", 11L);
    prepare(3);
    EXPECT_THAT(steps(),
                ElementsAre("Root.EventLinks()", "Events.Fetch(11, 0)", "EventLinks.Load(11)",
                            "EventLinks.HasAccess(3, 11)", "Events.GetRecurrence(11)",
                            "Recurrence.get_Kind()", "Root.NewRecurrence(2)", "Recurrence.get_Count()",
                            "Recurrence.put_Count(10)", "Recurrence.get_Interval()",
                            "Recurrence.put_Interval(1)", "Recurrence.get_Anchor()",
                            "Recurrence.put_Anchor(33)", "Events.IsException(11)"));
    data.recordRules = false;
    EXPECT_EQ(ruleIn(object->Rule.get()), (Rule{2, 1, 10, 33}));
}

TEST_F(EditEventsTests, AnActivityWithoutARuleHasNone)
{
    data.event(11)->rule = Rule{2, 1, 10, 33};
    open(11, 3);
    EXPECT_TRUE(object->Rule);
    open(20, 3);
    EXPECT_FALSE(object->Rule);
}

TEST_F(EditEventsTests, TheExceptionFlagIsTheDataLayersValue)
{
    for (const long flag : {1L, 0L, -1L, 6L})
    {
        data.event(11)->exception = flag;
        open(11, 3);
        EXPECT_EQ(object->ExceptionFlag(), flag);
    }
}

TEST_F(EditEventsTests, AChosenResourceBecomesThePrimaryOne)
{
    open(20, 3);
    object->SetName(8, true);
    EXPECT_EQ(number(L"N0"), 8);
    EXPECT_THAT(chosen(), ElementsAre(5, 6, 7, 8));
    object->SetName(6, true); // chosen already
    EXPECT_EQ(number(L"N0"), 6);
    EXPECT_THAT(chosen(), ElementsAre(5, 6, 7, 8));
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(EditEventsTests, ARemovedResourceStaysThePrimaryOne)
{
    open(20, 3);
    object->SetName(5, false);
    EXPECT_EQ(number(L"N0"), 5);
    EXPECT_THAT(chosen(), ElementsAre(6, 7));
    object->SetName(9, false); // was not chosen
    EXPECT_THAT(chosen(), ElementsAre(6, 7));
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(EditEventsTests, BookingForOthersIsAsked)
{
    open(20, 3);
    for (const bool granted : {true, false})
    {
        data.mayCreateForOthers = granted;
        EXPECT_EQ(object->MayBookOthers(), granted);
        EXPECT_THAT(data.takeCalls(), ElementsAre("EventLinks.HasAccess(1, 0)"));
    }
}

} // namespace korvane::test
