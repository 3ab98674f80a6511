// Whichever allocation of the library fails, the caller is told, nothing is half done, and the next attempt succeeds.
#include "framework/com/Variant.h"
#include "tests/support/AllocationCycles.h"

#include <gmock/gmock.h>

namespace korvane::test
{

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
    void SetUp() override { renew(); }

    /// A command with the operands that a host sets.
    void renew()
    {
        data.groups = {{1, L"All"}, {9, L"Vans", 5}, {4, L"Drivers", 7}};
        data.nextId = 100;
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
    static std::string operandsOf(const ComPtr<IAppCommand>& command)
    {
        Variant id;
        Variant name;
        call(command, &IAppCommand::get_Operand, Bstr(L"GroupID").get(), id.put());
        call(command, &IAppCommand::get_Operand, Bstr(L"GroupName").get(), name.put());
        return std::to_string(toLong(id.get())) + ' ' + quoted(toText(name.get()).view());
    }

    ScarceDialog dialog()
    {
        command.reset();
        return {.dialogClass = __uuidof(::ctlEditGroups),
                .data = data,
                .container = container,
                .renew =
                    [this] {
                        renew();
                        return std::move(command);
                    },
                .operands = operandsOf,
                .look =
                    [this] {
                        auto look = items(container.control(L"ListBox"));
                        look.push_back(Container::text(container.control(L"Edit")));
                        return look;
                    },
                .confirm =
                    [this] {
                        EXPECT_TRUE(container.button(L"OK"));
                        container.site->activateUi();
                        container.press(VK_RETURN);
                    }};
    }

    /// Runs a method of the command while the n-th allocation fails, for every n, until none does.
    template <class Method> void failEach(Method method, bool changesNothing)
    {
        VARIANT_BOOL result = VARIANT_FALSE;
        ASSERT_EQ((command.get()->*method)(&result), S_OK);
        const auto whole = stepsOf(data);
        for (int failing = 1; failing < moreThanEnough; ++failing)
        {
            renew();
            const std::string before = operandsOf(command);
            FailingAllocation allocation(failing, GetParam().extent);
            const HRESULT outcome = (command.get()->*method)(&result);
            allocation.end();
            SCOPED_TRACE("allocation " + std::to_string(failing) + ", " + allocation.refused());

            const auto made = stepsOf(data);
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
                EXPECT_EQ(operandsOf(command), before);
            }
            EXPECT_EQ((command.get()->*method)(&result), S_OK);
            stepsOf(data);
        }
        ADD_FAILURE() << "allocations never end";
    }

    RecordingData data;
    Container container;
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
        expectMadeOrRefused(id, GetParam().extent);
}

TEST_P(AllocationFailureTests, ReadyFailsAndSucceedsTheNextTime)
{
    expectReadyFailsAndSucceedsTheNextTime(dialog(), GetParam().extent);
}

TEST_P(AllocationFailureTests, AFailedReadyLeavesNothingBehind)
{
    expectFailedReadyLeavesNothingBehind(dialog(), GetParam().extent);
}

INSTANTIATE_TEST_SUITE_P(
    EachOperation, AllocationFailureTests,
    testing::Values(Case{1, FailingAllocation::Extent::one}, Case{2, FailingAllocation::Extent::one},
                    Case{3, FailingAllocation::Extent::one}, Case{1, FailingAllocation::Extent::onwards},
                    Case{2, FailingAllocation::Extent::onwards}, Case{3, FailingAllocation::Extent::onwards}),
    caseName);

} // namespace korvane::test
