// A user who works with activities, in the dialogs and on the demo's real data layer.
#pragma once

#include "framework/com/EventConnection.h"
#include "tests/activities/ActivityUser.h"
#include "tests/demo/datalayer/DataLayer.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace korvane::test
{

inline constexpr DATE monday = 46349; // 23 November 2026
inline constexpr DATE hour = 1.0 / 24;
inline constexpr long bookingGroup = 4;

inline std::wstring shown(DATE date)
{
    SYSTEMTIME time{};
    VariantTimeToSystemTime(date, &time);
    wchar_t text[32];
    swprintf(text, 32, L"%02d-%02d %02d:%02d", time.wMonth, time.wDay, time.wHour, time.wMinute);
    return text;
}

class StoryTests : public store::test::DataLayerTest, public ActivityUser
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
        ASSERT_THAT(container.done, testing::ElementsAre(false));
        ASSERT_THAT(container.errors, testing::IsEmpty());
    }

    long operandNumber(const wchar_t* name) const
    {
        const auto value = korvane::fetch(command, &IAppCommand::get_Operand, Bstr(name).get());
        return toLong(value.get());
    }

    /// What the schedule shows from the first monday on: resource, start and text of each occurrence.
    std::vector<std::wstring> schedule() const
    {
        std::vector<std::wstring> lines;
        EventConnection connection;
        connection.connect(events.get(), __uuidof(IEventsEvents),
                           {.add = [&](const EventArguments& arguments) {
                               const auto name = static_cast<wchar_t>(L'A' + arguments.number(2) - 10);
                               lines.push_back(name + (L" " + shown(arguments.date(4).days)) + L" " +
                                               std::wstring(arguments.text(6).view()));
                           }});
        connection.during([&] { call(events.as<ISchedule>(), &ISchedule::Load, monday, monday + 100); });
        return lines;
    }

    /// The activities of a link group, as resources; of a single activity, the one.
    std::vector<long> linked(long eventId) const
    {
        std::vector<long> names;
        const auto links = korvane::fetch(root, &IRoot::get_EventLinks);
        EventConnection connection;
        connection.connect(
            links.get(), __uuidof(IEventLinksEvents),
            {.add = [&](const EventArguments& arguments) { names.push_back(arguments.number(1)); }});
        Variant link;
        connection.during([&] { call(links, &IEventLinks::Load, eventId, link.put()); });
        return names;
    }

    ComPtr<IRoot> root;
    ComPtr<IEvents> events;
    ComPtr<IAppCommand> command;
};

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

} // namespace korvane::test
