// How the activity command brings a link group in line with the chosen resources, step by step.
#include "activities/EditEvents.h"

#include "tests/activities/ActivityFixture.h"

namespace korvane::test
{

using testing::ElementsAre;

class SynchroniseNamesTests : public ActivityTests<EditEvents>
{
protected:
    void choose(std::initializer_list<long> names)
    {
        for (const long id : names)
            object->SetName(id, true);
    }

    void drop(std::initializer_list<long> names)
    {
        for (const long id : names)
            object->SetName(id, false);
    }

    /// The calls of a change, with times and text left out.
    std::vector<std::string> change()
    {
        EXPECT_FALSE(execute(3));
        auto calls = steps();
        for (std::string& call : calls)
            if (const auto times = call.find(", 2026-"); times != std::string::npos)
                call = call.substr(0, times) + ", ...)";
        return calls;
    }

    /// Lets a change fail at a call, and gives back the calls up to it.
    std::vector<std::string> failAt(const char* failing)
    {
        data.fail(failing, locked);
        call(command, &IAppCommand::put_Operation, 3L);
        VARIANT_BOOL result = VARIANT_TRUE;
        EXPECT_EQ(errorOf(command->Execute(&result)), locked);
        EXPECT_EQ(result, VARIANT_FALSE);
        return steps();
    }

    std::vector<std::string> failToDetach() { return failAt("EventLinks.Detach"); }

    /// The resources that are booked together with an activity.
    std::vector<long> bookedWith(long eventId)
    {
        std::vector<long> result;
        if (const Event* asked = data.event(eventId))
            for (const Event& event : data.events)
                if (asked->link ? event.link == asked->link : event.id == eventId)
                    result.push_back(event.nameId);
        return result;
    }
};

TEST_F(SynchroniseNamesTests, AnUnchangedChoiceTouchesNoGroup)
{
    open(20, 3);
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.UpdateLinked(20, 0, 3, ...)", "EventLinks.SetRecurrence(20, none)"));
    open(11, 3);
    EXPECT_THAT(change(), ElementsAre("Events.Update(11, 0, 5, 2, ...)", "Events.SetRecurrence(11, none)"));
}

TEST_F(SynchroniseNamesTests, AFurtherResourceMakesALinkGroup)
{
    open(11, 3);
    choose({6});
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.Create(11)", "EventLinks.AddNames(11, [6])",
                            "EventLinks.UpdateLinked(11, 0, 2, ...)", "EventLinks.SetRecurrence(11, none)"));
    EXPECT_THAT(bookedWith(11), ElementsAre(5, 6));
    EXPECT_EQ(number(L"EventID"), 11);
}

TEST_F(SynchroniseNamesTests, ALinkGroupIsNotMadeAgain)
{
    open(20, 3);
    choose({9});
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.AddNames(20, [9])", "EventLinks.UpdateLinked(20, 0, 3, ...)",
                            "EventLinks.SetRecurrence(20, none)"));
    EXPECT_THAT(bookedWith(20), ElementsAre(5, 6, 7, 9));
}

TEST_F(SynchroniseNamesTests, AddedResourcesComeInTheOrderOfTheChoice)
{
    open(11, 3);
    choose({9, 7, 8, 6});
    drop({8});
    choose({8});
    EXPECT_THAT(change(), testing::Contains("EventLinks.AddNames(11, [9, 7, 6, 8])"));
}

TEST_F(SynchroniseNamesTests, RemovedResourcesComeInTheOrderOfTheBooking)
{
    data.event(22)->nameId = 4;
    open(21, 3); // the primary resource first, then as they are loaded
    choose({8, 9});
    drop({4, 5, 6});
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.AddNames(20, [8, 9])", "EventLinks.RemoveNames(20, [6, 5, 4])",
                            "EventLinks.UpdateLinked(100, 0, 3, ...)",
                            "EventLinks.SetRecurrence(100, none)"));
    EXPECT_THAT(bookedWith(100), ElementsAre(8, 9));
}

TEST_F(SynchroniseNamesTests, ALostPrimaryResourceIsReplacedAndNothingIsAdded)
{
    open(20, 3);
    choose({8, 9});
    drop({9}); // the primary resource since it was chosen
    EXPECT_EQ(number(L"N0"), 9);
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.UpdateLinked(20, 0, 3, ...)", "EventLinks.SetRecurrence(20, none)"));
    EXPECT_EQ(number(L"N0"), 5);
    EXPECT_THAT(bookedWith(20), ElementsAre(5, 6, 7));
}

TEST_F(SynchroniseNamesTests, ALostPrimaryResourceIsReplacedByTheFirstChosen)
{
    open(20, 3);
    drop({5});
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.RemoveNames(20, [5])", "EventLinks.UpdateLinked(21, 0, 3, ...)",
                            "EventLinks.SetRecurrence(21, none)"));
    EXPECT_EQ(number(L"N0"), 6);
    EXPECT_THAT(bookedWith(21), ElementsAre(6, 7));
    EXPECT_EQ(number(L"EventID"), 20);
}

