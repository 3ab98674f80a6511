// The list editors, described for the suites that test every class.
#include "tests/classes/Cases.h"

namespace korvane::test
{

namespace
{

void fill(RecordingData& data)
{
    data.names = {
        {1, L"Super-user", 4}, {5, L"Anna Andersen", 4, 0x0000FF}, {6, L"Ben", 4}, {7, L"Cleo", 5, 0x123456}};
    data.types = {{0, L"Built in", 0, 4},
                  {5, L"Service", 0x0000FF, 4},
                  {6, L"Tour", 0, 4},
                  {7, L"Maintenance", 0x123456, 5}};
    data.accounts = {{30, L"anna", 2, 5}, {31, L"cleo", 3, 7}, {32, L"guest", 3}};
}

Operands resource(long id)
{
    return {{L"GroupID", Variant(4L)},
            {L"NameID", Variant(id)},
            {L"NameText", Variant(Bstr(L"A resource from before"))},
            {L"Color", Variant(0x00FF00L)}};
}

Operands type(long id)
{
    return {{L"GroupID", Variant(4L)},
            {L"TypeID", Variant(id)},
            {L"TypeText", Variant(Bstr(L"A type from before"))},
            {L"Color", Variant(0x00FF00L)}};
}

void select(Container& container, int index)
{
    clickItem(container.control(L"ListBox"), index);
}

void rename(Container& container)
{
    SetFocus(container.control(L"Edit"));
    SendMessageW(GetFocus(), EM_SETSEL, 0, -1);
    container.type(L"A new name");
}

/// Also a role, and a login to synchronise with.
void describe(Container& container)
{
    rename(container);
    SetFocus(container.control(L"ComboBox"));
    container.press(VK_UP); // from "No User"
    SetFocus(GetWindow(container.control(L"ComboBox", 1), GW_CHILD));
    SendMessageW(GetFocus(), EM_SETSEL, 0, -1);
    container.type(L"dora");
    const HWND sync = container.button(L"&Synchronize");
    if (SendMessageW(sync, BM_GETCHECK, 0, 0) != BST_CHECKED)
        Container::click(sync);
}

DialogCase namesCase(const char* name, long operation, long id)
{
    return {.name = name,
            .dialogClass = __uuidof(::ctlEditNames),
            .commandClass = __uuidof(::EditNames),
            .title = L"Resource",
            .operation = operation,
            .operands = resource(id),
            .fill = fill,
            .answer = 'Y',
            .staysOpen = true};
}

DialogCase typesCase(const char* name, long operation, long id)
{
    DialogCase result = namesCase(name, operation, id);
    result.dialogClass = __uuidof(::ctlEditTypes);
    result.commandClass = __uuidof(::EditTypes);
    result.title = L"Activity Types";
    result.operands = type(id);
    return result;
}

/// Creates, adds an existing one, removes, and changes.
template <class MakeCase>
std::vector<DialogCase> casesOf(const std::string& of, MakeCase make, void (*describe)(Container&))
{
    std::vector<std::string> names{"Create" + of, "Add" + of, "Remove" + of, "Change" + of};
    auto create = make(names[0].c_str(), 1, 0);
    create.use = describe;
    auto add = make(names[1].c_str(), 1, 0);
    add.use = [](Container& container) { select(container, 0); };
    auto remove = make(names[2].c_str(), 2, 5);
    remove.use = [](Container& container) { select(container, 1); };
    auto change = make(names[3].c_str(), 3, 5);
    change.use = [describe](Container& container) {
        select(container, 1);
        describe(container);
    };
    return {create, add, remove, change};
}

} // namespace

std::vector<DialogCase> listEditorDialogs()
{
    auto all = casesOf("Name", namesCase, describe);
    for (DialogCase& each : casesOf("Type", typesCase, rename))
        all.push_back(std::move(each));
    return all;
}

} // namespace korvane::test
