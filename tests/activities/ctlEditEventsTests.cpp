#include "tests/activities/ActivityDialog.h"
#include "tests/support/ComRules.h"

namespace korvane::test
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr int yesNo[] = {IDYES, IDNO};

} // namespace

class ctlEditEventsTests : public ActivityDialog
{
protected:
    COLORREF swatchColor() const
    {
        const RECT place = container.place(swatch());
        UpdateWindow(container.dialogWindow());
        container.pump();
        const HDC context = GetDC(container.dialogWindow());
        const COLORREF color =
            GetPixel(context, (place.left + place.right) / 2, (place.top + place.bottom) / 2);
        ReleaseDC(container.dialogWindow(), context);
        return color;
    }
};

TEST_F(ctlEditEventsTests, ReadyForANewActivityReadsEachCollectionOnce)
{
    EXPECT_TRUE(show(1));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Groups()", "Root.Names()", "Root.Types()", "Root.Events()",
                            "Root.OpenScope(0, \"ctlEditEvents.Init\")", "Root.EventLinks()", "Groups.Load()",
                            "Names.Load(0)", "Types.Load(4)", "Scope.Close(0, 0)",
                            "EventLinks.HasAccess(1, 0)"));
    EXPECT_EQ(data.openScopes, 0);
    EXPECT_THAT(questions.asked, IsEmpty());
}

TEST_F(ctlEditEventsTests, ReadyForAChangeFetchesTheActivityWithinTheScope)
{
    EXPECT_TRUE(show(3));
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Groups()", "Root.Names()", "Root.Types()", "Root.Events()",
                            "Root.OpenScope(0, \"ctlEditEvents.Init\")", "Root.EventLinks()", "Root.Events()",
                            "Events.Fetch(50, 0)", "EventLinks.Load(50)", "EventLinks.HasAccess(3, 50)",
                            "Root.Events()", "Events.GetRecurrence(50)", "Root.Events()",
                            "Events.IsException(50)", "Groups.Load()", "Names.Load(0)", "Types.Load(4)",
                            "Scope.Close(0, 0)", "EventLinks.HasAccess(1, 0)"));
}

TEST_F(ctlEditEventsTests, SubscribesToItsFourCollectionsForItsLife)
{
    showed(1);
    for (const EventsOf source : {EventsOf::groups, EventsOf::names, EventsOf::types, EventsOf::events})
        EXPECT_TRUE(data.hasSubscribers(source));
    container.close();
    for (const EventsOf source : {EventsOf::groups, EventsOf::names, EventsOf::types, EventsOf::events})
        EXPECT_FALSE(data.hasSubscribers(source));
}

TEST_F(ctlEditEventsTests, ANewActivityShowsItsPromptAndCannotBeDeleted)
{
    showed(1);
    EXPECT_TRUE(container.visible(label(L"New activity:")));
    EXPECT_FALSE(IsWindowEnabled(deletion()));
}

TEST_F(ctlEditEventsTests, AChangeShowsTheTitleAndCanBeDeleted)
{
    showed(3);
    EXPECT_FALSE(container.visible(label(L"New activity:")));
    EXPECT_TRUE(container.visible(label(L"Activity")));
    EXPECT_TRUE(IsWindowEnabled(deletion()));
}

TEST_F(ctlEditEventsTests, AnotherOperationIsNotReady)
{
    for (const long operation : {0L, 2L, 4L})
    {
        EXPECT_FALSE(show(operation));
        EXPECT_TRUE(label(L"Change activity:"));
        EXPECT_FALSE(IsWindowEnabled(deletion()));
        container.close();
    }
}

TEST_F(ctlEditEventsTests, ShowsTheStoredValues)
{
    showed(3);
    EXPECT_DOUBLE_EQ(timeOf(picker(0)), monday + 9 * hour);
    EXPECT_DOUBLE_EQ(timeOf(picker(1)), monday + 10 * hour);
    EXPECT_EQ(Container::text(textBox()), L"Oil change");
    EXPECT_EQ(Container::text(types()), L"Service");
    ASSERT_TRUE(swatch());
    EXPECT_EQ(swatchColor(), RGB(255, 0, 0));
    EXPECT_FALSE(isChecked(repeat()));
}

