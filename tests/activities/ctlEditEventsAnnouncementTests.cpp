// What the data layer announces to an activity dialog after its Ready, and what it is asked meanwhile.
#include "tests/activities/ActivityDialog.h"
#include "tests/support/Allocation.h"

namespace korvane::test
{

/// The data layer may announce something at any time, also to a dialog that could not get ready.
TEST_F(ActivityDialog, WhatIsAnnouncedAfterAFailedReadyIsShownOnce)
{
    int refused = 0;
    for (bool failed = true; failed; ++refused)
    {
        command = create<IAppCommand>(__uuidof(::EditEvents));
        arrange(1);
        container.place(__uuidof(::ctlEditEvents), command.get());
        FailingAllocation allocation(refused + 1);
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
            EXPECT_EQ(treeLines().size(), hearsNames ? 7U : 2U) << testing::PrintToString(treeLines());
            EXPECT_THAT(container.errors, testing::IsEmpty());
            data.announceClear(EventsOf::names);
            EXPECT_EQ(treeLines().size(), 2U);
        }
        container.close();
        SetErrorInfo(0, nullptr);
    }
    EXPECT_GT(refused, 1);
}

TEST_F(ActivityDialog, WhatIsAnnouncedLaterIsShownToo)
{
    showed(1);
    const auto lines = treeLines().size();
    const LRESULT offered = SendMessageW(types(), CB_GETCOUNT, 0, 0);
    data.announceGroup({6, L"Cranes", 3});
    data.announceName({30, L"Dora", 6});
    data.announceType({9, L"Holiday", 0x00FF00});
    EXPECT_EQ(treeLines().size(), lines + 2);
    EXPECT_TRUE(node(L"Dora", L"Cranes"));
    EXPECT_EQ(SendMessageW(types(), CB_GETCOUNT, 0, 0), offered + 1);
    toggleByKey(node(L"Dora", L"Cranes"));
    EXPECT_EQ(number(L"N0"), 30);
    data.announceClear(EventsOf::types);
    EXPECT_EQ(SendMessageW(types(), CB_GETCOUNT, 0, 0), 0);
    EXPECT_THAT(container.errors, testing::IsEmpty());
}

TEST_F(ActivityDialog, AResourceWithoutAGroupThatIsShownStandsInTheCommandsGroup)
{
    data.names.push_back({30, L"Dora", Name::withoutGroup});
    data.names.push_back({31, L"Emil", 99});
    data.names.push_back({32, L"Fritz", 1});                  // of a group that is never shown
    data.names.insert(data.names.begin(), {20, L"Van 1", 1}); // of that one too
    showed(1);
    data.announceName({33, L"Gerda", 98});
    for (const wchar_t* name : {L"Dora", L"Emil", L"Fritz", L"Gerda"})
        EXPECT_TRUE(node(name, L"Drivers")) << name;
    EXPECT_FALSE(node(L"Dora", L"Vans"));
    EXPECT_TRUE(node(L"Van 1", L"Vans"));
    EXPECT_FALSE(node(L"Van 1", L"Drivers"));
    toggleByKey(node(L"Dora", L"Drivers"));
    EXPECT_EQ(number(L"N0"), 30);
}

TEST_F(ActivityDialog, TheQuestionComesBeforeTheScopeIsOpened)
{
    questions.onAsked = [this] {
        EXPECT_FALSE(data.calls.empty());
        EXPECT_THAT(data.calls, testing::Each(testing::Not(testing::StartsWith("Root.OpenScope"))));
    };
    showed(3, 3);
    EXPECT_EQ(questions.asked.size(), 1U);
}

} // namespace korvane::test
