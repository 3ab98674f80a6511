#include "tests/demo/datalayer/ActivityTest.h"
#include "tests/demo/datalayer/ChildProcess.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

template <class Base> class CrashTest : public Base
{
protected:
    using Base::file;
    using Base::sql;
    using Base::sqlText;

    /// Makes a write go on for long, and larger than what the database keeps in memory, so that half of it
    /// stands in the file when its process dies.
    void makeSlow(const std::string& event, const std::string& firstStatement)
    {
        sql("CREATE TABLE ballast (text TEXT);"
            "CREATE VIEW numbers AS WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT "
            "i "
            "FROM n;"
            "INSERT INTO ballast SELECT 'before ' || hex(zeroblob(500)) FROM numbers LIMIT 8000");
        sql(("CREATE TRIGGER slow AFTER " + event + " BEGIN " + firstStatement +
             ";"
             "  UPDATE ballast SET text = 'halfway ' || substr(text, 8);"
             "  INSERT INTO ballast SELECT 'more ' || hex(zeroblob(500)) FROM numbers LIMIT 300000;"
             "END")
                .c_str());
        size_ = std::filesystem::file_size(file);
    }

    void killHalfway(ChildProcess child) const
    {
        while (child.isRunning() && std::filesystem::file_size(file) < size_ + 4'000'000)
            Sleep(1);
        ASSERT_TRUE(child.isRunning()) << "the write was over too soon";
        child.kill();
        ASSERT_TRUE(std::filesystem::exists(journal));
        ASSERT_NE(std::string::npos, fileContent().find("halfway 0000"));
    }

    /// Expects the file as it was before the write, once it was opened.
    void expectRestored() const
    {
        EXPECT_FALSE(std::filesystem::exists(journal));
        EXPECT_EQ(size_, std::filesystem::file_size(file));
        EXPECT_EQ(L"ok", sqlText("PRAGMA integrity_check"));
        EXPECT_EQ(L"8000", sqlText("SELECT count(*) FROM ballast WHERE text LIKE 'before %'"));
        EXPECT_EQ(L"8000", sqlText("SELECT count(*) FROM ballast"));
    }

private:
    std::string fileContent() const
    {
        std::ifstream stream(std::filesystem::path(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::wstring journal = file + L"-journal";
    std::uintmax_t size_ = 0;
};

class Crashes : public CrashTest<DataLayerTest>
{
};

class CrashesOfBooking : public CrashTest<ActivityTest>
{
};

} // namespace

TEST_F(Crashes, InTheMiddleOfAWriteLeaveTheOldState)
{
    add(openGroups(), L"Staff");
    makeSlow("INSERT ON groups", "UPDATE groups SET name = name || ' halfway'");
    killHalfway(ChildProcess::adding(file, L"Rooms"));

    const auto groups = openGroups();
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
    expectRestored();

    sql("DROP TRIGGER slow");
    add(groups, L"Rooms");
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Rooms"}), names(groups));
}

TEST_F(CrashesOfBooking, InTheMiddleOfAWriteLeaveTheOldState)
{
    const long link = *desk->create(desk->add(meeting()));
    const std::wstring before = content();
    desk.reset();
    // The first resource has its activity by then, the second one not.
    makeSlow("INSERT ON events WHEN new.name_id = 3", "UPDATE events SET text = 'halfway'");
    killHalfway(ChildProcess::booking(file, link, bert, van));

    desk.emplace(open());
    EXPECT_EQ(Lines{L"1, 2"}, desk->members(link));
    expectRestored();
    EXPECT_EQ(before, content());

    sql("DROP TRIGGER slow");
    desk->addNames(link, {bert, van});
    EXPECT_EQ((Lines{L"1, 2", L"2, 3", L"3, 5"}), desk->members(link));
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
