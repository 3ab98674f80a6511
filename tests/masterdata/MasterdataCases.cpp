// The commands on resources and activity types, and the dialogs that arrange, described for the suites that test every
// class.
#include "tests/classes/Cases.h"

namespace korvane::test
{

namespace
{

/// Anna has a login and is synchronised, Ben has a login, and Cleo has none. Nobody has the login "cleo" yet.
void fill(RecordingData& data)
{
    data.groups = {{1, L"System", 1}, {4, L"Drivers", 3}, {5, L"Vans", 3}, {6, L"Workshop", 3}};
    data.names = {{5, L"Anna the mechanic", 4, 0x0000FF, 2, L"anna"},
                  {6, L"Ben the driver", 4, 0x00FF00},
                  {7, L"Cleo the driver", 4},
                  {7, L"Cleo the driver", 5}};
    data.types = {{2, L"Service", 0x0000FF, 4}, {3, L"Tour", 0x00FF00, 4}, {8, L"Lunch break", 0x00FFFF, 4}};
    data.accounts = {{31, L"anna", 2, 5}, {32, L"ben", 3, 6}, {33, L"nobody yet", 3}};
}

Operands resource(long id)
{
    return {{L"GroupID", Variant(4L)}, {L"NameID", Variant(id)}};
}

/// What is entered for a resource.
Operands entered(long role, const wchar_t* login, bool sync = false)
{
    return {{L"NameText", Variant(Bstr(L"Dora the mechanic"))},
            {L"Color", Variant(0x808000L)},
            {L"Role", Variant(role)},
            {L"Login", Variant(Bstr(login))},
            {L"Sync", Variant(sync)}};
}

Operands type(long id)
{
    return {{L"GroupID", Variant(4L)},
            {L"TypeID", Variant(id)},
            {L"TypeText", Variant(Bstr(L"Tyres and brakes"))},
            {L"Color", Variant(0x808000L)}};
}

CommandCase editNames()
{
    CommandCase edit{.name = "EditNames",
                     .classId = __uuidof(::EditNames),
                     .dialogClass = L"KorvaneDlg.ctlEditNames",
                     .operands = {{L"GroupID", VT_I4, L"GroupID"},
                                  {L"NameID", VT_I4, L"NameID"},
                                  {L"NameText", VT_BSTR, L"NameText"},
                                  {L"Role", VT_I4, L"NameRole"},
                                  {L"Login", VT_BSTR, L"NameLogin"},
                                  {L"LoginID", VT_I4, L"LoginID"},
                                  {L"Sync", VT_BOOL, L"NameSync"},
                                  {L"Mailbox", VT_BSTR, {}}, // the property's setting changes nothing
                                  {L"Color", VT_I4, L"NameColor"}},
                     .unknownOperations = {0, 4, -1},
                     .refusesUnknown = false,
                     .fill = fill,
                     .uses = {{"Create", 1, resource(0), entered(-1, L"")},
                              {"CreateWithNewLogin", 1, resource(0), entered(3, L"cleo", true)},
                              {"CreateWithKnownLogin", 1, resource(0), entered(3, L"nobody yet")},
                              {"AddExisting", 1, resource(0), {{L"NameID", Variant(7L)}}},
                              {"Remove", 2, resource(6)},
                              {"Change", 3, resource(5), entered(2, L"anna", true)},
                              {"ChangeLogin", 3, resource(7), entered(3, L"cleo")},
                              {"RemoveLogin", 3, resource(6), entered(-2, L"")},
                              {"Plain", 3, resource(7)}}};
    edit.unknownCalls = {"Root.Names()", "Root.Accounts()"};
    return edit;
}

CommandCase editTypes()
{
    CommandCase edit{.name = "EditTypes",
                     .classId = __uuidof(::EditTypes),
                     .dialogClass = L"KorvaneDlg.ctlEditTypes",
                     .operands = {{L"GroupID", VT_I4, L"GroupID"},
                                  {L"TypeID", VT_I4, L"TypeID"},
                                  {L"TypeText", VT_BSTR, L"TypeText"},
                                  {L"Color", VT_I4, L"TypeColor"}},
                     .unknownOperations = {0, 4, -1},
                     .refusesUnknown = false,
                     .fill = fill,
                     .uses = {{"Create", 1, type(0)},
                              {"AddExisting", 1, type(3)},
                              {"Remove", 2, type(3)},
                              {"Change", 3, type(3)}}};
    edit.unknownCalls = {"Root.Types()"};
    edit.prepareReads = false;
    return edit;
}

/// The three ways to arrange, which differ in what they arrange.
struct Arranged
{
    const char* name;
    CLSID commandClass;
    CLSID dialogClass;
    const wchar_t* dialog;
    const wchar_t* title;
    const char* collection;
};

const Arranged arranged[] = {{"ArrangeNames", __uuidof(::ArrangeNames), __uuidof(::ctlArrangeNames),
                              L"KorvaneDlg.ctlArrangeNames", L"Resource", "Root.Names()"},
                             {"ArrangeTypes", __uuidof(::ArrangeTypes), __uuidof(::ctlArrangeTypes),
                              L"KorvaneDlg.ctlArrangeTypes", L"Activity Types", "Root.Types()"},
                             {"ArrangeGroups", __uuidof(::ArrangeGroups), __uuidof(::ctlArrangeGroups),
                              L"KorvaneDlg.ctlArrangeGroups", L"Group", "Root.Groups()"}};

Operands ofDrivers()
{
    return {{L"GroupID", Variant(4L)}};
}

/// By a key in the list, and by a button.
void arrange(Container& container)
{
    clickItem(container.control(L"ListBox"), 1);
    container.press(VK_UP, false, true);
    Container::click(container.button(L"Move to the bottom (Alt+End)"));
}

} // namespace

std::vector<CommandCase> masterdataCommands()
{
    std::vector<CommandCase> commands{editNames(), editTypes()};
    for (const Arranged& each : arranged)
        commands.push_back({.name = each.name,
                            .classId = each.commandClass,
                            .dialogClass = each.dialog,
                            .operands = {{L"GroupID", VT_I4, {}}, {L"Pos", VT_I4, {}}},
                            .unknownOperations = {0, 1, 2, 4, -1},
                            .refusesUnknown = false,
                            .fill = fill,
                            .uses = {{"Add", 1, ofDrivers()}, {"Change", 3, ofDrivers()}},
                            .unknownCalls = {each.collection}});
    return commands;
}

std::vector<DialogCase> arrangeDialogs()
{
    std::vector<DialogCase> dialogs;
    for (const Arranged& each : arranged)
        dialogs.push_back({.name = each.name,
                           .dialogClass = each.dialogClass,
                           .commandClass = each.commandClass,
                           .title = each.title,
                           .operation = 3,
                           .operands = ofDrivers(),
                           .fill = fill,
                           .use = arrange,
                           .relaysFailureOfLoading = true});
    return dialogs;
}

} // namespace korvane::test
