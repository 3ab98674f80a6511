// Whichever call of the data layer fails: the caller hears of it unchanged, and nothing more is called.
#include "activities/EditEvents.h"
#include "activities/MoveEvents.h"
#include "tests/activities/ActivityFixture.h"
#include "tests/support/ComRules.h"

namespace korvane::test
{

namespace
{

using Method = HRESULT (STDMETHODCALLTYPE IAppCommand::*)(VARIANT_BOOL*);

/// A command that is about to prepare or to execute.
struct Scenario
{
    const char* name;
    Method method;
    std::function<ComPtr<IAppCommand>(RecordingData& data)> arrange;
    std::size_t calls; ///< of the data layer, when none fails

    friend void PrintTo(const Scenario& scenario, std::ostream* stream) { *stream << scenario.name; }
};

ComPtr<IAppCommand> commandOn(RecordingData& data, const ComPtr<IAppCommand>& command, long operation,
                              long eventId, long instance = 0)
{
    letOperand(command, L"Root", Variant(data.root.as<IDispatch>()));
    letOperand(command, L"EventID", Variant(eventId));
    letOperand(command, L"Instance", Variant(instance));
    letOperand(command, L"GroupID", Variant(77L));
    call(command, &IAppCommand::put_Operation, operation);
    return command;
}

void prepared(RecordingData& data, const ComPtr<IAppCommand>& command)
{
    fetch(command, &IAppCommand::Prepare);
    letOperand(command, L"T0", Variant(OleDate{nine}));
    letOperand(command, L"T1", Variant(OleDate{ten}));
    data.takeCalls();
}

/// Lets the data layer keep a rule, and record how it is read and copied.
void giveRules(RecordingData& data)
{
    for (Event& event : data.events)
        event.rule = Rule{2, 1, 10, 3};
}

using Arrangement = std::function<ComPtr<IAppCommand>(RecordingData&)>;

/// @param choice the resources that are checked, and those that are unchecked with a minus.
Arrangement edit(long operation, long eventId, const std::vector<long>& choice = {}, long instance = 0)
{
    return [=](RecordingData& data) {
        giveRules(data);
        const auto object = make<EditEvents>();
        auto command = commandOn(data, object->asCommand(), operation, eventId, instance);
        if (operation == operationAdd)
            letOperand(command, L"N0", Variant(5L));
        prepared(data, command);
        for (const long name : choice)
            object->SetName(std::abs(name), name > 0);
        if (operation == operationAdd)
            call(data.root, &IRoot::NewRecurrence, 1L, object->Rule.put());
        data.takeCalls();
        return command;
    };
}

Arrangement move(long operation, long eventId, bool all = false, long instance = 0)
{
    return [=](RecordingData& data) {
        const auto object = make<MoveEvents>();
        auto command = commandOn(data, object->asCommand(), operation, eventId, instance);
        letOperand(command, L"N1", Variant(9L));
        prepared(data, command);
        object->UpdateAll = all;
        return command;
    };
}

/// A command that has its operands only.
template <class Command> Arrangement unprepared(long operation)
{
    return [=](RecordingData& data) {
        giveRules(data);
        data.recordRules = true;
        return commandOn(data, make<Command>()->asCommand(), operation, 21, 2);
    };
}

std::vector<Scenario> scenarios()
{
    constexpr auto prepare = &IAppCommand::Prepare;
    constexpr auto execute = &IAppCommand::Execute;
    return {
        {"EditPrepareAdd", prepare, unprepared<EditEvents>(1), 1},
        {"EditPrepareDelete", prepare, unprepared<EditEvents>(2), 17},
        {"EditPrepareChange", prepare, unprepared<EditEvents>(3), 17},
        {"AddSingle", execute, edit(1, 0, {}, 2), 6},
        {"AddLinked", execute, edit(1, 0, {7, 6}, 2), 6},
        {"DeleteSingle", execute, edit(2, 11), 2},
        {"DeleteLinked", execute, edit(2, 20), 1},
        {"DeleteOccurrence", execute, edit(2, 20, {}, 4), 1},
        {"ChangeSingle", execute, edit(3, 11), 4},
        {"ChangeToLinked", execute, edit(3, 11, {6, 7}), 4},
        {"ChangeLinked", execute, edit(3, 20, {-6, 9}, 4), 4},
        {"ChangeToSingle", execute, edit(3, 20, {-5, -6, 7}), 6},
        {"MovePrepare", prepare, unprepared<MoveEvents>(3), 4},
        {"CopyPrepare", prepare, unprepared<MoveEvents>(4), 4},
        {"MovePrepareUnknown", prepare, unprepared<MoveEvents>(1), 1},
        {"MoveSingle", execute, move(3, 11), 2},
        {"MoveAll", execute, move(3, 21, true), 1},
        {"MoveOne", execute, move(3, 21), 3},
        {"MoveOccurrence", execute, move(3, 21, false, 2), 2},
        {"Copy", execute, move(4, 21, false, 2), 2},
    };
}

std::string nameOfCall(const std::string& recorded)
{
    return recorded.substr(0, recorded.find('('));
}

class ActivityFailureTests : public testing::TestWithParam<Scenario>
{
protected:
    struct Outcome
    {
        ErrorInfo error;
        VARIANT_BOOL result = VARIANT_TRUE;
        std::vector<std::string> calls;
        std::string before;
        std::vector<std::string> atEachCall = {}; ///< the operands
        std::string operands;
    };

