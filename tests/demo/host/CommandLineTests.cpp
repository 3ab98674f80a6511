#include "demo/host/CommandLine.h"
#include "framework/com/Boundary.h"

#include <gtest/gtest.h>

#include <vector>

namespace korvane::host
{

namespace
{

Options read(const std::vector<std::wstring>& arguments)
{
    return readOptions(arguments);
}

std::wstring problemOf(const std::vector<std::wstring>& arguments)
{
    const auto failure = attempt([&] { read(arguments); });
    return failure ? std::wstring(failure->description().view()) : L"";
}

TEST(CommandLine, AsksForNothingWhenEmpty)
{
    const Options options = read({});
    EXPECT_TRUE(options.database.empty());
    EXPECT_TRUE(options.account.empty());
    EXPECT_FALSE(options.tour());
    EXPECT_FALSE(options.empty);
    EXPECT_FALSE(options.verbose);
}

TEST(CommandLine, TakesASwitchWithoutAValue)
{
    const Options options = read({L"--empty", L"--user", L"employee"});
    EXPECT_TRUE(options.empty);
    EXPECT_FALSE(options.verbose);
    EXPECT_EQ(options.account, L"employee");
    EXPECT_TRUE(read({L"--verbose", L"--tour", L"."}).verbose);
}

TEST(CommandLine, TakesOptionsInAnyOrder)
{
    const Options options =
        read({L"--tour", L"C:\\pictures", L"--user", L"employee", L"--db", L"a b.sqlite"});
    EXPECT_EQ(options.database, L"a b.sqlite");
    EXPECT_EQ(options.account, L"employee");
    EXPECT_EQ(options.tourFolder, L"C:\\pictures");
    EXPECT_TRUE(options.tour());
}

TEST(CommandLine, RefusesWhatItDoesNotKnow)
{
    EXPECT_NE(problemOf({L"--help"}).find(L"The option --help is unknown."), std::wstring::npos);
    EXPECT_NE(problemOf({L"file.sqlite"}).find(usage), std::wstring::npos);
}

TEST(CommandLine, RefusesAnOptionWithoutItsValue)
{
    EXPECT_NE(problemOf({L"--user", L"admin", L"--db"}).find(L"The option --db needs a value."),
              std::wstring::npos);
    EXPECT_NE(problemOf({L"--db", L""}).find(L"The option --db needs a value."), std::wstring::npos);
}

} // namespace

} // namespace korvane::host