TEST_F(ctlEditEventsTests, HiddenGroupsAreNotShown)
{
    showed(1);
    EXPECT_THAT(treeLines(), ElementsAre(L"[ ] Drivers", L"  [x] Anna", L"  [ ] Ben", L"  [ ] Carla",
                                         L"[ ] Vans", L"  [ ] Van 1", L"  [ ] Ben"));
}

TEST_F(ctlEditEventsTests, TheClickedResourceIsCheckedSelectedAndSeen)
{
    showed(1);
    auto* const selected = next(TVGN_CARET);
    EXPECT_EQ(selected, node(L"Anna", L"Drivers"));
    const RECT place = nodePlace(selected);
    EXPECT_FALSE(IsRectEmpty(&place));
}

TEST_F(ctlEditEventsTests, AResourceOfSeveralGroupsIsSelectedInThatOfTheActivity)
{
    data.events[0].nameId = 11;
    for (const auto& [group, text] : {std::pair(4L, L"Drivers"), std::pair(5L, L"Vans")})
    {
        arrange(3);
        let(L"GroupID", group);
        EXPECT_TRUE(container.show(__uuidof(::ctlEditEvents), command.get()));
        EXPECT_EQ(next(TVGN_CARET), node(L"Ben", text));
        container.close();
    }
}

TEST_F(ctlEditEventsTests, AResourceOfSeveralGroupsShowsOneStateEverywhere)
{
    showed(1);
    toggleByKey(node(L"Ben", L"Vans"));
    EXPECT_THAT(treeLines(), ElementsAre(L"[ ] Drivers", L"  [x] Anna", L"  [x] Ben", L"  [ ] Carla",
                                         L"[ ] Vans", L"  [ ] Van 1", L"  [x] Ben"));
    EXPECT_EQ(number(L"N0"), 11);
}

TEST_F(ctlEditEventsTests, CheckingAGroupChecksAllItsResources)
{
    showed(1);
    toggleByMouse(node(L"Drivers"));
    EXPECT_THAT(treeLines(), ElementsAre(L"[x] Drivers", L"  [x] Anna", L"  [x] Ben", L"  [x] Carla",
                                         L"[ ] Vans", L"  [ ] Van 1", L"  [x] Ben"));
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), Contains("EventLinks.AddNames(100, [10, 11])"));
}

TEST_F(ctlEditEventsTests, AGroupFollowsItsResources)
{
    showed(1);
    toggleByKey(node(L"Ben", L"Drivers"));
    toggleByKey(node(L"Carla", L"Drivers"));
    EXPECT_TRUE(nodeChecked(node(L"Drivers")));
    EXPECT_FALSE(nodeChecked(node(L"Vans")));
    toggleByMouse(node(L"Van 1", L"Vans"));
    EXPECT_TRUE(nodeChecked(node(L"Vans")));
    toggleByMouse(node(L"Ben", L"Vans"));
    EXPECT_FALSE(nodeChecked(node(L"Drivers")));
    EXPECT_FALSE(nodeChecked(node(L"Vans")));
}

TEST_F(ctlEditEventsTests, ACheckThatIsSetFromOutsideIsPartOfTheChoice)
{
    showed(1);
    setChecked(node(L"Ben", L"Vans"), true);
    container.pump();
    EXPECT_THAT(treeLines(), ElementsAre(L"[ ] Drivers", L"  [x] Anna", L"  [x] Ben", L"  [ ] Carla",
                                         L"[ ] Vans", L"  [ ] Van 1", L"  [x] Ben"));
    EXPECT_EQ(number(L"N0"), 11);
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), Contains("EventLinks.AddNames(100, [10])"));
}

TEST_F(ctlEditEventsTests, ACheckThatIsTakenAwayFromOutsideLeavesTheChoice)
{
    data.events[0].link = 50;
    data.events.push_back({51, 11, 7, monday, monday + 1, L"Oil change", 50});
    showed(3);
    setChecked(node(L"Ben", L"Drivers"), false);
    container.pump();
    EXPECT_FALSE(nodeChecked(node(L"Ben", L"Vans")));
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), Contains("EventLinks.RemoveNames(50, [11])"));
}

