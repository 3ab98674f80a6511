#include "tests/classes/Cases.h"

#include "tests/support/ComRules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace korvane::test
{

namespace
{

/// Each folder of the library lists its classes.
template <class Case> std::vector<Case> joined(std::initializer_list<std::vector<Case>> lists)
{
    std::vector<Case> all;
    for (const auto& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

std::string shownOperand(const Variant& value)
{
    switch (value.type())
    {
    case VT_I4:
        return shown(value.get().lVal);
    case VT_BSTR:
        return quoted(view(value.get().bstrVal));
    case VT_DATE:
        return stamp(value.get().date);
    case VT_BOOL:
        return value.get().boolVal != VARIANT_FALSE ? "True" : "False";
    default:
        return "type " + std::to_string(value.type());
    }
}

} // namespace

std::vector<CommandCase> groupCommands();
std::vector<DialogCase> groupDialogs();
std::vector<CommandCase> activityCommands();
std::vector<DialogCase> activityDialogs();
std::vector<CommandCase> masterdataCommands();
std::vector<DialogCase> arrangeDialogs();
std::vector<DialogCase> listEditorDialogs();
std::vector<CommandCase> messageCommands();
std::vector<DialogCase> messageDialogs();
std::vector<DialogCase> infoMessageDialogs();

const std::vector<CommandCase>& commandCases()
{
    static const auto cases =
        joined({groupCommands(), activityCommands(), masterdataCommands(), messageCommands()});
    return cases;
}

const std::vector<DialogCase>& dialogCases()
{
    static const auto cases = joined({groupDialogs(), activityDialogs(), arrangeDialogs(),
                                      listEditorDialogs(), messageDialogs(), infoMessageDialogs()});
    return cases;
}

const CommandCase& commandCase(const CLSID& classId)
{
    return *std::find_if(commandCases().begin(), commandCases().end(),
                         [&](const CommandCase& each) { return each.classId == classId; });
}

ComPtr<IAppCommand> makeCommand(const CLSID& classId, const RecordingData& data, long operation,
                                const Operands& operands)
{
    auto command = create<IAppCommand>(classId);
    call(command, &IAppCommand::put_Operation, operation);
    letOperand(command, L"Root", Variant(data.root.as<IDispatch>()));
    for (const auto& [name, value] : operands)
        letOperand(command, name, value);
    return command;
}

std::string operandsOf(const CommandCase& of, const ComPtr<IAppCommand>& command)
{
    std::string result;
    for (const OperandRow& row : of.operands)
        result += narrow(row.name) + '=' + shownOperand(getOperand(command, row.name)) + ' ';
    return result;
}

std::vector<std::string> stepsOf(RecordingData& data)
{
    auto calls = data.takeCalls();
    std::erase(calls, "Scope.Close(0, 0)");
    return calls;
}

bool isStartOf(const std::vector<std::string>& part, const std::vector<std::string>& whole)
{
    return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}

std::vector<FailingCall> eachOf(const std::vector<std::string>& calls)
{
    std::vector<FailingCall> result;
    std::map<std::string, int> made;
    for (const std::string& recorded : calls)
    {
        const std::string name = recorded.substr(0, recorded.find('('));
        result.push_back({name,
                          made[name]++,
                          {calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(result.size()) + 1}});
    }
    return result;
}

void PrintTo(const CommandCase& tested, std::ostream* stream)
{
    *stream << tested.name;
}

void PrintTo(const DialogCase& tested, std::ostream* stream)
{
    *stream << tested.name;
}

DialogOnCase::DialogOnCase(const DialogCase& described, Container::Offer offer)
    : tested(described), container(offer)
{
    questions.answerKey = tested.answer;
    renew();
}

void DialogOnCase::renew()
{
    end();
    data.nextId = 100;
    data.failures.clear();
    tested.fill(data);
    command = makeCommand(tested.commandClass, data, tested.operation, tested.operands);
}

void DialogOnCase::show()
{
    place();
    if (!container.ready())
        throw Failure(E_FAIL, L"dialog", L"not ready");
}

ErrorInfo DialogOnCase::failureOfReady(HRESULT outcome, bool ready)
{
    EXPECT_TRUE(!ready || outcome == S_OK);
    const auto told = std::exchange(container.errors, {});
    const bool relayed = tested.relaysFailureOfLoading && !ready;
    EXPECT_TRUE(relayed || told.empty());
    if (relayed && outcome == S_OK)
    {
        EXPECT_EQ(told.size(), 1U);
        return told.empty() ? ErrorInfo{} : told.front();
    }
    for (const ErrorInfo& each : told) // what came after the loading has failed as well
        EXPECT_EQ(each.number, outcome);
    return errorOf(outcome);
}

void DialogOnCase::activate()
{
    show();
    container.site->activateUi();
    container.pump();
}

void DialogOnCase::fillIn()
{
    if (tested.runsByItself())
        return show();
    activate();
    tested.use(container);
}

void DialogOnCase::confirm()
{
    if (tested.runsByItself())
        container.site->activateUi();
    else if (tested.confirmKey != 0)
        container.press(tested.confirmKey, false, true);
    else
        container.press(VK_RETURN);
    container.pump();
}

void DialogOnCase::end()
{
    container.close();
    command.reset();
    container.done.clear();
    container.errors.clear();
    container.submitted = 0;
    data.takeCalls();
    SetErrorInfo(0, nullptr);
}

HWND DialogOnCase::okButton() const
{
    return container.button(L"OK");
}

std::vector<HWND> DialogOnCase::usable() const
{
    auto found = windowsOn(container.dialogWindow());
    std::erase_if(found, [](HWND window) {
        return !IsWindowVisible(window) || !IsWindowEnabled(window) ||
               (GetWindowLongW(window, GWL_STYLE) & WS_TABSTOP) == 0 ||
               (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) != 0;
    });
    return found;
}

} // namespace korvane::test