TEST_F(SynchroniseNamesTests, AnotherResourceForASingleActivityChangesItsResource)
{
    open(11, 3);
    choose({6});
    drop({5});
    EXPECT_THAT(change(), ElementsAre("EventLinks.AddNames(Empty, [6])", "Events.Update(11, 0, 6, 2, ...)",
                                      "Events.SetRecurrence(11, none)"));
    EXPECT_THAT(bookedWith(11), ElementsAre(6));
}

TEST_F(SynchroniseNamesTests, AResourceChosenAgainAfterAFailureIsBookedAgain)
{
    open(11, 3);
    choose({6});
    drop({5});
    failAt("Events.SetRecurrence");
    EXPECT_THAT(bookedWith(11), ElementsAre(6));
    choose({5});
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.Create(11)", "EventLinks.AddNames(11, [5])",
                            "EventLinks.UpdateLinked(11, 0, 2, ...)", "EventLinks.SetRecurrence(11, none)"));
    EXPECT_THAT(bookedWith(11), ElementsAre(6, 5));
}

TEST_F(SynchroniseNamesTests, AGroupThatWasMadeInVainIsLeft)
{
    for (const long other : {5L, 6L})
    {
        open(11, 3);
        choose({6});
        failAt("EventLinks.AddNames");
        drop({5, 6});
        choose({other});
        EXPECT_THAT(change(), testing::Contains("EventLinks.Detach(" + shown(other == 5 ? 11 : 100) + ", " +
                                                shown(other) + ")"));
        EXPECT_FALSE(object->links.isLinked());
        EXPECT_THAT(bookedWith(number(L"EventID")), ElementsAre(other));
    }
}

TEST_F(SynchroniseNamesTests, TwoOtherResourcesForASingleActivity)
{
    open(11, 3);
    choose({6, 7});
    drop({5});
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.Create(11)", "EventLinks.AddNames(11, [6, 7])",
                            "EventLinks.RemoveNames(11, [5])", "EventLinks.UpdateLinked(100, 0, 2, ...)",
                            "EventLinks.SetRecurrence(100, none)"));
    EXPECT_THAT(bookedWith(100), ElementsAre(6, 7));
}

TEST_F(SynchroniseNamesTests, TheLastResourceLeavesTheGroup)
{
    open(20, 3);
    drop({6, 7});
    EXPECT_THAT(change(), ElementsAre("EventLinks.RemoveNames(20, [6, 7])", "EventLinks.Detach(20, 5)",
                                      "Events.Update(20, 0, 5, 3, ...)", "Events.SetRecurrence(20, none)"));
    EXPECT_EQ(number(L"EventID"), 20);
    EXPECT_FALSE(data.event(20)->link);
}

TEST_F(SynchroniseNamesTests, TheActivityIsThenTheOneThatIsLeft)
{
    open(20, 3);
    drop({5, 6});
    // The group's id when it is left is the id of the remaining activity, which is the command's from then on.
    EXPECT_THAT(change(), ElementsAre("EventLinks.RemoveNames(20, [5, 6])", "EventLinks.Detach(22, 7)",
                                      "Events.Update(22, 0, 7, 3, ...)", "Events.SetRecurrence(22, none)"));
    EXPECT_EQ(number(L"EventID"), 22);
    EXPECT_EQ(number(L"N0"), 7);
    EXPECT_THAT(bookedWith(22), ElementsAre(7));
    execute(2);
    EXPECT_THAT(steps(), ElementsAre("Events.Remove(22, 0)"));
}

TEST_F(SynchroniseNamesTests, AFailedDetachmentIsCompletedByTheNextExecute)
{
    open(20, 3);
    drop({5, 6});
    EXPECT_THAT(failToDetach(),
                ElementsAre("EventLinks.RemoveNames(20, [5, 6])", "EventLinks.Detach(22, 7)"));
    EXPECT_EQ(toLong(object->links.id.get()), 22);
    EXPECT_EQ(data.event(22)->link, 22);

    // What was done is not done again.
    EXPECT_THAT(change(), ElementsAre("EventLinks.Detach(22, 7)", "Events.Update(22, 0, 7, 3, ...)",
                                      "Events.SetRecurrence(22, none)"));
    EXPECT_TRUE(object->links.id.isEmpty());
    EXPECT_EQ(number(L"EventID"), 22);
    EXPECT_EQ(data.event(22)->link, std::nullopt);
}