TEST_F(ctlEditEventsTests, AGroupThatIsCheckedFromOutsideTakesItsResourcesAlong)
{
    showed(1);
    setChecked(node(L"Drivers"), true);
    container.pump();
    EXPECT_THAT(treeLines(), ElementsAre(L"[x] Drivers", L"  [x] Anna", L"  [x] Ben", L"  [x] Carla",
                                         L"[ ] Vans", L"  [ ] Van 1", L"  [x] Ben"));
    setChecked(node(L"Vans"), true);
    setChecked(node(L"Drivers"), false);
    container.pump();
    EXPECT_THAT(treeLines(), ElementsAre(L"[ ] Drivers", L"  [ ] Anna", L"  [ ] Ben", L"  [ ] Carla",
                                         L"[ ] Vans", L"  [x] Van 1", L"  [ ] Ben"));
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), Contains(testing::StartsWith("Events.Add(20, ")));
    EXPECT_EQ(data.events.size(), 2U); // the one that was there, and Van 1's
}

TEST_F(ctlEditEventsTests, ChecksThatAreSetFromOutsideAtOnceAllCount)
{
    showed(1);
    setChecked(node(L"Ben", L"Drivers"), true);
    setChecked(node(L"Carla", L"Drivers"), true);
    setChecked(node(L"Van 1", L"Vans"), true);
    container.pump();
    EXPECT_THAT(treeLines(), ElementsAre(L"[x] Drivers", L"  [x] Anna", L"  [x] Ben", L"  [x] Carla",
                                         L"[x] Vans", L"  [x] Van 1", L"  [x] Ben"));
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), Contains("EventLinks.AddNames(100, [10, 11, 12])"));
}

TEST_F(ctlEditEventsTests, ANodeThatChangesInAnythingButItsCheckChangesNothing)
{
    showed(1);
    toggleByKey(node(L"Ben", L"Drivers"));
    const auto before = treeLines();
    setChecked(node(L"Anna", L"Drivers"), true); // as it is
    container.pump();
    EXPECT_EQ(treeLines(), before);
    EXPECT_EQ(number(L"N0"), 11); // the one that was checked last
}

TEST_F(ctlEditEventsTests, UncheckingThePrimaryResourceAndCheckingAnotherMovesTheActivity)
{
    showed(1);
    toggleByKey(node(L"Anna", L"Drivers"));
    toggleByKey(node(L"Carla", L"Drivers"));
    EXPECT_EQ(number(L"N0"), 12);
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(),
                Contains("Events.Add(12, 0, 2026-11-23 09:00:00, 2026-11-23 10:00:00, \"\")"));
}

TEST_F(ctlEditEventsTests, AResourceCheckedLastAndUncheckedAgainTakesNothingAlong)
{
    showed(1);
    toggleByKey(node(L"Ben", L"Drivers"));
    toggleByKey(node(L"Carla", L"Drivers"));
    toggleByKey(node(L"Carla", L"Drivers"));
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Events()",
                            "Events.Add(10, 0, 2026-11-23 09:00:00, 2026-11-23 10:00:00, \"\")",
                            "EventLinks.Create(100)", "EventLinks.AddNames(100, [11])",
                            "EventLinks.SetRecurrence(100, none)"));
}

TEST_F(ctlEditEventsTests, WithoutAnyResourceItIsForTheOneThatItWasFor)
{
    for (const auto& [operation, written] :
         {std::pair(1L, "Events.Add(10, "), std::pair(3L, "Events.Update(50, 0, 10, ")})
    {
        showed(operation);
        toggleByKey(node(L"Ben", L"Drivers"));
        toggleByKey(node(L"Ben", L"Drivers"));
        toggleByKey(node(L"Anna", L"Drivers"));
        Container::click(ok());
        EXPECT_THAT(data.takeCalls(), Contains(testing::StartsWith(written)));
        container.close();
    }
}

TEST_F(ctlEditEventsTests, TheTreeIsLockedWithoutTheRightToBookForOthers)
{
    data.mayCreateForOthers = false;
    showed(1);
    EXPECT_FALSE(IsWindowEnabled(tree()));
}

TEST_F(ctlEditEventsTests, ATypeThatIsNotOfferedSelectsNothingAndIsKept)
{
    data.events[0].typeId = 99;
    showed(3);
    EXPECT_EQ(SendMessageW(types(), CB_GETCURSEL, 0, 0), CB_ERR);
    Container::click(ok());
    EXPECT_EQ(data.event(50)->typeId, 99);
}

