// Whichever allocation of an activity command fails, the caller is told, no further call is made, and nothing is held.
#include "tests/activities/ActivityFixture.h"
#include "tests/support/Allocation.h"
#include "tests/support/ComRules.h"

#include <KorvaneDlg.h>

#include <algorithm>

namespace korvane::test
{

namespace
{

constexpr int moreThanEnough = 500;

struct Case
{
    const char* name;
    const CLSID& classId;
    long operation;
    long eventId;
    bool executes;
};

// Deletions, changes, moves and copies ask for no memory of their own, and are not here.
const Case cases[] = {
    {"EditPrepareAdd", __uuidof(::EditEvents), 1, 0, false},
    {"EditPrepareChange", __uuidof(::EditEvents), 3, 20, false},
    {"EditAdd", __uuidof(::EditEvents), 1, 0, true},
    {"EditBadNumber", __uuidof(::EditEvents), 7, 20, true},
    {"MovePrepare", __uuidof(::MoveEvents), 3, 20, false},
};

class ActivityAllocationTests : public testing::TestWithParam<Case>
{
protected:
    struct Outcome
    {
        HRESULT number = S_OK;
        bool refused = false;
        std::vector<std::string> calls;
        HRESULT secondNumber = S_OK;
    };

    /// Runs the case, with the n-th allocation failing, and then once more with enough memory.
    static Outcome run(int failing)
    {
        RecordingData data;
        fillWithActivities(data);
        data.event(20)->rule = Rule{2, 1, 10, 3};
        Outcome outcome;
        {
            const auto command = create<IAppCommand>(GetParam().classId);
            let(command, L"Root", Variant(data.root.as<IDispatch>()));
            let(command, L"EventID", Variant(GetParam().eventId));
            let(command, L"N0", Variant(5L));
            call(command, &IAppCommand::put_Operation, GetParam().operation);
            VARIANT_BOOL result = VARIANT_FALSE;
            if (GetParam().executes)
                call(command, &IAppCommand::Prepare, &result);
            data.takeCalls();

            const auto method = GetParam().executes ? &IAppCommand::Execute : &IAppCommand::Prepare;
            FailingAllocation allocation(failing);
            outcome.number = (command.get()->*method)(&result);
            allocation.end();
            outcome.refused = allocation.hasFailed();
            EXPECT_TRUE(SUCCEEDED(outcome.number) || result == VARIANT_FALSE);
            outcome.calls = data.takeCalls();
            SetErrorInfo(0, nullptr);
            outcome.secondNumber = (command.get()->*method)(&result);
            SetErrorInfo(0, nullptr);
        }
        EXPECT_EQ(references(data.root.get()), 1U);
        EXPECT_FALSE(data.hasSubscribers());
        EXPECT_EQ(data.rulesAlive, 0);
        return outcome;
    }
};

} // namespace

TEST_P(ActivityAllocationTests, AFailingAllocationIsToldAndTheNextAttemptSucceeds)
{
    const Outcome whole = run(0);
    const bool bad = GetParam().operation == 7;
    EXPECT_EQ(whole.number, bad ? static_cast<HRESULT>(0x80040001) : S_OK);
    for (int failing = 1; failing < moreThanEnough; ++failing)
    {
        SCOPED_TRACE("allocation " + std::to_string(failing));
        const Outcome outcome = run(failing);
        if (!outcome.refused)
        {
            EXPECT_EQ(outcome.number, whole.number);
            EXPECT_EQ(outcome.calls, whole.calls);
            EXPECT_GT(failing, 1) << "nothing was ever allocated";
            RecordProperty("allocations", failing - 1);
            return;
        }
        // Where only the description of a failure had no memory, the failure itself stays what it is.
        EXPECT_TRUE(outcome.number == E_OUTOFMEMORY || outcome.number == whole.number)
            << std::hex << outcome.number;
        ASSERT_LE(outcome.calls.size(), whole.calls.size());
        EXPECT_TRUE(std::equal(outcome.calls.begin(), outcome.calls.end(), whole.calls.begin()))
            << testing::PrintToString(outcome.calls);
        if (SUCCEEDED(outcome.number))
        {
            EXPECT_EQ(outcome.calls, whole.calls);
        }
        EXPECT_EQ(outcome.secondNumber, bad ? whole.number : S_OK);
    }
    ADD_FAILURE() << "allocations never end";
}

INSTANTIATE_TEST_SUITE_P(EachCase, ActivityAllocationTests, testing::ValuesIn(cases),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace korvane::test
