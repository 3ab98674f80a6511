#include "demo/host/Notice.h"

#include "tests/support/Library.h"

#include <KorvaneDlg.h>
#include <gtest/gtest.h>

namespace korvane::host
{

namespace
{

TEST(Notice, TellsHowManyMessagesHaveNotBeenRead)
{
    const auto resources = korvane::test::create<IResources>(__uuidof(::Resources));
    EXPECT_EQ(messageNotice(resources, 0), L"You have no messages");
    EXPECT_EQ(messageNotice(resources, 1), L"You have one message");
    EXPECT_EQ(messageNotice(resources, 2), L"You have 2 messages");
    EXPECT_EQ(messageNotice(resources, 1234), L"You have 1234 messages");
}

TEST(Notice, LeavesAccessKeysOutOfTitles)
{
    EXPECT_EQ(withoutAccessKey(L"&Message"), L"Message");
    EXPECT_EQ(withoutAccessKey(L"Group"), L"Group");
}

TEST(Notice, StandsInTheTitleWhereThereIsSomethingToRead)
{
    EXPECT_EQ(titleFor(L"admin", 0, L"You have no messages"), L"Korvane - admin");
    EXPECT_EQ(titleFor(L"emily", 2, L"You have 2 messages"), L"Korvane - emily - You have 2 messages");
}

} // namespace

} // namespace korvane::host
