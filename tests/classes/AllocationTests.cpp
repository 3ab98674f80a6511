// Whichever allocation of the library fails, the caller is told, nothing is half done, and the next attempt succeeds.
#include "tests/classes/Cases.h"
#include "tests/support/Allocation.h"
#include "tests/support/ComRules.h"
#include "tests/support/Leaks.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

using Extent = FailingAllocation::Extent;
using testing::IsEmpty;

constexpr int moreThanEnough = 5000;

std::string nameOf(Extent extent)
{
    return extent == Extent::one ? "One" : "Onwards";
}

/// Calls the body with 1, 2, ... until it says that no allocation has failed.
template <class Body> int untilNoneFails(Body body)
{
    for (int failing = 1; failing < moreThanEnough; ++failing)
        if (!body(failing))
            return failing - 1;
    ADD_FAILURE() << "allocations never end";
    return 0;
}

/// One dialog, from its creation to its end.
class Round
{
public:
    Round(DialogOnCase& dialog, int failing, Extent extent) : dialog_(dialog)
    {
        dialog.renew();
        before_ = dialog.operands();
        dialog.place();
        FailingAllocation allocation(failing, extent);
        outcome_ = dialog.container.dialog->get_Ready(&ready_);
        allocation.end();
        refused_ = allocation.refused();
        outcome_ = dialog.failureOfReady(outcome_, ready()).number;
    }
    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;
    ~Round()
    {
        dialog_.end();
        // What the library keeps for later use goes now, so that each Ready has to ask for all of it.
        EXPECT_EQ(canUnload(), S_OK);
    }

    bool hasFailed() const { return !refused_.empty(); }
    const std::string& refused() const { return refused_; }
    HRESULT outcome() const { return outcome_; }
    bool ready() const { return ready_ != VARIANT_FALSE; }
    const std::string& before() const { return before_; }

private:
    DialogOnCase& dialog_;
    std::string before_;
    std::string refused_;
    HRESULT outcome_ = E_UNEXPECTED;
    VARIANT_BOOL ready_ = VARIANT_FALSE;
};

class DialogAllocationTests : public testing::TestWithParam<std::tuple<DialogCase, Extent>>,
                              public DialogOnCase
{
protected:
    DialogAllocationTests() : DialogOnCase(std::get<DialogCase>(GetParam())) {}

    static Extent extent() { return std::get<Extent>(GetParam()); }

    /// What is seen of the data.
    std::vector<std::string> shownData() const { return lookOf(container.dialogWindow(), false); }
};

class ClassAllocationTests : public testing::TestWithParam<std::tuple<CLSID, Extent>>
{
};

struct Tested
{
    CommandCase command;
    CommandUse use;
    bool executes;
    Extent extent;

    friend void PrintTo(const Tested& tested, std::ostream* stream) { *stream << tested.use.name; }
};

class CommandAllocationTests : public testing::TestWithParam<Tested>
{
protected:
    struct Outcome
    {
        HRESULT number = S_OK;
        bool refused = false;
        std::vector<std::string> calls;
        std::string before;
        std::string after;
        HRESULT secondNumber = S_OK;
    };

    /// Runs the command, with the n-th allocation failing, and then once more with enough memory.
    static Outcome run(int failing)
    {
        const auto& [tested, use, executes, extent] = GetParam();
        RecordingData data;
        tested.fill(data);
        Outcome outcome;
        const auto command = makeCommand(tested.classId, data, use.operation, use.operands);
        VARIANT_BOOL result = VARIANT_FALSE;
        if (executes)
            call(command, &IAppCommand::Prepare, &result);
        data.takeCalls();
        outcome.before = operandsOf(tested, command);

        const auto method = executes ? &IAppCommand::Execute : &IAppCommand::Prepare;
        FailingAllocation allocation(failing, extent);
        outcome.number = (command.get()->*method)(&result);
        allocation.end();
        outcome.refused = allocation.hasFailed();
        EXPECT_TRUE(SUCCEEDED(outcome.number) || result == VARIANT_FALSE);
        outcome.calls = data.takeCalls();
        outcome.after = operandsOf(tested, command);
        outcome.secondNumber = (command.get()->*method)(&result);
        SetErrorInfo(0, nullptr);
        return outcome;
    }
};

std::vector<Tested> commandUses()
{
    std::vector<Tested> all;
    for (const CommandCase& command : commandCases())
    {
        auto uses = command.uses;
        uses.push_back({"Unknown", command.unknownOperations.front(), uses.back().operands});
        for (const CommandUse& use : uses)
            for (const bool executes : {false, true})
                for (const Extent extent : {Extent::one, Extent::onwards})
                    all.push_back({command, use, executes, extent});
    }
    return all;
}

} // namespace

TEST_P(CommandAllocationTests, AFailingAllocationIsToldAndTheNextAttemptSucceeds)
{
    const Outcome whole = run(0);
    const int made = untilNoneFails([&](int failing) {
        SCOPED_TRACE("allocation " + std::to_string(failing));
        const Outcome outcome = run(failing);
        if (!outcome.refused)
        {
            EXPECT_EQ(outcome.number, whole.number);
            EXPECT_EQ(outcome.calls, whole.calls);
            return false;
        }
        // Where only the description of a failure had no memory, the failure itself stays what it is.
        EXPECT_TRUE(outcome.number == E_OUTOFMEMORY || outcome.number == whole.number)
            << std::hex << outcome.number;
        EXPECT_TRUE(isStartOf(outcome.calls, whole.calls)) << testing::PrintToString(outcome.calls);
        if (SUCCEEDED(outcome.number))
        {
            EXPECT_EQ(outcome.calls, whole.calls);
        }
        else if (outcome.calls.empty())
        {
            EXPECT_EQ(outcome.after, outcome.before);
        }
        EXPECT_EQ(outcome.secondNumber, whole.number);
        return true;
    });
    RecordProperty("allocations", made);
}

