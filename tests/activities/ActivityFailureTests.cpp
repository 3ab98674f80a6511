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

/// What the operands are from the first success of a call on.
struct Change
{
    std::string call;
    std::string operands;
};

/// A command that is about to prepare or to execute.
struct Scenario
{
    const char* name;
    Method method;
    std::function<ComPtr<IAppCommand>(RecordingData& data)> arrange;
    std::size_t calls;  ///< of the data layer, when none fails
    std::string before; ///< the operands until the first change
    std::vector<Change> changes = {};

    friend void PrintTo(const Scenario& scenario, std::ostream* stream) { *stream << scenario.name; }
};

ComPtr<IAppCommand> commandOn(RecordingData& data, const ComPtr<IAppCommand>& command, long operation,
                              long eventId, long instance = 0)
{
    let(command, L"Root", Variant(data.root.as<IDispatch>()));
    let(command, L"EventID", Variant(eventId));
    let(command, L"Instance", Variant(instance));
    let(command, L"GroupID", Variant(77L));
    call(command, &IAppCommand::put_Operation, operation);
    return command;
}

void prepared(RecordingData& data, const ComPtr<IAppCommand>& command)
{
    VARIANT_BOOL result = VARIANT_FALSE;
    call(command, &IAppCommand::Prepare, &result);
    // The wrong way round, so that what is exchanged before the first call is seen.
    let(command, L"T0", Variant(OleDate{ten}));
    let(command, L"T1", Variant(OleDate{nine}));
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
            let(command, L"N0", Variant(5L));
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
        let(command, L"N1", Variant(9L));
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

/// Operands with the times unset, and with those of the activities.
std::string unset(const std::string& ids, const char* text = "")
{
    return ids + " 1899-12-30 00:00:00 1899-12-30 00:00:00 \"" + text + '"';
}
std::string fromNineToTen(const std::string& ids, const char* text = "")
{
    return ids + " 2026-11-20 09:00:00 2026-11-20 10:00:00 \"" + text + '"';
}
std::string meeting(const std::string& ids)
{
    return fromNineToTen(ids, "Meeting");
}
std::string inspection(const std::string& ids)
{
    return fromNineToTen(ids, "Inspection");
}

// Operands: the activity, its occurrence, the group, the type, the resource or resources.
std::vector<Scenario> scenarios()
{
    constexpr auto prepare = &IAppCommand::Prepare;
    constexpr auto execute = &IAppCommand::Execute;
    return {
        {"EditPrepareAdd", prepare, unprepared<EditEvents>(1), 1, unset("21 2 77 0 0")},
        {"EditPrepareDelete",
         prepare,
         unprepared<EditEvents>(2),
         17,
         unset("21 2 77 0 0"),
         {{"Events.Fetch", meeting("21 2 77 3 6")}}},
        {"EditPrepareChange",
         prepare,
         unprepared<EditEvents>(3),
         17,
         unset("21 2 77 0 0"),
         {{"Events.Fetch", meeting("21 2 77 3 6")}}},
        {"AddSingle",
         execute,
         edit(1, 0, {}, 2),
         6,
         fromNineToTen("0 2 77 0 5"),
         {{"Events.Add", fromNineToTen("100 2 77 0 5")},
          {"Events.SetRecurrence", fromNineToTen("100 0 77 0 5")}}},
        {"AddLinked",
         execute,
         edit(1, 0, {7, 6}, 2),
         6,
         fromNineToTen("0 2 77 0 6"),
         {{"Events.Add", fromNineToTen("100 2 77 0 6")},
          {"EventLinks.SetRecurrence", fromNineToTen("100 0 77 0 6")}}},
        {"DeleteSingle", execute, edit(2, 11), 2, inspection("11 0 77 2 5")},
        {"DeleteLinked", execute, edit(2, 20), 1, meeting("20 0 77 3 5")},
        {"DeleteOccurrence", execute, edit(2, 20, {}, 4), 1, meeting("20 4 77 3 5")},
        {"ChangeSingle", execute, edit(3, 11), 4, inspection("11 0 77 2 5")},
        {"ChangeToLinked", execute, edit(3, 11, {6, 7}), 4, inspection("11 0 77 2 7")},
        {"ChangeLinked", execute, edit(3, 20, {-6, 9}, 4), 4, meeting("20 4 77 3 9")},
        {"ChangeToSingle",
         execute,
         edit(3, 20, {-5, -6, 7}),
         6,
         meeting("20 0 77 3 7"),
         {{"EventLinks.RemoveNames", meeting("22 0 77 3 7")}}},
        {"MovePrepare",
         prepare,
         unprepared<MoveEvents>(3),
         4,
         unset("21 2 77 0 0 0"),
         {{"Events.Fetch", unset("21 2 77 3 6 6", "Meeting")}}},
        {"CopyPrepare",
         prepare,
         unprepared<MoveEvents>(4),
         4,
         unset("21 2 77 0 0 0"),
         {{"Events.Fetch", unset("21 2 77 3 6 6", "Meeting")}}},
        {"MovePrepareUnknown", prepare, unprepared<MoveEvents>(1), 1, unset("21 2 77 0 0 0")},
        {"MoveSingle", execute, move(3, 11), 2, inspection("11 0 77 2 5 9")},
        {"MoveAll", execute, move(3, 21, true), 1, meeting("21 0 77 3 6 9")},
        {"MoveOne", execute, move(3, 21), 3, meeting("21 0 77 3 6 9")},
        {"MoveOccurrence", execute, move(3, 21, false, 2), 2, meeting("21 2 77 3 6 9")},
        {"Copy",
         execute,
         move(4, 21, false, 2),
         2,
         meeting("21 2 77 3 6 9"),
         {{"Events.Add", meeting("100 0 77 3 6 9")}}},
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
            const HRESULT number = (command.get()->*GetParam().method)(&outcome.result);
            outcome.error = errorOf(number);
            outcome.calls = data.takeCalls();
            outcome.operands = operandsOf(command);
        }
        EXPECT_EQ(references(data.root.get()), 1U);
        EXPECT_FALSE(data.hasSubscribers());
        EXPECT_EQ(data.rulesAlive, 0);
        return outcome;
    }
};

} // namespace

