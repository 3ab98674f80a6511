// The classes of the activities, described for the suites that test every class.
#include "tests/activities/ActivityFixture.h"
#include "tests/classes/Cases.h"

#include <commctrl.h>

namespace korvane::test
{

namespace
{

/// Activity 11 is for one resource, once; 20 is booked for several resources and repeats.
void fill(RecordingData& data)
{
    fillWithActivities(data);
    data.groups = {{1, L"System", 1}, {4, L"Drivers", 3}, {5, L"Vans", 3}};
    data.names = {{5, L"Anna", 4}, {6, L"Ben", 4}, {7, L"Cleo", 5}, {6, L"Ben", 5}};
    data.types = {{2, L"Service", 0x0000FF}, {3, L"Tour", 0x00FF00}};
    data.newRule = Rule{0, 0, 10, 0};
    for (Event& event : data.events)
        if (event.link)
        {
            event.rule = Rule{2, 1, 10, 3};
            event.text = L"Meeting of the drivers"; // long enough to ask for memory
        }
}

/// @param target the resource that a move leads to; 0 for none.
Operands activity(long eventId, long instance = 0, long target = 0)
{
    Operands operands{{L"EventID", Variant(eventId)},      {L"Instance", Variant(instance)},
                      {L"GroupID", Variant(4L)},           {L"N0", Variant(5L)},
                      {L"T0", Variant(OleDate{nine + 1})}, {L"T1", Variant(OleDate{ten + 1})}};
    if (target != 0)
        operands.emplace_back(L"N1", Variant(target));
    return operands;
}

void describe(Container& container)
{
    SetFocus(container.control(L"Edit"));
    SendMessageW(GetFocus(), EM_SETSEL, 0, -1);
    container.type(L"Tyres");
}

void fillInAll(Container& container)
{
    describe(container);
    SetFocus(container.control(WC_TREEVIEWW));
    container.press(VK_DOWN);
    container.press(VK_SPACE);
    Container::click(container.button(L"&Repeat activity"));
}

std::vector<OperandRow> operands()
{
    return {{L"EventID", VT_I4, {}},         {L"Instance", VT_I4, L"EventInstance"},
            {L"GroupID", VT_I4, L"GroupID"}, {L"TypeID", VT_I4, L"TypeID"},
            {L"N0", VT_I4, L"NameID"},       {L"T0", VT_DATE, L"T0"},
            {L"T1", VT_DATE, L"T1"},         {L"Text", VT_BSTR, L"Text"}};
}

} // namespace

std::vector<CommandCase> activityCommands()
{
    CommandCase edit{.name = "EditEvents",
                     .classId = __uuidof(::EditEvents),
                     .dialogClass = L"KorvaneDlg.ctlEditEvents",
                     .operands = operands(),
                     .unknownOperations = {7, 0, -1, 4, 5, 4711},
                     .refusesUnknown = true,
                     .fill = fill,
                     .uses = {{"Add", 1, activity(0)},
                              {"Delete", 2, activity(20)},
                              {"Change", 3, activity(11)},
                              {"ChangeLinked", 3, activity(20)},
                              {"ChangeOccurrence", 3, activity(20, 3)}}};
    CommandCase move = edit;
    move.name = "MoveEvents";
    move.classId = __uuidof(::MoveEvents);
    move.dialogClass = L"KorvaneDlg.ctlMoveEvents";
    for (OperandRow& row : move.operands)
        row.property = row.name == L"N0" ? L"SourceName" : L"";
    move.operands.push_back({L"N1", VT_I4, L"TargetName"});
    move.unknownOperations = {7, 0, -1, 1, 2, 5, 4711};
    move.uses = {{"Move", 3, activity(11, 0, 9)},
                 {"MoveLinked", 3, activity(20, 0, 9)},
                 {"MoveOccurrence", 3, activity(20, 3, 9)},
                 {"Copy", 4, activity(20, 0, 9)}};
    return {edit, move};
}

std::vector<DialogCase> activityDialogs()
{
    const auto edit = [](const char* name, long operation, long eventId) {
        return DialogCase{.name = name,
                          .dialogClass = __uuidof(::ctlEditEvents),
                          .commandClass = __uuidof(::EditEvents),
                          .title = L"Activity",
                          .operation = operation,
                          .operands = activity(eventId),
                          .fill = fill,
                          .use = fillInAll,
                          .sharedKeys = L"D",
                          .answer = 'N'};
    };
    DialogCase occurrence = edit("ChangeOccurrence", 3, 20);
    occurrence.operands = activity(20, 3);
    occurrence.use = describe; // nothing else can be changed
    const auto move = [](const char* name, const wchar_t* title, long operation, long eventId) {
        return DialogCase{.name = name,
                          .dialogClass = __uuidof(::ctlMoveEvents),
                          .commandClass = __uuidof(::MoveEvents),
                          .title = title,
                          .operation = operation,
                          .operands = activity(eventId),
                          .fill = fill,
                          .answer = 'N'};
    };
    return {edit("AddActivity", 1, 0),
            edit("ChangeActivity", 3, 20),
            occurrence,
            move("MoveActivity", L"Move activity", 3, 11),
            move("MoveLinkedActivity", L"Move activity", 3, 20),
            move("CopyActivity", L"Copy activity", 4, 20)};
}

} // namespace korvane::test