INSTANTIATE_TEST_SUITE_P(EveryUse, CommandAllocationTests, testing::ValuesIn(commandUses()),
                         [](const auto& each) {
                             const Tested& tested = each.param;
                             return tested.command.name + (tested.executes ? "Execute" : "Prepare") +
                                    tested.use.name + nameOf(tested.extent);
                         });

TEST_P(ClassAllocationTests, AnObjectIsMadeOrRefused)
{
    const auto [classId, extent] = GetParam();
    untilNoneFails([&, classId = classId, extent = extent](int failing) {
        FailingAllocation allocation(failing, extent);
        ComPtr<IUnknown> made;
        const HRESULT outcome = create(classId, IID_IUnknown, made.putVoid());
        allocation.end();
        const bool failed = allocation.hasFailed();
        EXPECT_EQ(outcome, failed ? E_OUTOFMEMORY : S_OK) << failing << ' ' << allocation.refused();
        EXPECT_EQ(static_cast<bool>(made), !failed);
        made.reset();
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(canUnload(), S_OK);
        return failed;
    });
}

std::vector<CLSID> classes()
{
    std::vector<CLSID> all;
    for (const PublicClass& each : publicClasses())
        all.push_back(each.id);
    return all;
}

INSTANTIATE_TEST_SUITE_P(EveryClass, ClassAllocationTests,
                         testing::Combine(testing::ValuesIn(classes()),
                                          testing::Values(Extent::one, Extent::onwards)));

TEST_P(DialogAllocationTests, ReadyFailsAndSucceedsTheNextTime)
{
    {
        const Round first(*this, 0, extent()); // brings what the runtime needs for a thread's exceptions
    }
    std::vector<std::string> whole;
    std::vector<std::string> look;
    std::vector<std::string> held;
    std::string read;
    {
        const Round round(*this, 0, extent());
        ASSERT_EQ(round.outcome(), S_OK);
        whole = stepsOf(data);
        look = this->look();
        held = shownData();
        read = operands();
    }
    int leftAsDesigned = 0;
    const int made = untilNoneFails([&](int failing) {
        const Round round(*this, failing, extent());
        SCOPED_TRACE("allocation " + std::to_string(failing) + ", " + round.refused());
        const auto steps = stepsOf(data);
        EXPECT_EQ(data.openScopes, 0);
        EXPECT_THAT(container.errors, IsEmpty());
        EXPECT_EQ(round.ready(), round.outcome() == S_OK);
        if (round.outcome() == S_OK)
        {
            // Only what is optional, a caption for one, may have been left out: the dialog itself is complete.
            EXPECT_EQ(steps, whole);
            EXPECT_EQ(shownData(), held);
            EXPECT_EQ(operands(), read);
            ++leftAsDesigned;
        }
        else
        {
            EXPECT_EQ(round.outcome(), E_OUTOFMEMORY) << std::hex << round.outcome();
            EXPECT_TRUE(isStartOf(steps, whole)) << testing::PrintToString(steps);
            EXPECT_THAT(operands(), testing::AnyOf(round.before(), read));
        }
        if (!round.hasFailed())
        {
            EXPECT_EQ(round.outcome(), S_OK);
            return false;
        }
        EXPECT_TRUE(container.ready());
        EXPECT_EQ(stepsOf(data), whole);
        EXPECT_EQ(this->look(), look);
        container.site->activateUi();
        container.pump();
        confirm();
        EXPECT_EQ(container.done, tested.doneAfterOk());
        EXPECT_THAT(container.errors, IsEmpty());
        return true;
    });
    EXPECT_GT(made, 0) << "nothing was ever allocated";
    RecordProperty("allocations", made);
    RecordProperty("leftAsDesigned", leftAsDesigned);
}

TEST_P(DialogAllocationTests, AFailedReadyLeavesNothingBehind)
{
    auto& watch = LeakWatch::instance();
    for (int round = 0; round < 3; ++round)
        Round(*this, round,
              extent()); // the first exception of a thread brings blocks that stay with the thread
    const Living before = watch.living();
    EXPECT_FALSE(before.objects);
    untilNoneFails([&](int failing) {
        const bool failed = Round(*this, failing, extent()).hasFailed();
        Living after = watch.living();
        after.heapBlocks =
            before.heapBlocks; // the platform's own blocks differ with the way that a call takes
        EXPECT_EQ(after, before) << "allocation " << failing;
        return failed;
    });
    EXPECT_FALSE(data.hasSubscribers());
    EXPECT_EQ(data.rulesAlive, 0);
}

INSTANTIATE_TEST_SUITE_P(EveryDialog, DialogAllocationTests,
                         testing::Combine(testing::ValuesIn(dialogCases()),
                                          testing::Values(Extent::one, Extent::onwards)),
                         [](const auto& each) {
                             return std::get<DialogCase>(each.param).name +
                                    nameOf(std::get<Extent>(each.param));
                         });

} // namespace korvane::test
