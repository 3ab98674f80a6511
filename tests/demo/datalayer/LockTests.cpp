#include "tests/demo/datalayer/ChildProcess.h"
#include "tests/demo/datalayer/DataLayer.h"
#include "tests/demo/datalayer/Subscriber.h"

#include <chrono>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Locks : public DataLayerTest
{
protected:
    Locks()
    {
        add(openGroups(), L"Staff");
        database->put_LockTimeout(50);
    }

    const wchar_t* source = L"KorvaneData.Database";
    const wchar_t* locked = L"The database is locked by another user. Try again in a moment.";
};

/// A file that others may read but not write while it lives.
class WriteProtection
{
public:
    explicit WriteProtection(const std::wstring& file)
        : handle_(
              CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(INVALID_HANDLE_VALUE, handle_);
    }
    WriteProtection(const WriteProtection&) = delete;
    WriteProtection& operator=(const WriteProtection&) = delete;
    ~WriteProtection() { CloseHandle(handle_); }

private:
    HANDLE handle_;
};

} // namespace

TEST_F(Locks, OfAnotherProcessReachTheUserAsAnError)
{
    const auto groups = openGroups();
    auto child = ChildProcess::locking(file, L"BEGIN EXCLUSIVE");
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_ERROR(call(groups, &IGroups::Load, &result), Code::locked, source, locked);
    EXPECT_ERROR(fetch(groups, 1), Code::locked, source, locked);
    EXPECT_ERROR(hasAccess(groups, 3, 1), Code::locked, source, locked);
    EXPECT_ERROR(add(groups, L"Rooms"), Code::locked, source, locked);
    EXPECT_ERROR(open(), Code::locked, source, locked);
    EXPECT_TRUE(child.isRunning());
    child.kill();
    add(groups, L"Rooms");
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Rooms"}), names(groups));
}

TEST_F(Locks, OfAWriterLeaveReadingPossible)
{
    const auto groups = openGroups();
    Connection writer(file, 0);
    Transaction writing(writer);
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
    EXPECT_ERROR(add(groups, L"Rooms"), Code::locked, source, locked);
    EXPECT_ERROR(update(groups, 4, L"People"), Code::locked, source, locked);
    EXPECT_ERROR(remove(groups, 4), Code::locked, source, locked);
}

TEST_F(Locks, OfAReaderTakeAWriteBackAsAWhole)
{
    const auto groups = openGroups();
    const auto subscriber = Subscriber::subscribedTo(groups);
    {
        const Connection reader(file, 0);
        Statement reading(reader, "SELECT name FROM groups");
        ASSERT_TRUE(reading.next());
        EXPECT_ERROR(add(groups, L"Rooms"), Code::locked, source, locked);
    }
    EXPECT_TRUE(subscriber->events().empty());
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
    EXPECT_GT(add(groups, L"Rooms"), 4);
}

TEST_F(Locks, AreWaitedForUntilTheTimeout)
{
    database->put_LockTimeout(30000);
    const auto groups = openGroups();
    const auto child = ChildProcess::locking(file, L"BEGIN EXCLUSIVE", 300);
    add(groups, L"Rooms");
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Rooms"}), names(groups));
    EXPECT_EQ(0u, child.exitCode());
}

TEST_F(Locks, AreGivenUpAfterTheTimeout)
{
    database->put_LockTimeout(400);
    const auto groups = openGroups();
    const auto child = ChildProcess::locking(file, L"BEGIN EXCLUSIVE");
    const auto began = std::chrono::steady_clock::now();
    EXPECT_ERROR(add(groups, L"Rooms"), Code::locked, source, locked);
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(350));
    EXPECT_TRUE(child.isRunning());
}

TEST_F(Locks, AreWaitedForTwoSecondsUnlessSet)
{
    long timeout = 0;
    const auto other = layer.makeDatabase();
    EXPECT_EQ(S_OK, other->get_LockTimeout(&timeout));
    EXPECT_EQ(2000, timeout);
    EXPECT_EQ(S_OK, other->put_LockTimeout(0));
    EXPECT_EQ(S_OK, other->get_LockTimeout(&timeout));
    EXPECT_EQ(0, timeout);
    EXPECT_EQ(E_INVALIDARG, other->put_LockTimeout(-1));
}

TEST_F(Locks, ReadOnlyFilesCanBeReadButNotWritten)
{
    const WriteProtection protection(file);
    const auto groups = openGroups();
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
    EXPECT_TRUE(hasAccess(groups, 3, 4));
    const wchar_t* readOnly = L"The database is read-only.";
    EXPECT_ERROR(add(groups, L"Rooms"), Code::readOnly, source, readOnly);
    EXPECT_ERROR(update(groups, 4, L"People"), Code::readOnly, source, readOnly);
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
}