TEST_P(ActivityFailureTests, WithoutAFailureAllCallsAreMade)
{
    const Outcome whole = run();
    EXPECT_EQ(whole.error.number, S_OK);
    EXPECT_EQ(whole.calls.size(), GetParam().calls) << testing::PrintToString(whole.calls);
    const auto& changes = GetParam().changes;
    EXPECT_EQ(whole.operands, changes.empty() ? GetParam().before : changes.back().operands);
}

TEST_P(ActivityFailureTests, AFailingDataLayerCallReachesTheCallerUnchanged)
{
    const Outcome whole = run();
    std::map<std::string, int> made;
    std::string operands = GetParam().before;
    auto next = GetParam().changes.begin();
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
        EXPECT_EQ(failed.operands, operands);
        if (next != GetParam().changes.end() && next->call == failing)
            operands = (next++)->operands;
    }
    EXPECT_EQ(next, GetParam().changes.end());
}

TEST_P(ActivityFailureTests, APreparationSucceedsOnceTheCauseIsGone)
{
    RecordingData data;
    fillWithActivities(data);
    const auto command = GetParam().arrange(data);
    for (const char* failing :
         {"Root.EventLinks", "Root.Events", "Events.Fetch", "EventLinks.Load", "Events.IsException"})
    {
        data.fail(failing, locked);
        VARIANT_BOOL result = VARIANT_TRUE;
        const HRESULT outcome = command->Prepare(&result);
        EXPECT_EQ(SUCCEEDED(outcome), result != VARIANT_FALSE);
        data.failures.clear();
        SetErrorInfo(0, nullptr);
    }
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(command->Prepare(&result), S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
}

INSTANTIATE_TEST_SUITE_P(EachCall, ActivityFailureTests, testing::ValuesIn(scenarios()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace korvane::test
