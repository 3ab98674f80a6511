#include "tests/demo/datalayer/ChildProcess.h"
#include "tests/demo/datalayer/DataLayer.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Crashes : public DataLayerTest
{
protected:
    std::string content() const
    {
        std::ifstream stream(std::filesystem::path(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::wstring journal = file + L"-journal";
};

} // namespace

TEST_F(Crashes, InTheMiddleOfAWriteLeaveTheOldState)
{
    add(openGroups(), L"Staff");
    // A write that goes on for long and is larger than what the database keeps in memory, so that half of it
    // stands in the file when its process dies.
    sql("CREATE TABLE ballast (text TEXT);"
        "CREATE VIEW numbers AS WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i "
        "FROM n;"
        "INSERT INTO ballast SELECT 'before ' || hex(zeroblob(500)) FROM numbers LIMIT 8000;"
        "CREATE TRIGGER slow AFTER INSERT ON groups BEGIN"
        "  UPDATE groups SET name = name || ' halfway';"
        "  UPDATE ballast SET text = 'halfway ' || substr(text, 8);"
        "  INSERT INTO ballast SELECT 'more ' || hex(zeroblob(500)) FROM numbers LIMIT 300000;"
        "END");
    const auto size = std::filesystem::file_size(file);

    auto child = ChildProcess::adding(file, L"Rooms");
    while (child.isRunning() && std::filesystem::file_size(file) < size + 4'000'000)
        Sleep(1);
    ASSERT_TRUE(child.isRunning()) << "the write was over too soon";
    child.kill();
    ASSERT_TRUE(std::filesystem::exists(journal));
    ASSERT_NE(std::string::npos, content().find("halfway 0000"));

    const auto groups = openGroups();
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
    EXPECT_FALSE(std::filesystem::exists(journal));
    EXPECT_EQ(size, std::filesystem::file_size(file));
    EXPECT_EQ(L"ok", sqlText("PRAGMA integrity_check"));
    EXPECT_EQ(L"8000", sqlText("SELECT count(*) FROM ballast WHERE text LIKE 'before %'"));
    EXPECT_EQ(L"8000", sqlText("SELECT count(*) FROM ballast"));

    sql("DROP TRIGGER slow");
    add(groups, L"Rooms");
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Rooms"}), names(groups));
}

TEST_F(Crashes, WithALockHeldReleaseIt)
{
    const auto groups = openGroups();
    auto child = ChildProcess::locking(file, L"BEGIN EXCLUSIVE");
    child.kill();
    add(groups, L"Staff");
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
}

TEST_F(Crashes, OnFirstUseLeaveAFileThatIsStillNew)
{
    // What a process leaves that dies before its first commit.
    auto child = ChildProcess::locking(file, L"BEGIN EXCLUSIVE");
    child.kill();
    ASSERT_TRUE(std::filesystem::exists(file));
    EXPECT_EQ(3u, load(openGroups()).size());
}
