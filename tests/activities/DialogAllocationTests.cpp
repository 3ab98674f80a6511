// Whichever allocation fails while a dialog of activities gets ready: the caller is told, nothing is written, and the
// next attempt succeeds.
#include "tests/activities/ActivityFixture.h"
#include "tests/activities/ActivityUser.h"
#include "tests/support/AllocationCycles.h"

#include <KorvaneDlg.h>

namespace korvane::test
{

namespace
{

struct Case
{
    const char* name;
    const CLSID& dialogClass;
    const CLSID& commandClass;
    long operation;
    long eventId;
    long instance = 0;

    friend void PrintTo(const Case& tested, std::ostream* stream) { *stream << tested.name; }
};

// The activity 20 is booked for several resources and repeats; 11 is for one resource, once.
const Case editCases[] = {
    {"Add", __uuidof(::ctlEditEvents), __uuidof(::EditEvents), 1, 0},
    {"Change", __uuidof(::ctlEditEvents), __uuidof(::EditEvents), 3, 20},
    {"Occurrence", __uuidof(::ctlEditEvents), __uuidof(::EditEvents), 3, 20, 3},
};
const Case moveCases[] = {
    {"Move", __uuidof(::ctlMoveEvents), __uuidof(::MoveEvents), 3, 11},
    {"MoveLinked", __uuidof(::ctlMoveEvents), __uuidof(::MoveEvents), 3, 20},
    {"Copy", __uuidof(::ctlMoveEvents), __uuidof(::MoveEvents), 4, 20},
};

using Extent = FailingAllocation::Extent;

class DialogAllocationTests : public testing::TestWithParam<std::tuple<Case, Extent>>, public ActivityUser
{
protected:
    static const Case& tested() { return std::get<Case>(GetParam()); }
    static Extent extent() { return std::get<Extent>(GetParam()); }

    /// The first object of a thread brings what the runtime needs for its exceptions.
    void SetUp() override { renew(); }

    ComPtr<IAppCommand> renew()
    {
        fillWithActivities(data);
        data.groups = {{1, L"System", 1}, {4, L"Drivers", 3}, {5, L"Vans", 3}};
        data.names = {{5, L"Anna", 4}, {6, L"Ben", 4}, {7, L"Cleo", 5}, {6, L"Ben", 5}};
        data.types = {{2, L"Service", 0x0000FF}, {3, L"Tour", 0x00FF00}};
        for (Event& event : data.events)
            if (event.link)
            {
                event.rule = Rule{2, 1, 10, 3};
                event.text = L"Meeting of the drivers"; // long enough to ask for memory
            }
        data.nextId = 100;
        questions.answerKey = 'N';

        auto command = create<IAppCommand>(tested().commandClass);
        call(command, &IAppCommand::put_Operation, tested().operation);
        let(command, L"Root", Variant(data.root.as<IDispatch>()));
        let(command, L"EventID", Variant(tested().eventId));
        let(command, L"Instance", Variant(tested().instance));
        let(command, L"GroupID", Variant(4L));
        let(command, L"N0", Variant(5L));
        let(command, L"T0", Variant(OleDate{nine + 1}));
        let(command, L"T1", Variant(OleDate{ten + 1}));
        return command;
    }

    static std::wstring stateOf(HWND control) { return IsWindowEnabled(control) ? L"enabled" : L"disabled"; }

    /// What the activity dialog shows; of the move dialog, nothing but its one line is there to be seen.
    std::vector<std::wstring> look() const
    {
        if (!tree())
            return {};
        auto look = treeLines();
        for (int index = 0; index < 2; ++index)
            look.push_back(std::to_wstring(timeOf(picker(index))));
        for (const HWND shown : {types(), textBox(), intervalBox(), countBox()})
            look.push_back(Container::text(shown));
        look.push_back(std::to_wstring(SendMessageW(types(), CB_GETCOUNT, 0, 0)));
        look.push_back(stateOf(tree()));
        for (int index = 0; const HWND button = container.control(L"Button", index); ++index)
            look.push_back(stateOf(button) + (isChecked(button) ? L", checked" : L""));
        return look;
    }