    /// Runs the scenario, and lets one call fail where its name is given.
    static Outcome run(const std::string& failing = {}, int passed = 0)
    {
        RecordingData data;
        fillWithActivities(data);
        Outcome outcome;
        {
            const auto command = GetParam().arrange(data);
            if (!failing.empty())
                data.failAfter(failing, passed, locked);
            outcome.before = operandsOf(command);
            data.during = [&](const std::string&) { outcome.atEachCall.push_back(operandsOf(command)); };
            const HRESULT number = (command.get()->*GetParam().method)(&outcome.result);
            data.during = nullptr;
            outcome.error = errorOf(number);
            outcome.calls = data.takeCalls();
            outcome.operands = operandsOf(command);
        }
        return outcome;
    }
};

} // namespace

TEST_P(ActivityFailureTests, WithoutAFailureAllCallsAreMade)
{
    const Outcome whole = run();
    EXPECT_EQ(whole.error.number, S_OK);
    EXPECT_EQ(whole.calls.size(), GetParam().calls) << testing::PrintToString(whole.calls);
    EXPECT_EQ(whole.atEachCall.front(), whole.before); // what is asked for is what was set
}

TEST_P(ActivityFailureTests, AFailingDataLayerCallReachesTheCallerUnchanged)
{
    const Outcome whole = run();
    std::map<std::string, int> made;
    for (std::size_t index = 0; index < whole.calls.size(); ++index)
    {
        const std::string failing = nameOfCall(whole.calls[index]);
        SCOPED_TRACE(shown(static_cast<long>(index)) + ": " + whole.calls[index]);
        const Outcome failed = run(failing, made[failing]++);

        EXPECT_EQ(failed.error, locked);
        EXPECT_EQ(failed.result, VARIANT_FALSE);
        const std::vector<std::string> upToTheFailure(
            whole.calls.begin(), whole.calls.begin() + static_cast<std::ptrdiff_t>(index) + 1);
        EXPECT_EQ(failed.calls, upToTheFailure); // and nothing after it
        // What failed has changed nothing.
        EXPECT_EQ(failed.operands, failed.atEachCall.back());
        EXPECT_EQ(failed.operands, whole.atEachCall[index]);
    }
}

INSTANTIATE_TEST_SUITE_P(EachCall, ActivityFailureTests, testing::ValuesIn(scenarios()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace korvane::test