TEST_F(SynchroniseNamesTests, ADetachmentThatFailsTwiceIsStillCompleted)
{
    open(20, 3);
    drop({6, 7});
    failToDetach();
    EXPECT_THAT(failToDetach(), ElementsAre("EventLinks.Detach(20, 5)"));
    EXPECT_FALSE(object->links.id.isEmpty());
    EXPECT_THAT(change(), ElementsAre("EventLinks.Detach(20, 5)", "Events.Update(20, 0, 5, 3, ...)",
                                      "Events.SetRecurrence(20, none)"));
    EXPECT_TRUE(object->links.id.isEmpty());
}

TEST_F(SynchroniseNamesTests, ADetachedActivityIsDetachedOnlyOnce)
{
    open(20, 3);
    drop({6, 7});
    failToDetach();
    change();
    EXPECT_THAT(change(), ElementsAre("Events.Update(20, 0, 5, 3, ...)", "Events.SetRecurrence(20, none)"));
}

TEST_F(SynchroniseNamesTests, AfterAFailedDetachmentAResourceChosenAgainStaysInTheGroup)
{
    open(20, 3);
    drop({6, 7});
    failToDetach();
    choose({6});
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.Create(20)", "EventLinks.AddNames(20, [6])",
                            "EventLinks.UpdateLinked(20, 0, 3, ...)", "EventLinks.SetRecurrence(20, none)"));
    EXPECT_THAT(bookedWith(20), ElementsAre(5, 6));
}

TEST_F(SynchroniseNamesTests, AfterAFailedDetachmentADeletionRemovesWhatIsLeftOfTheGroup)
{
    open(20, 3);
    drop({6, 7});
    failToDetach();
    execute(2);
    EXPECT_THAT(steps(), ElementsAre("EventLinks.RemoveAll(20)"));
    EXPECT_EQ(data.event(20), nullptr);
    EXPECT_EQ(data.events.size(), 1U); // the activity of no group
}

TEST_F(SynchroniseNamesTests, OneNewResourceTakesThePlaceOfAGroup)
{
    open(20, 3);
    choose({8});
    drop({5, 6, 7});
    EXPECT_THAT(change(), ElementsAre("EventLinks.AddNames(20, [8])", "EventLinks.RemoveNames(20, [5, 6, 7])",
                                      "EventLinks.Detach(100, 8)", "Events.Update(100, 0, 8, 3, ...)",
                                      "Events.SetRecurrence(100, none)"));
    EXPECT_EQ(number(L"EventID"), 100);
}

TEST_F(SynchroniseNamesTests, WithoutAnyResourceAllAreRemoved)
{
    open(20, 3);
    drop({5, 6, 7});
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.RemoveNames(20, [5, 6, 7])", "EventLinks.UpdateLinked(20, 0, 3, ...)",
                            "EventLinks.SetRecurrence(20, none)"));
    EXPECT_EQ(number(L"N0"), 5);
}

TEST_F(SynchroniseNamesTests, WithoutAnyResourceASingleActivityStays)
{
    open(11, 3);
    drop({5});
    EXPECT_THAT(change(), ElementsAre("Events.Update(11, 0, 5, 2, ...)", "Events.SetRecurrence(11, none)"));
}

TEST_F(SynchroniseNamesTests, AnOccurrenceIsSynchronisedToo)
{
    let(L"Instance", 2L);
    open(20, 3);
    drop({6, 7});
    EXPECT_THAT(change(), ElementsAre("EventLinks.RemoveNames(20, [6, 7])", "EventLinks.Detach(20, 5)",
                                      "Events.Update(20, 2, 5, 3, ...)"));
}

TEST_F(SynchroniseNamesTests, AnAdditionWhosePrimaryResourceIsLostBooksNoFurtherOnes)
{
    let(L"N0", 5L);
    prepare(1);
    data.takeCalls();
    choose({6, 7});
    drop({7});
    execute(1);
    auto calls = steps();
    ASSERT_FALSE(calls.empty());
    EXPECT_THAT(calls.front(), testing::StartsWith("Events.Add(7, "));
    calls.erase(calls.begin());
    EXPECT_THAT(calls, ElementsAre("EventLinks.Create(100)", "EventLinks.RemoveNames(100, [7])",
                                   "EventLinks.SetRecurrence(100, none)"));
    EXPECT_EQ(number(L"N0"), 5);
}

TEST_F(SynchroniseNamesTests, FiveThousandResourcesAreOneCall)
{
    open(11, 3);
    std::string names;
    for (long id = 5999; id >= 1000; --id)
    {
        object->SetName(id, true);
        names += (names.empty() ? "" : ", ") + shown(id);
    }
    EXPECT_THAT(change(),
                ElementsAre("EventLinks.Create(11)", "EventLinks.AddNames(11, [" + names + "])",
                            "EventLinks.UpdateLinked(11, 0, 2, ...)", "EventLinks.SetRecurrence(11, none)"));
    EXPECT_EQ(data.events.size(), 4U + 5000U);
}

} // namespace korvane::test
