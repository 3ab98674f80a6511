// The info dialog, described for the suites that test every class.
#include "tests/classes/Cases.h"

namespace korvane::test
{

namespace
{

constexpr long anna = 7; ///< has a login
constexpr long van = 8;  ///< has none

void fill(RecordingData& data)
{
    data.messages.clear();
    data.names = {{anna, L"Anna Berg, reception"}, {van, L"Van 1 with the long ladder"}};
    data.accounts = {{3, L"anna", 3, anna}};
    data.info = {{anna, L"Mobile of the company", L"555 0101", 0},
                 {anna, L"At home in the evenings", L"555 0102", 1},
                 {van, L"Number plate of the van", L"KD 1234 and a trailer", 0}};
}

Operands operandsFor(long nameId)
{
    return {{L"NameID", Variant(nameId)},
            {L"Name", Variant(Bstr(L"whoever it is for"))},
            {L"About", Variant(Bstr(L"what the host knows of it"))}};
}

void writeMessage(Container& container)
{
    Container::click(container.button(L"Will &phone again"));
    for (const int box : {0, 1, 2})
    {
        SetFocus(container.control(L"Edit", box));
        container.type(L"about the offer of last week");
    }
}

void editRows(Container& container)
{
    const HWND grid = container.control(L"KorvaneGrid");
    RECT client{};
    GetClientRect(grid, &client);
    Container::clickAt(grid, client.right - 20, client.bottom / 8); // in the first row
    container.pump();
    container.type(L"another text for the value");
    Container::click(container.button(L"Move down (Alt+Down)"));
}

} // namespace

std::vector<DialogCase> infoMessageDialogs()
{
    DialogCase send{.name = "LeaveMessage",
                    .dialogClass = __uuidof(::ctlInfoMessage),
                    .commandClass = __uuidof(::InfoMessage),
                    .title = L"&Message",
                    .operation = 1,
                    .operands = operandsFor(anna),
                    .fill = fill,
                    .use = writeMessage};
    DialogCase store = send;
    store.name = "InfoRows";
    store.operands = operandsFor(van);
    store.use = editRows;
    DialogCase both = send;
    both.name = "InfoRowsAfterMessage";
    both.operation = 3;
    both.use = [](Container& container) {
        writeMessage(container);
        container.press(VK_TAB, false, false, true);
        if (container.visible(container.control(L"KorvaneGrid"))) // else its rows could not be read
            editRows(container);
    };
    return {send, store, both};
}

} // namespace korvane::test
