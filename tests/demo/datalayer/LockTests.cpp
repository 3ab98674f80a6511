#include "tests/demo/datalayer/ActivityTest.h"
#include "tests/demo/datalayer/ChildProcess.h"
#include "tests/demo/datalayer/Listener.h"

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

    const wchar_t* locked = L"The database is locked by another user. Try again in a moment.";
};

class LocksOfBooking : public ActivityTest
{
protected:
    LocksOfBooking()
    {
        database->put_LockTimeout(50);
        desk.emplace(open());
    }

    /// Everything that is asked of the activities, each of which the body expects to fail.
    void forEachWrite(auto&& body) const
    {
        body([&] { desk->add(meeting()); });
        body([&] { desk->update(event, 0, meeting()); });
        body([&] { desk->update(event, 1, meeting()); });
        body([&] { desk->remove(event); });
        body([&] { desk->repeat(event, Repetition{1}); });
        body([&] { desk->create(single); });
        body([&] { desk->addNames(event, {bert}); });
        body([&] { desk->removeNames(event, {anna}); });
        body([&] { desk->removeOccurrence(event, 1); });
        body([&] { desk->removeAll(event); });
        body([&] { desk->updateLinked(event, 0, meeting()); });
        body([&] { desk->detach(event, anna); });
        body([&] { desk->repeatLinked(event, std::nullopt); });
    }

    void forEachReading(auto&& body) const
    {
        body([&] { desk->fetch(event); });
        body([&] { desk->repetition(event); });
        body([&] { desk->linkOf(event); });
        body([&] { desk->hasAccess(3, event); });
        body([&] { call(desk->events.as<ISchedule>(), &ISchedule::Load, at(2026, 1, 1), at(2027, 1, 1)); });
        body([&] { korvane::fetch(korvane::fetch(desk->root, &IRoot::get_Names), &INames::Load, 0L); });
        body([&] { korvane::fetch(korvane::fetch(desk->root, &IRoot::get_Types), &ITypes::Load, 0L); });
    }

    long repeated() const
    {
        const long added = desk->add(meeting());
        desk->repeat(added, Repetition{2});
        return *desk->create(added);
    }

    const wchar_t* locked = L"The database is locked by another user. Try again in a moment.";
    long event = repeated();
    long single = desk->add(meeting());
};

} // namespace

TEST_F(Locks, OfAnotherProcessReachTheUserAsAnError)
{
    const auto groups = openGroups();
    auto child = ChildProcess::locking(file, L"BEGIN EXCLUSIVE");
    EXPECT_ERROR(korvane::fetch(groups, &IGroups::Load), Code::locked, L"Database");
    EXPECT_ERROR(fetch(groups, 1), Code::locked, L"Database");
    EXPECT_ERROR(hasAccess(groups, 3, 1), Code::locked, L"Database");
    EXPECT_ERROR(add(groups, L"Rooms"), Code::locked, L"Database");
    EXPECT_ERROR(open(), Code::locked, L"Database");
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
    EXPECT_ERROR(add(groups, L"Rooms"), Code::locked, L"Database");
    EXPECT_ERROR(update(groups, 4, L"People"), Code::locked, L"Database");
    EXPECT_ERROR(remove(groups, 4), Code::locked, L"Database");
}

TEST_F(Locks, OfAReaderTakeAWriteBackAsAWhole)
{
    const auto groups = openGroups();
    const Listener::Subscription subscriber(groups, DIID_IGroupsEvents);
    {
        const Connection reader(file, 0);
        Statement reading(reader, "SELECT name FROM groups");
        ASSERT_TRUE(reading.next());
        EXPECT_ERROR(add(groups, L"Rooms"), Code::locked, L"Database");
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
    EXPECT_ERROR(add(groups, L"Rooms"), Code::locked, L"Database");
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
    EXPECT_ERROR(add(groups, L"Rooms"), Code::readOnly, L"Database");
    EXPECT_ERROR(update(groups, 4, L"People"), Code::readOnly, L"Database");
    EXPECT_EQ(std::vector<std::wstring>{L"Staff"}, names(groups));
}

TEST_F(LocksOfBooking, OfAnotherProcessReachTheUserAsAnError)
{
    const std::wstring before = content();
    const Listener::Subscription listener(desk->events, DIID_IEventsEvents);
    {
        const auto child = ChildProcess::locking(file, L"BEGIN EXCLUSIVE");
        const auto expectLocked = [&](auto&& body) { EXPECT_ERROR(body(), Code::locked, L"Database"); };
        forEachWrite(expectLocked);
        expectLocked([&] { call(database, &IDatabase::AddSample, desk->root.get()); });
        forEachReading(expectLocked);
        EXPECT_TRUE(child.isRunning());
    }
    EXPECT_EQ(Lines{}, listener->events());
    EXPECT_EQ(before, content());
}

TEST_F(LocksOfBooking, OfAWriterLeaveReadingPossible)
{
    Connection writer(file, 0);
    const Transaction writing(writer);
    forEachReading([](auto&& body) { EXPECT_FALSE(attempt(body)); });
    forEachWrite([&](auto&& body) { EXPECT_ERROR(body(), Code::locked, L"Database"); });
}

TEST_F(LocksOfBooking, ReadOnlyFilesCanBeReadButNotWritten)
{
    desk.reset();
    const WriteProtection protection(file);
    desk.emplace(open());
    const std::wstring before = content();
    forEachReading([](auto&& body) { EXPECT_FALSE(attempt(body)); });
    forEachWrite([&](auto&& body) { EXPECT_ERROR(body(), Code::readOnly, L"Database"); });
    EXPECT_EQ(before, content());
}
