// The classes of the messages, described for the suites that test every class.
#include "tests/classes/Cases.h"

namespace korvane::test
{

namespace
{

constexpr long anna = 7;

/// One message, unread, and two information rows.
void fill(RecordingData& data)
{
    data.messages = {{3, anna, L"Administrator", dateOf("2026-11-20 09:30:00"), L"555 0100", L"Mr Hansen",
                      L"The tyres of the second van are here.", 2}};
    data.info = {{anna, L"Mobile of the company", L"555 0101", 0},
                 {anna, L"At home in the evenings", L"555 0102", 1}};
}

Operands message()
{
    return {{L"NameID", Variant(anna)},
            {L"Contact", Variant(Bstr(L"Mrs Jensen"))},
            {L"Tlf", Variant(Bstr(L"555 0199"))},
            {L"About", Variant(Bstr(L"Wants an offer"))}};
}

std::vector<OperandRow> operands()
{
    return {{L"NameID", VT_I4, {}},
            {L"Contact", VT_BSTR, L"Contact"},
            {L"Tlf", VT_BSTR, L"Tlf"},
            {L"About", VT_BSTR, L"About"}};
}

/// The user reads on, and confirms by deleting.
void readOn(Container& container)
{
    SetFocus(container.control(L"Edit", 4));
    container.press(VK_NEXT);
}

} // namespace

std::vector<CommandCase> messageCommands()
{
    CommandCase info{.name = "InfoMessage",
                     .classId = __uuidof(::InfoMessage),
                     .dialogClass = L"KorvaneDlg.ctlInfoMessage",
                     .operands = operands(),
                     .unknownOperations = {2, 0, 4, -1, 4711},
                     .refusesUnknown = false,
                     .fill = fill,
                     .uses = {{"SendMessage", 1, message()}, {"StoreInfo", 3, message()}},
                     .unknownCalls = {"Root.Messages()", "Root.Names()"}};
    info.operands.insert(info.operands.begin() + 1, {L"Name", VT_BSTR, {}});
    CommandCase show{.name = "ShowMessage",
                     .classId = __uuidof(::ShowMessage),
                     .dialogClass = L"KorvaneDlg.ctlShowMessage",
                     .operands = operands(),
                     .unknownOperations = {1, 3, 0, -1, 4711},
                     .refusesUnknown = false,
                     .fill = fill,
                     .uses = {{"DeleteMessage", 2, message()}},
                     .unknownCalls = {"Root.Messages()"},
                     .prepareReads = false};
    return {info, show};
}

std::vector<DialogCase> messageDialogs()
{
    return {{.name = "ShowMessage",
             .dialogClass = __uuidof(::ctlShowMessage),
             .commandClass = __uuidof(::ShowMessage),
             .title = L"&Message",
             .operation = 2,
             .operands = message(),
             .fill = fill,
             .use = readOn,
             .confirmKey = 'T'}};
}

} // namespace korvane::test
