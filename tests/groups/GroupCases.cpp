// The classes of the groups, described for the suites that test every class.
#include "tests/classes/Cases.h"

namespace korvane::test
{

namespace
{

void fill(RecordingData& data)
{
    data.groups = {{1, L"All"}, {9, L"Vans", 5}, {4, L"Drivers", 7}};
}

Operands drivers()
{
    return {{L"GroupID", Variant(4L)}, {L"GroupName", Variant(Bstr(L"before"))}};
}

void select(Container& container)
{
    clickItem(container.control(L"ListBox"), 0);
}

void rename(Container& container)
{
    SetFocus(container.control(L"Edit"));
    SendMessageW(GetFocus(), EM_SETSEL, 0, -1);
    container.type(L"Small vans");
}

} // namespace

std::vector<CommandCase> groupCommands()
{
    return {{.name = "EditGroups",
             .classId = __uuidof(::EditGroups),
             .dialogClass = L"KorvaneDlg.ctlEditGroups",
             .operands = {{L"GroupID", VT_I4, L"GroupID"}, {L"GroupName", VT_BSTR, L"GroupName"}},
             .unknownOperations = {0, 4, -1},
             .refusesUnknown = false,
             .fill = fill,
             .uses = {{"Add", 1, drivers()}, {"Delete", 2, drivers()}, {"Change", 3, drivers()}}}};
}

std::vector<DialogCase> groupDialogs()
{
    DialogCase add{.name = "AddGroup",
                   .dialogClass = __uuidof(::ctlEditGroups),
                   .commandClass = __uuidof(::EditGroups),
                   .title = L"Group",
                   .operation = 1,
                   .operands = drivers(),
                   .fill = fill,
                   .use = rename};
    DialogCase remove = add;
    remove.name = "DeleteGroup";
    remove.operation = 2;
    remove.use = select;
    DialogCase change = add;
    change.name = "ChangeGroup";
    change.operation = 3;
    change.use = [](Container& container) {
        select(container);
        rename(container);
    };
    return {add, remove, change};
}

} // namespace korvane::test
