// Whichever allocation of the library fails, the caller is told, nothing is half done, and the next attempt succeeds.
#include "framework/com/Variant.h"
#include "tests/support/Allocation.h"
#include "tests/support/Container.h"
#include "tests/support/Leaks.h"
#include "tests/support/RecordingData.h"

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr int moreThanEnough = 2000;

struct Case
{
    long operation;
    FailingAllocation::Extent extent;
};

class AllocationFailureTests : public testing::TestWithParam<Case>
{
protected:
    void SetUp() override
    {
        data.groups = {{1, L"All"}, {9, L"Vans", 5}, {4, L"Drivers", 7}};
        renew();
    }

    /// A command with the operands that a host sets.
    void renew()
    {
        command = create<IAppCommand>(__uuidof(::EditGroups));
        call(command, &IAppCommand::put_Operation, GetParam().operation);
        let(L"Root", Variant(data.root.as<IDispatch>()));
        let(L"GroupID", Variant(4L));
        let(L"GroupName", Variant(Bstr(L"before")));
    }

    void let(const wchar_t* name, const Variant& value)
    {
        call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
    }

    /// The operands as one text.
    std::string operands() const
    {
        Variant id;
        Variant name;
        call(command, &IAppCommand::get_Operand, Bstr(L"GroupID").get(), id.put());
        call(command, &IAppCommand::get_Operand, Bstr(L"GroupName").get(), name.put());
        return std::to_string(toLong(id.get())) + ' ' + quoted(toText(name.get()).view());
    }

    /// What was called, without the closing of scopes, which follows a failure too.
    std::vector<std::string> steps()
    {
        auto calls = data.takeCalls();
        std::erase(calls, "Scope.Close(0, 0)");
        return calls;
    }

    static bool isStartOf(const std::vector<std::string>& part, const std::vector<std::string>& whole)
    {
        return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
    }

    /// Runs a method of the command while the n-th allocation fails, for every n, until none does.
    template <class Method> void failEach(Method method, bool changesNothing)
    {
        VARIANT_BOOL result = VARIANT_FALSE;
        ASSERT_EQ((command.get()->*method)(&result), S_OK);
        const auto whole = steps();
        for (int failing = 1; failing < moreThanEnough; ++failing)
        {
            renew();
            data.nextId = 100;
            const std::string before = operands();
            FailingAllocation allocation(failing, GetParam().extent);
            const HRESULT outcome = (command.get()->*method)(&result);
            allocation.end();
            SCOPED_TRACE("allocation " + std::to_string(failing) + ", " + allocation.refused());

            const auto made = steps();
            EXPECT_EQ(data.openScopes, 0);
            if (!allocation.hasFailed())
            {
                EXPECT_EQ(outcome, S_OK);
                EXPECT_EQ(made, whole);
                return;
            }
            EXPECT_TRUE(isStartOf(made, whole)) << testing::PrintToString(made);
            EXPECT_TRUE(outcome == E_OUTOFMEMORY || outcome == S_OK) << std::hex << outcome;
            if (FAILED(outcome) && changesNothing)
            {
                EXPECT_EQ(operands(), before);
            }
            EXPECT_EQ((command.get()->*method)(&result), S_OK);
            steps();
        }
        ADD_FAILURE() << "allocations never end";
    }

    RecordingData data;
    ComPtr<IAppCommand> command;
};

std::string caseName(const testing::TestParamInfo<Case>& info)
{
    static constexpr const char* names[] = {"Unknown", "Add", "Delete", "Change"};
    return std::string(names[info.param.operation]) +
           (info.param.extent == FailingAllocation::Extent::one ? "One" : "Onwards");
}

} // namespace

TEST_P(AllocationFailureTests, PrepareFailsWithoutAChange)
{
    failEach(&IAppCommand::Prepare, true);
}

TEST_P(AllocationFailureTests, ExecuteFailsWithoutAChange)
{
    failEach(&IAppCommand::Execute, true);
}

