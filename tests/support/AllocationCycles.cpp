#include "tests/support/AllocationCycles.h"

#include "tests/support/Leaks.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace korvane::test
{

namespace
{

constexpr int moreThanEnough = 5000;

BOOL CALLBACK count(HWND, LPARAM counter)
{
    ++*reinterpret_cast<long*>(counter);
    return TRUE;
}

long windowsOn(HWND parent)
{
    long windows = 0;
    EnumChildWindows(parent, count, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

/// One dialog, from its creation to its end.
class Round
{
public:
    Round(const ScarceDialog& dialog, int failing, FailingAllocation::Extent extent)
        : dialog_(dialog), command_(dialog.renew()), before_(dialog.operands(command_))
    {
        dialog.container.place(dialog.dialogClass, command_.get());
        FailingAllocation allocation(failing, extent);
        outcome_ = dialog.container.dialog->get_Ready(&ready_);
        allocation.end();
        refused_ = allocation.refused();
    }
    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;
    ~Round()
    {
        dialog_.container.close();
        dialog_.container.done.clear();
        dialog_.container.errors.clear();
        dialog_.data.takeCalls();
        command_.reset();
        SetErrorInfo(0, nullptr);
        // What the library keeps for later use goes now, so that each Ready has to ask for all of it.
        EXPECT_EQ(canUnload(), S_OK);
    }

    bool hasFailed() const { return !refused_.empty(); }
    const std::string& refused() const { return refused_; }
    HRESULT outcome() const { return outcome_; }
    bool ready() const { return ready_ != VARIANT_FALSE; }
    const std::string& before() const { return before_; }
    std::string operands() const { return dialog_.operands(command_); }

private:
    const ScarceDialog& dialog_;
    ComPtr<IAppCommand> command_;
    std::string before_;
    std::string refused_;
    HRESULT outcome_ = E_UNEXPECTED;
    VARIANT_BOOL ready_ = VARIANT_FALSE;
};

} // namespace

void expectReadyFailsAndSucceedsTheNextTime(const ScarceDialog& dialog, FailingAllocation::Extent extent)
{
    std::vector<std::string> whole;
    std::vector<std::wstring> look;
    std::string read;
    long windows = 0;
    int leftAsDesigned = 0;
    for (int failing = 0; failing < moreThanEnough; ++failing)
    {
        const Round round(dialog, failing, extent);
        SCOPED_TRACE("allocation " + std::to_string(failing) + ", " + round.refused());
        const auto made = stepsOf(dialog.data);
        EXPECT_EQ(dialog.data.openScopes, 0);
        EXPECT_THAT(dialog.container.errors, testing::IsEmpty());
        EXPECT_EQ(round.ready(), round.outcome() == S_OK);
        if (failing == 0)
        {
            ASSERT_EQ(round.outcome(), S_OK);
            whole = made;
            look = dialog.look();
            windows = windowsOn(dialog.container.dialogWindow());
            read = round.operands();
            continue;
        }
        if (round.outcome() == S_OK)
        {
            // Only what is optional may have been left out: the dialog itself is complete.
            EXPECT_EQ(made, whole);
            EXPECT_EQ(dialog.look(), look);
            EXPECT_EQ(round.operands(), read);
        }
        else
        {
            EXPECT_EQ(round.outcome(), E_OUTOFMEMORY) << std::hex << round.outcome();
            EXPECT_TRUE(isStartOf(made, whole)) << testing::PrintToString(made);
            EXPECT_THAT(round.operands(), testing::AnyOf(round.before(), read));
        }
        if (!round.hasFailed())
        {
            EXPECT_EQ(round.outcome(), S_OK);
            EXPECT_GT(failing, 1) << "nothing was ever allocated";
            testing::Test::RecordProperty("allocations", failing - 1);
            testing::Test::RecordProperty("leftAsDesigned", leftAsDesigned);
            return;
        }
        if (round.outcome() == S_OK)
            ++leftAsDesigned;

        EXPECT_TRUE(dialog.container.ready());
        EXPECT_EQ(stepsOf(dialog.data), whole);
        EXPECT_EQ(dialog.look(), look);
        EXPECT_EQ(windowsOn(dialog.container.dialogWindow()), windows);
        dialog.confirm();
        EXPECT_THAT(dialog.container.done, testing::ElementsAre(false));
        EXPECT_THAT(dialog.container.errors, testing::IsEmpty());
    }
    ADD_FAILURE() << "allocations never end";
}

void expectFailedReadyLeavesNothingBehind(const ScarceDialog& dialog, FailingAllocation::Extent extent)
{
    ASSERT_TRUE(LeakWatch::seesEveryString()) << "run this with OANOCACHE=1 in the environment";
    auto& watch = LeakWatch::instance();
    const auto readyWith = [&](int failing) { return Round(dialog, failing, extent).hasFailed(); };
    for (int round = 0; round < 3; ++round)
        readyWith(round); // the first exception of a thread brings blocks that stay with the thread
    const Living before = watch.living();
    EXPECT_FALSE(before.objects);
    bool failed = true;
    for (int failing = 1; failed && failing < moreThanEnough; ++failing)
    {
        failed = readyWith(failing);
        Living after = watch.living();
        after.heapBlocks =
            before.heapBlocks; // the platform's own blocks differ with the way that a call takes
        EXPECT_EQ(after, before) << "allocation " << failing;
    }
    EXPECT_FALSE(failed) << "allocations never end";
}

void expectMadeOrRefused(const CLSID& classId, FailingAllocation::Extent extent)
{
    bool failed = true;
    for (int failing = 1; failed && failing < moreThanEnough; ++failing)
    {
        FailingAllocation allocation(failing, extent);
        ComPtr<IUnknown> made;
        const HRESULT outcome = create(classId, IID_IUnknown, made.putVoid());
        allocation.end();
        failed = allocation.hasFailed();
        EXPECT_EQ(outcome, failed ? E_OUTOFMEMORY : S_OK) << failing << ' ' << allocation.refused();
        EXPECT_EQ(static_cast<bool>(made), !failed);
        made.reset();
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(canUnload(), S_OK);
    }
    EXPECT_FALSE(failed) << "allocations never end";
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

} // namespace korvane::test