TEST_F(ctlEditEventsTests, ChoosingATypeGoesToTheCommandAndColoursTheSwatch)
{
    showed(3);
    SetFocus(types());
    container.press(VK_DOWN);
    EXPECT_EQ(Container::text(types()), L"Tour");
    EXPECT_EQ(number(L"TypeID"), 8);

    ASSERT_TRUE(swatch());
    EXPECT_EQ(swatchColor(), RGB(0, 255, 0));
}

TEST_F(ctlEditEventsTests, TheSwatchStandsBesideTheTypesAndIsAsHigh)
{
    showed(1);
    const RECT combo = container.place(types());
    ASSERT_TRUE(swatch());
    EXPECT_TRUE(container.visible(swatch()));
    const RECT place = container.place(swatch());
    EXPECT_EQ(place.top, combo.top);
    EXPECT_EQ(place.bottom, combo.bottom);
    EXPECT_GE(place.left, combo.right);
    EXPECT_GT(place.right, place.left);
}

TEST_F(ctlEditEventsTests, ChangesGoToTheCommandAtOnce)
{
    showed(1);
    setTime(picker(0), monday + 13 * hour);
    setTime(picker(1), monday + 15 * hour);
    SetFocus(textBox());
    container.type(L"Tyres");
    EXPECT_DOUBLE_EQ(time(L"T0"), monday + 13 * hour);
    EXPECT_DOUBLE_EQ(time(L"T1"), monday + 15 * hour);
    EXPECT_EQ(text(L"Text"), L"Tyres");
}

TEST_F(ctlEditEventsTests, ADescriptionThatIsSetFromOutsideIsBooked)
{
    showed(3);
    SetWindowTextW(textBox(), L"spoken"); // as assistive technology does
    Container::click(ok());
    EXPECT_EQ(text(L"Text"), L"spoken");
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlEditEventsTests, AStopBeforeTheStartIsNoError)
{
    showed(1);
    setTime(picker(1), monday + 8 * hour);
    Container::click(ok());
    EXPECT_THAT(container.errors, IsEmpty());
    EXPECT_THAT(data.takeCalls(),
                Contains("Events.Add(10, 0, 2026-11-23 08:00:00, 2026-11-23 09:00:00, \"\")"));
}

TEST_F(ctlEditEventsTests, WhatTheUserDidNotTouchIsWrittenBackAsItWasRead)
{
    const DATE odd = monday + 9 * hour + 17.0 / 86400;
    data.events[0] = {50,
                      10,
                      99,
                      odd,
                      odd + 3 * hour,
                      L"one\r\ntwo\nthree\tfour ",
                      std::nullopt,
                      Rule{5, 12345, 67890, -3}};
    showed(3);
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Events()",
                            "Events.Update(50, 0, 10, 99, 2026-11-23 09:00:17, 2026-11-23 12:00:17, "
                            "\"one\r\ntwo\nthree\tfour \")",
                            "Root.Events()", "Events.SetRecurrence(50, Easter 12345/67890/-3)"));
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_EQ(data.event(50)->t0, odd);
}

TEST_F(ctlEditEventsTests, AContainerThatDoesNotExecuteEndsTheDialogAsCancelled)
{
    showed(1);
    container.onSubmit = [](IAppCommand&) { return false; };
    Container::click(ok());
    EXPECT_THAT(container.done, ElementsAre(true));
}

TEST_F(ctlEditEventsTests, DeleteSubmitsTheCommandAsADeletion)
{
    showed(3);
    Container::click(deletion());
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Events()", "Events.Remove(50, 0)"));
    EXPECT_THAT(container.done, ElementsAre(false));
}

TEST_F(ctlEditEventsTests, AfterAFailedDeletionOkSavesAgain)
{
    showed(3);
    data.fail("Events.Remove", locked);
    Container::click(deletion());
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_THAT(container.done, IsEmpty());
    data.takeCalls();
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), Contains(testing::StartsWith("Events.Update(50, 0, 10")));
    EXPECT_TRUE(data.event(50));
}