TEST_P(AllocationFailureTests, TheClassesAreMadeOrRefused)
{
    command.reset();
    for (const CLSID& id : {__uuidof(::EditGroups), __uuidof(::ctlEditGroups), __uuidof(::Resources),
                            __uuidof(::AppDialogEvents)})
    {
        bool failed = true;
        for (int failing = 1; failed && failing < moreThanEnough; ++failing)
        {
            FailingAllocation allocation(failing, GetParam().extent);
            ComPtr<IUnknown> made;
            const HRESULT outcome = create(id, IID_IUnknown, made.putVoid());
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
}

TEST_P(AllocationFailureTests, ReadyFailsAndSucceedsTheNextTime)
{
    std::vector<std::string> whole;
    int refusedWithSuccess = 0;
    for (int failing = 0; failing < moreThanEnough; ++failing)
    {
        renew();
        Container container;
        container.place(__uuidof(::ctlEditGroups), command.get());
        canUnload();
        VARIANT_BOOL ready = VARIANT_FALSE;
        FailingAllocation allocation(failing, GetParam().extent);
        const HRESULT outcome = container.dialog->get_Ready(&ready);
        allocation.end();
        SCOPED_TRACE("allocation " + std::to_string(failing) + ", " + allocation.refused());

        const auto made = steps();
        EXPECT_EQ(data.openScopes, 0);
        EXPECT_THAT(container.errors, IsEmpty());
        EXPECT_EQ(ready != VARIANT_FALSE, outcome == S_OK);
        if (failing == 0)
        {
            EXPECT_EQ(outcome, S_OK);
            whole = made;
            continue;
        }
        if (!allocation.hasFailed())
        {
            EXPECT_EQ(outcome, S_OK);
            EXPECT_EQ(made, whole);
            RecordProperty("allocations", failing - 1);
            RecordProperty("leftAsDesigned", refusedWithSuccess);
            return;
        }
        if (outcome == S_OK)
        {
            // Only what is optional may have been left out: the dialog itself is complete.
            ++refusedWithSuccess;
            EXPECT_EQ(made, whole);
        }
        else
        {
            EXPECT_EQ(outcome, E_OUTOFMEMORY);
            EXPECT_TRUE(isStartOf(made, whole)) << testing::PrintToString(made);
        }

        EXPECT_TRUE(container.ready());
        steps();
        EXPECT_TRUE(container.button(L"OK"));
        if (GetParam().operation != 1)
        {
            EXPECT_THAT(items(container.control(L"ListBox")), ElementsAre(L"Vans", L"Drivers"));
        }
        container.site->activateUi();
        container.press(VK_RETURN);
        EXPECT_THAT(container.done, ElementsAre(false));
        EXPECT_THAT(container.errors, IsEmpty());
        data.groups = {{1, L"All"}, {9, L"Vans", 5}, {4, L"Drivers", 7}};
        steps();
    }
    ADD_FAILURE() << "allocations never end";
}

TEST_P(AllocationFailureTests, AFailedReadyLeavesNothingBehind)
{
    ASSERT_TRUE(LeakWatch::seesEveryString()) << "run this with OANOCACHE=1 in the environment";
    auto& watch = LeakWatch::instance();
    const auto readyWith = [&](int failing) {
        renew();
        bool failed = false;
        {
            Container container;
            container.place(__uuidof(::ctlEditGroups), command.get());
            canUnload();
            VARIANT_BOOL ready = VARIANT_FALSE;
            FailingAllocation allocation(failing, GetParam().extent);
            container.dialog->get_Ready(&ready);
            allocation.end();
            failed = allocation.hasFailed();
        }
        command.reset();
        data.takeCalls();
        data.calls.shrink_to_fit();
        return failed;
    };
    for (int round = 0; round < 3; ++round)
        readyWith(round); // the first exception of a thread brings blocks that stay with the thread
    const Living before = watch.living();
    EXPECT_FALSE(before.objects);
    bool failed = true;
    for (int failing = 1; failed; ++failing)
    {
        failed = readyWith(failing);
        Living after = watch.living();
        after.heapBlocks =
            before.heapBlocks; // the platform's own blocks differ with the way that a call takes
        EXPECT_EQ(after, before) << "allocation " << failing;
    }
}

INSTANTIATE_TEST_SUITE_P(
    EachOperation, AllocationFailureTests,
    testing::Values(Case{1, FailingAllocation::Extent::one}, Case{2, FailingAllocation::Extent::one},
                    Case{3, FailingAllocation::Extent::one}, Case{1, FailingAllocation::Extent::onwards},
                    Case{2, FailingAllocation::Extent::onwards}, Case{3, FailingAllocation::Extent::onwards}),
    caseName);

} // namespace korvane::test
