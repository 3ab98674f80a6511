// What the data layer announces to an activity dialog that could not get ready.
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

} // namespace korvane::test