TEST_F(ctlEditEventsTests, AFailedDeletionLeavesACommandThatTheHostHasSetMeanwhile)
{
    showed(3);
    const auto other = create<IAppCommand>(__uuidof(::EditEvents));
    call(other, &IAppCommand::put_Operation, 1L);
    container.onSubmit = [&](IAppCommand&) -> bool {
        call(container.dialog, &IAppDialog::putref_Command, other.as<IDispatch>().get());
        throw Failure(E_FAIL, L"host", L"busy");
    };
    Container::click(deletion());
    EXPECT_EQ(container.errors.size(), 1U);
    const long othersOperation = fetch(other, &IAppCommand::get_Operation);
    const long operation = fetch(command, &IAppCommand::get_Operation);
    EXPECT_EQ(othersOperation, 1);
    EXPECT_EQ(operation, 3);
}

TEST_F(ctlEditEventsTests, TheHostMaySetAnotherCommandWhileTheDataLayerIsAsked)
{
    data.recordRules = true;
    data.events[0].rule = Rule{2, 0, 4, 0};
    data.events.push_back(data.events[0]);
    data.events[1].id = 51;
    const auto begin = [this] {
        container.close();
        command = create<IAppCommand>(__uuidof(::EditEvents));
        arrange(3);
        container.place(__uuidof(::ctlEditEvents), command.get());
        container.site->activateUi();
        data.takeCalls();
    };
    const auto use = [this] {
        container.ready();
        Container::click(option(L"By &Month"));
        retype(countBox(), L"3");
        Container::click(repeat());
    };
    begin();
    use();
    const std::size_t calls = data.takeCalls().size();
    for (std::size_t index = 0; index < calls; ++index)
    {
        begin();
        std::size_t made = 0;
        data.during = [&](const std::string& asked) {
            if (made++ != index)
                return;
            SCOPED_TRACE(asked);
            command = create<IAppCommand>(__uuidof(::EditEvents)); // nobody holds the former one
            arrange(3);
            let(L"EventID", 51L);
            call(container.dialog, &IAppDialog::putref_Command, command.as<IDispatch>().get());
        };
        attempt(use); // the former command's Ready may be over
        data.during = nullptr;

        EXPECT_TRUE(container.ready());
        const std::wstring text = L"Tyres " + std::to_wstring(index);
        retype(textBox(), text.c_str());
        Container::click(ok());
        EXPECT_EQ(data.event(51)->text, text);
        EXPECT_EQ(data.event(50)->text, L"Oil change");
    }
}

TEST_F(ctlEditEventsTests, ReadyWhileTheContainerExecutesKeepsWhatWasEntered)
{
    container.onSubmit = [this](IAppCommand& submitted) {
        EXPECT_TRUE(container.ready());
        fetch(ComPtr<IAppCommand>(&submitted), &IAppCommand::Execute);
        return true;
    };
    for (const long operation : {1L, 3L})
    {
        showed(operation);
        toggleByKey(node(L"Carla", L"Drivers"));
        retype(textBox(), L"Tyres");
        Container::click(repeat());
        Container::click(ok());
        const Event& added = data.events.back();
        EXPECT_EQ(added.nameId, operation == 1 ? 10 : 12);
        EXPECT_TRUE(added.link);
        EXPECT_EQ(added.text, L"Tyres");
        EXPECT_EQ(added.rule, (Rule{1, 0, 0, 0}));
        container.close();
    }

    questions.answerKey = 'N';
    showed(3, 3);
    retype(textBox(), L"Wheels");
    Container::click(ok());
    EXPECT_EQ(questions.asked.size(), 1U);
    EXPECT_EQ(data.event(50)->edited[3].values.text, L"Wheels");
}

TEST_F(ctlEditEventsTests, AFailedDetachmentKeepsTheDialogOpenAndTheNextOkCompletesIt)
{
    data.events[0].link = 50;
    data.events.push_back({51, 11, 7, monday + 9 * hour, monday + 10 * hour, L"Oil change", 50});
    showed(3);
    toggleByKey(node(L"Ben", L"Drivers"));
    data.fail("EventLinks.Detach", locked);
    Container::click(ok());
    EXPECT_THAT(container.errors, ElementsAre(locked));
    EXPECT_THAT(container.done, IsEmpty());
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("EventLinks.RemoveNames(50, [11])", "EventLinks.Detach(50, 10)"));

    Container::click(ok());
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_THAT(data.takeCalls(), ElementsAre("EventLinks.Detach(50, 10)", "Root.Events()",
                                              testing::StartsWith("Events.Update(50, 0, 10"), "Root.Events()",
                                              "Events.SetRecurrence(50, none)"));
    EXPECT_EQ(data.events.size(), 1U);
    EXPECT_EQ(data.event(50)->link, std::nullopt);
}

