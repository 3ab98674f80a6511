#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

/// Carla is the resource of the employee's own login.
class BookingRights : public ActivityTest
{
protected:
    void TearDown() override
    {
        employee.reset();
        ActivityTest::TearDown();
    }

    void expectMayNotEdit(const wchar_t* className, auto&& body) const
    {
        const std::wstring before = content();
        EXPECT_ERROR(body(), Code::mayNotEditForOthers, className);
        EXPECT_EQ(before, content());
    }

    std::optional<Desk> employee{deskOf(L"employee")};
    long others = desk->add(meeting());
    long own = desk->add(meeting(at(2026, 3, 2, 9), carla));
};

} // namespace

TEST_F(BookingRights, OfAnAdministratorCoverEveryActivity)
{
    EXPECT_TRUE(desk->hasAccess(1, 0));
    EXPECT_TRUE(desk->hasAccess(1, others));
    EXPECT_TRUE(desk->hasAccess(3, 0));
    EXPECT_TRUE(desk->hasAccess(3, others));
    EXPECT_TRUE(desk->hasAccess(3, own));
}

TEST_F(BookingRights, OfAnEmployeeCoverTheOwnResourceOnly)
{
    EXPECT_FALSE(employee->hasAccess(1, 0));
    EXPECT_FALSE(employee->hasAccess(3, 0));
    EXPECT_FALSE(employee->hasAccess(3, others));
    EXPECT_TRUE(employee->hasAccess(3, own));
}

TEST_F(BookingRights, OfNobodyCoverUnknownActivitiesOrLevels)
{
    EXPECT_FALSE(desk->hasAccess(3, 4711));
    for (const long level : {0L, 2L, 4L, -1L})
        EXPECT_FALSE(desk->hasAccess(level, others));
}

TEST_F(BookingRights, LetEverybodyReadEverything)
{
    EXPECT_EQ(meeting(), employee->fetch(others));
    EXPECT_EQ(std::nullopt, employee->repetition(others));
    EXPECT_EQ(Lines{L"1, 2"}, employee->members(others));
    EXPECT_EQ(2u, employee->schedule(at(2026, 1, 1), at(2027, 1, 1)).size());
}

TEST_F(BookingRights, LetEverybodyWorkOnTheOwnActivities)
{
    const long event = employee->add(meeting(at(2026, 4, 1), carla));
    employee->update(event, 0, meeting(at(2026, 4, 2), carla));
    employee->repeat(event, Repetition{1, 0, 3});
    employee->update(event, 2, meeting(at(2026, 4, 9), carla));
    employee->remove(event, 3);
    EXPECT_EQ(Link(event), employee->create(event));
    employee->repeatLinked(event, Repetition{1, 0, 4});
    employee->updateLinked(event, 4, meeting(at(2026, 4, 10)));
    employee->removeOccurrence(event, 1);
    employee->detach(event, carla);
    employee->remove(event);
    EXPECT_FALSE(desk->has(event));
}

TEST_F(BookingRights, AreCheckedByTheWritesThemselves)
{
    EXPECT_REFUSED(employee->add(meeting()), Code::mayNotCreateForOthers, L"Events");
    expectMayNotEdit(L"Events", [&] { employee->update(others, 0, meeting(at(2026, 3, 2), carla)); });
    expectMayNotEdit(L"Events", [&] { employee->update(own, 0, meeting()); });
    expectMayNotEdit(L"Events", [&] { employee->remove(others); });
    expectMayNotEdit(L"Events", [&] { employee->repeat(others, Repetition{1}); });
}

TEST_F(BookingRights, AreCheckedForLinkGroupsToo)
{
    desk->create(own);
    EXPECT_REFUSED(employee->addNames(own, {bert}), Code::mayNotCreateForOthers, L"EventLinks");
    desk->addNames(own, {bert});
    desk->repeatLinked(own, Repetition{1});
    const auto mayNot = [&](auto&& body) { expectMayNotEdit(L"EventLinks", body); };
    mayNot([&] { employee->create(others); });
    mayNot([&] { employee->removeNames(own, {carla, bert}); });
    mayNot([&] { employee->removeOccurrence(own, 1); });
    mayNot([&] { employee->removeAll(own); });
    mayNot([&] { employee->updateLinked(own, 0, meeting()); });
    mayNot([&] { employee->detach(own, bert); });
    mayNot([&] { employee->repeatLinked(own, std::nullopt); });
}

TEST_F(BookingRights, LetEverybodyLeaveALinkGroup)
{
    desk->addNames(desk->create(others), {carla, bert});
    EXPECT_EQ(Link(others), employee->removeNames(others, {carla}));
    desk->addNames(others, {carla});
    employee->detach(others, carla);
    EXPECT_EQ((Lines{L"1, 2", L"4, 3"}), desk->members(others));
}

TEST_F(BookingRights, FollowAnOccurrenceThatIsGivenToAnotherResource)
{
    desk->repeat(own, Repetition{1, 0, 3});
    desk->update(own, 2, meeting(at(2026, 3, 3), bert));
    expectMayNotEdit(L"Events", [&] { employee->update(own, 2, meeting(at(2026, 3, 3), carla)); });
    employee->update(own, 3, meeting(at(2026, 3, 5), carla));
    desk->repeat(others, Repetition{1, 0, 3});
    desk->update(others, 2, meeting(at(2026, 3, 3), carla));
    employee->remove(others, 2);
    expectMayNotEdit(L"Events", [&] { employee->remove(others, 3); });
}

TEST_F(BookingRights, AreNotToldAnythingElseWithoutThem)
{
    EXPECT_REFUSED(employee->add(meeting(at(2026, 3, 2), 4711)), Code::mayNotCreateForOthers, L"Events");
    expectMayNotEdit(L"Events", [&] { employee->remove(4711); });
    expectMayNotEdit(L"Events", [&] { employee->update(others, 5, {4711, 99, 3, 2, L""}); });
    expectMayNotEdit(L"EventLinks", [&] { employee->create(4711); });
    expectMayNotEdit(L"EventLinks", [&] { employee->removeAll(4711); });
    expectMayNotEdit(L"EventLinks", [&] { employee->detach(4711, 4711); });
}

TEST_F(BookingRights, AreTwo)
{
    sql("UPDATE roles SET may_create_for_others = 1 WHERE id = 3");
    EXPECT_TRUE(employee->hasAccess(1, 0));
    EXPECT_FALSE(employee->hasAccess(3, others));
    const long added = employee->add(meeting());
    expectMayNotEdit(L"Events", [&] { employee->remove(added); });
    sql("UPDATE roles SET may_create_for_others = 0, may_edit_for_others = 1 WHERE id = 3");
    EXPECT_FALSE(employee->hasAccess(1, 0));
    EXPECT_TRUE(employee->hasAccess(3, others));
    employee->remove(added);
    EXPECT_REFUSED(employee->add(meeting()), Code::mayNotCreateForOthers, L"Events");
}

TEST_F(BookingRights, EndWithTheAccount)
{
    sql("DELETE FROM accounts WHERE login = 'employee'");
    EXPECT_FALSE(employee->hasAccess(3, own));
    EXPECT_REFUSED(employee->add(meeting(at(2026, 3, 2), carla)), Code::mayNotCreateForOthers, L"Events");
}
