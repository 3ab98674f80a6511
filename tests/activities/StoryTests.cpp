// What users do with activities from day to day, in the dialogs and on the demo's real data layer.
#include "framework/com/EventConnection.h"
#include "tests/activities/ActivityUser.h"
#include "tests/demo/datalayer/DataLayer.h"

#include <gmock/gmock.h>

namespace korvane::test
{

using store::Connection;
using store::test::DataLayerTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr DATE monday = 46349; // 23 November 2026
constexpr DATE hour = 1.0 / 24;
constexpr long bookingGroup = 4;

std::wstring shown(DATE date)
{
    SYSTEMTIME time{};
    VariantTimeToSystemTime(date, &time);
    wchar_t text[32];
    swprintf(text, 32, L"%02d-%02d %02d:%02d", time.wMonth, time.wDay, time.wHour, time.wMinute);
    return text;
}

} // namespace

class StoryTests : public DataLayerTest, public ActivityUser
{
protected:
    void SetUp() override
    {
        root = open();
        sql(R"(INSERT INTO groups (id, name, flags, position) VALUES (4, 'Crew', 3, 4);
               INSERT INTO names (id, name, color) VALUES (10, 'A', 0), (11, 'B', 0), (12, 'C', 0);
               INSERT INTO group_names (group_id, name_id, position) VALUES (4, 10, 1), (4, 11, 2), (4, 12, 3);)");
        call(root, &IRoot::get_Events, events.put());
    }

    void TearDown() override
    {
        container.close();
        command.reset();
        events.reset();
        root.reset();
        DataLayerTest::TearDown();
    }

    void let(const wchar_t* name, const Variant& value) const
    {
        call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
    }

    void newCommand(REFCLSID classId, long operation)
    {
        container.close();
        container.done.clear();
        container.errors.clear();
        command = create<IAppCommand>(classId);
        call(command, &IAppCommand::put_Operation, operation);
        let(L"Root", Variant(root.as<IDispatch>()));
        let(L"GroupID", Variant(bookingGroup));
    }

    bool show(REFCLSID dialog)
    {
        const bool ready = container.show(dialog, command.get());
        if (ready)
        {
            container.site->activateUi();
            container.pump();
        }
        return ready;
    }

    void openNew(long nameId)
    {
        newCommand(__uuidof(::EditEvents), 1);
        let(L"N0", Variant(nameId));
        let(L"T0", Variant(OleDate{monday + 9 * hour}));
        let(L"T1", Variant(OleDate{monday + 10 * hour}));
        ASSERT_TRUE(show(__uuidof(::ctlEditEvents)));
    }

    void openStored(long eventId, long instance, WORD answer)
    {
        questions.answerKey = answer;
        newCommand(__uuidof(::EditEvents), 3);
        let(L"EventID", Variant(eventId));
        let(L"Instance", Variant(instance));
        ASSERT_TRUE(show(__uuidof(::ctlEditEvents)));
    }

    bool drag(long eventId, long instance, long from, long to, DATE start, WORD answer)
    {
        questions.answerKey = answer;
        newCommand(__uuidof(::MoveEvents), 3);
        let(L"EventID", Variant(eventId));
        let(L"Instance", Variant(instance));
        let(L"N0", Variant(from));
        let(L"N1", Variant(to));
        let(L"T0", Variant(OleDate{start}));
        let(L"T1", Variant(OleDate{start + hour}));
        return show(__uuidof(::ctlMoveEvents));
    }

    void confirm()
    {
        container.press(VK_RETURN);
        ASSERT_THAT(container.done, ElementsAre(false));
        ASSERT_THAT(container.errors, IsEmpty());
    }

    long operandNumber(const wchar_t* name) const
    {
        Variant value;
        call(command, &IAppCommand::get_Operand, Bstr(name).get(), value.put());
        return toLong(value.get());
    }

    /// What the schedule shows from the first monday on: resource, start and text of each occurrence.
    std::vector<std::wstring> schedule() const
    {
        std::vector<std::wstring> lines;
        EventConnection connection;
        connection.connect(events.get(), __uuidof(IEventsEvents),
                           [&](DISPID event, const EventArguments& arguments) {
                               if (event != 2)
                                   return;
                               const auto name = static_cast<wchar_t>(L'A' + arguments.number(2) - 10);
                               lines.push_back(name + (L" " + shown(arguments.date(4).days)) + L" " +
                                               std::wstring(arguments.text(6).view()));
                           });
        connection.during([&] { call(events.as<ISchedule>(), &ISchedule::Load, monday, monday + 100); });
        return lines;
    }

    /// The activities of a link group, as resources; of a single activity, the one.
    std::vector<long> linked(long eventId) const
    {
        std::vector<long> names;
        ComPtr<IEventLinks> links;
        call(root, &IRoot::get_EventLinks, links.put());
        EventConnection connection;
        connection.connect(links.get(), __uuidof(IEventLinksEvents),
                           [&](DISPID event, const EventArguments& arguments) {
                               if (event == 2)
                                   names.push_back(arguments.number(1));
                           });
        Variant link;
        connection.during([&] { call(links, &IEventLinks::Load, eventId, link.put()); });
        return names;
    }

    ComPtr<IRoot> root;
    ComPtr<IEvents> events;
    ComPtr<IAppCommand> command;
};

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

class SharedActivityStoryTests : public StoryTests
{
protected:
    /// An activity for A and C.
    void SetUp() override
    {
        StoryTests::SetUp();
        openNew(10);
        retype(textBox(), L"Lift");
        toggleByKey(node(L"C", L"Crew"));
        confirm();
        ofA = std::stol(sqlText("SELECT id FROM events WHERE name_id = 10"));
        ofC = std::stol(sqlText("SELECT id FROM events WHERE name_id = 12"));
        ASSERT_THAT(linked(ofA), testing::UnorderedElementsAre(10, 12));
    }

    long ofA = 0;
    long ofC = 0;
};

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

TEST_F(StoryTests, ALockedDatabaseKeepsTheDialogAndOkWorksWhenTheLockIsGone)
{
    call(database, &IDatabase::put_LockTimeout, 50L);
    root = open();
    call(root, &IRoot::get_Events, events.put());
    openNew(10);
    retype(textBox(), L"Patience");
    toggleByKey(node(L"B", L"Crew"));
    {
        Connection other(file, 0);
        other.execute("BEGIN IMMEDIATE");
        container.press(VK_RETURN);
        EXPECT_THAT(container.done, IsEmpty());
        ASSERT_EQ(container.errors.size(), 1U);
        EXPECT_EQ(container.errors[0].description,
                  L"The database is locked by another user. Try again in a moment.");
        EXPECT_EQ(Container::text(textBox()), L"Patience");
        EXPECT_TRUE(nodeChecked(node(L"B", L"Crew")));
        other.execute("ROLLBACK");
    }
    container.errors.clear();
    confirm();
    EXPECT_THAT(schedule(),
                testing::UnorderedElementsAre(L"A 11-23 09:00 Patience", L"B 11-23 09:00 Patience"));
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