TEST_F(ctlEditEventsTests, OpeningAnOccurrenceAsksForTheSeries)
{
    data.events[0].rule = Rule{2, 0, 4, 0};
    questions.answerKey = 'Y';
    showed(3, 3);
    ASSERT_EQ(questions.asked.size(), 1U);
    EXPECT_EQ(questions.asked[0].title, L"Activity");
    EXPECT_EQ(questions.asked[0].text,
              L"Do you want to edit all occurrences of this activity ?\n\nClick 'Yes' to edit all "
              L"occurrences.\nClick 'No' to edit this occurrence only.");
    EXPECT_THAT(questions.asked[0].buttons, testing::ElementsAreArray(yesNo));
    EXPECT_EQ(questions.asked[0].defaultButton, IDYES);
    EXPECT_EQ(questions.asked[0].icon, LoadIconW(nullptr, IDI_QUESTION));
    EXPECT_EQ(questions.asked[0].owner, container.window());
    EXPECT_EQ(number(L"Instance"), 0);
    EXPECT_TRUE(IsWindowEnabled(repeat()));
    EXPECT_TRUE(isChecked(repeat()));
    EXPECT_TRUE(IsWindowEnabled(tree()));
}

TEST_F(ctlEditEventsTests, ASingleOccurrenceKeepsItsResourcesAndCannotRepeat)
{
    data.events[0].rule = Rule{2, 0, 4, 0};
    questions.answerKey = 'N';
    showed(3, 3);
    EXPECT_EQ(number(L"Instance"), 3);
    EXPECT_FALSE(IsWindowEnabled(repeat()));
    EXPECT_FALSE(isChecked(repeat()));
    EXPECT_FALSE(IsWindowEnabled(tree()));
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Events()", testing::StartsWith("Events.Update(50, 3, 10")));
}

TEST_F(ctlEditEventsTests, AnOccurrenceOfLinkedActivitiesLeavesThemTheirRule)
{
    data.events[0].rule = Rule{2, 0, 4, 0};
    data.events[0].link = 50;
    data.events.push_back(data.events[0]);
    data.events[1].id = 51;
    data.events[1].nameId = 11;
    questions.answerKey = 'N';
    showed(3, 3);
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), ElementsAre(testing::StartsWith("EventLinks.UpdateLinked(50, 3, "),
                                              "EventLinks.SetRecurrence(50, week 0/4/0)"));
}

TEST_F(ctlEditEventsTests, AnExceptionKeepsItsResourcesAndCannotRepeat)
{
    data.events[0].rule = Rule{2, 0, 4, 0};
    data.events[0].exception = 1;
    showed(3);
    EXPECT_FALSE(IsWindowEnabled(repeat()));
    EXPECT_FALSE(isChecked(repeat()));
    EXPECT_FALSE(IsWindowEnabled(tree()));
    Container::click(ok());
    EXPECT_THAT(data.takeCalls(), Contains("Events.SetRecurrence(50, week 0/4/0)"));
}

TEST_F(ctlEditEventsTests, LabelsStandDirectlyBeforeTheirControlsForScreenReaders)
{
    showed(3);
    const std::pair<const wchar_t*, HWND> labels[] = {{L"St&art", picker(0)},
                                                      {L"Sto&p", picker(1)},
                                                      {L"&Type:", types()},
                                                      {L"&Description:", textBox()},
                                                      {L"&Show for:", tree()}};
    for (const auto& [caption, control] : labels)
    {
        HWND before = GetWindow(control, GW_HWNDPREV);
        EXPECT_EQ(before, label(caption)) << narrow(caption);
    }
    EXPECT_EQ(accessibleName(textBox()), L"Description:");
}

TEST_F(ctlEditEventsTests, ATimeHalfTypedCountsWhenEnterIsPressed)
{
    showed(1);
    SetFocus(picker(0));
    container.press(VK_RIGHT);
    const DATE before = timeOf(picker(0));
    container.type(L"1");
    container.press(VK_RETURN);
    EXPECT_THAT(container.done, ElementsAre(false));
    EXPECT_NE(timeOf(picker(0)), before);
    EXPECT_DOUBLE_EQ(time(L"T0"), std::min(timeOf(picker(0)), timeOf(picker(1))));
}

} // namespace korvane::test