    /// The activity dialog is confirmed with the keyboard; the move dialog by itself once it has the focus.
    void confirm()
    {
        EXPECT_TRUE(tree() ? ok() : label(L"Updating database. Please wait..."));
        container.site->activateUi();
        container.pump();
        if (tree())
            container.press(VK_RETURN);
    }

    ScarceDialog dialog()
    {
        return {.dialogClass = tested().dialogClass,
                .data = data,
                .container = container,
                .renew = [this] { return renew(); },
                .operands = operandsOf,
                .look = [this] { return look(); },
                .confirm = [this] { confirm(); }};
    }

    RecordingData data;
};

std::string caseName(const testing::TestParamInfo<std::tuple<Case, Extent>>& info)
{
    return std::get<Case>(info.param).name +
           std::string(std::get<Extent>(info.param) == Extent::one ? "One" : "Onwards");
}

} // namespace

TEST_P(DialogAllocationTests, ReadyFailsAndSucceedsTheNextTime)
{
    expectReadyFailsAndSucceedsTheNextTime(dialog(), extent());
}

TEST_P(DialogAllocationTests, TheClassesAreMadeOrRefused)
{
    expectMadeOrRefused(tested().dialogClass, extent());
    expectMadeOrRefused(tested().commandClass, extent());
}

class FailedReadyLeakTests : public DialogAllocationTests
{
};

TEST_P(FailedReadyLeakTests, AFailedReadyLeavesNothingBehind)
{
    expectFailedReadyLeavesNothingBehind(dialog(), extent());
    EXPECT_FALSE(data.hasSubscribers());
    EXPECT_EQ(data.rulesAlive, 0);
}

class EditDialogAllocationTests : public DialogAllocationTests
{
};

/// The data layer may announce something at any time, also to a dialog that could not get ready.
TEST_P(EditDialogAllocationTests, WhatIsAnnouncedAfterAFailedReadyIsShownOnce)
{
    int refused = 0;
    for (bool failed = true; failed; ++refused)
    {
        const auto command = renew();
        container.place(tested().dialogClass, command.get());
        FailingAllocation allocation(refused + 1, extent());
        VARIANT_BOOL ready = VARIANT_FALSE;
        const HRESULT outcome = container.dialog->get_Ready(&ready);
        allocation.end();
        failed = allocation.hasFailed();
        SCOPED_TRACE("allocation " + std::to_string(refused + 1) + ", " + allocation.refused());
        if (FAILED(outcome) && data.hasSubscribers(EventsOf::groups))
        {
            const bool hearsNames = data.hasSubscribers(EventsOf::names);
            for (const Group& group : data.groups)
                data.announceGroup(group);
            for (const Name& name : data.names)
                data.announceName(name);
            EXPECT_EQ(treeLines().size(), hearsNames ? 6U : 2U) << testing::PrintToString(treeLines());
            EXPECT_THAT(container.errors, testing::IsEmpty());
            data.announceClear(EventsOf::names);
            EXPECT_EQ(treeLines().size(), 2U);
        }
        container.close();
        SetErrorInfo(0, nullptr);
    }
    EXPECT_GT(refused, 1);
}

INSTANTIATE_TEST_SUITE_P(Edit, DialogAllocationTests,
                         testing::Combine(testing::ValuesIn(editCases),
                                          testing::Values(Extent::one, Extent::onwards)),
                         caseName);
INSTANTIATE_TEST_SUITE_P(Move, DialogAllocationTests,
                         testing::Combine(testing::ValuesIn(moveCases),
                                          testing::Values(Extent::one, Extent::onwards)),
                         caseName);

// Those that ask for the most.
INSTANTIATE_TEST_SUITE_P(EachDialog, FailedReadyLeakTests,
                         testing::Combine(testing::Values(editCases[1], moveCases[1]),
                                          testing::Values(Extent::one, Extent::onwards)),
                         caseName);
INSTANTIATE_TEST_SUITE_P(Edit, EditDialogAllocationTests,
                         testing::Combine(testing::Values(editCases[0]), testing::Values(Extent::one)),
                         caseName);

} // namespace korvane::test
