#include "tests/demo/datalayer/DataLayer.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Rights : public DataLayerTest
{
protected:
    Rights()
    {
        const auto groups = openGroups();
        staff = add(groups, L"Staff");
        rooms = add(groups, L"Rooms");
    }

    long staff = 0;
    long rooms = 0;
};

} // namespace

TEST_F(Rights, OfAnAdministratorCoverEveryGroupThatUsersMade)
{
    for (const wchar_t* account : {L"", L"admin"})
    {
        const auto groups = openGroups(account);
        EXPECT_TRUE(hasAccess(groups, 1, 0));
        EXPECT_TRUE(hasAccess(groups, 2, staff));
        EXPECT_TRUE(hasAccess(groups, 3, staff));
    }
}

TEST_F(Rights, OfNobodyCoverBuiltInGroups)
{
    const auto groups = openGroups();
    for (long id = 1; id <= 3; ++id)
    {
        EXPECT_FALSE(hasAccess(groups, 2, id));
        EXPECT_FALSE(hasAccess(groups, 3, id));
    }
}

TEST_F(Rights, OfNobodyCoverUnknownGroupsOrOperations)
{
    const auto groups = openGroups();
    EXPECT_FALSE(hasAccess(groups, 2, 4711));
    EXPECT_FALSE(hasAccess(groups, 3, 4711));
    for (const long operation : {0L, 4L, -1L})
        EXPECT_FALSE(hasAccess(groups, operation, staff));
}

TEST_F(Rights, OfAnEmployeeEndAtReading)
{
    const auto groups = openGroups(L"employee");
    EXPECT_FALSE(hasAccess(groups, 1, 0));
    EXPECT_FALSE(hasAccess(groups, 2, staff));
    EXPECT_FALSE(hasAccess(groups, 3, staff));
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Rooms"}), names(groups));
    EXPECT_EQ((Listed{staff, L"Staff", 3}), fetch(groups, staff));
}

TEST_F(Rights, AreCheckedByTheWritesThemselves)
{
    const auto groups = openGroups(L"employee");
    EXPECT_ERROR(add(groups, L"Vehicles"), Code::mayNotAddGroups, L"Groups");
    EXPECT_ERROR(update(groups, staff, L"Mine"), Code::mayNotChangeGroup, L"Groups");
    EXPECT_ERROR(remove(groups, staff), Code::mayNotDeleteGroup, L"Groups");
    EXPECT_EQ((std::vector<std::wstring>{L"Staff", L"Rooms"}), names(groups));
}

TEST_F(Rights, AreNotToldAnythingElseWithoutThem)
{
    // Neither that the name is missing nor that the group is unknown, built in or the last one.
    const auto groups = openGroups(L"employee");
    EXPECT_ERROR(add(groups, L""), Code::mayNotAddGroups, L"Groups");
    for (const long id : {1L, 4711L})
    {
        EXPECT_ERROR(update(groups, id, L""), Code::mayNotChangeGroup, L"Groups");
        EXPECT_ERROR(remove(groups, id), Code::mayNotDeleteGroup, L"Groups");
    }
}

TEST_F(Rights, CanBeGivenForOneGroup)
{
    sql(("INSERT INTO role_groups (role, group_id, may_change) VALUES (3, " + std::to_string(staff) + ", 1)")
            .c_str());
    const auto groups = openGroups(L"employee");
    EXPECT_TRUE(hasAccess(groups, 3, staff));
    EXPECT_FALSE(hasAccess(groups, 2, staff));
    EXPECT_FALSE(hasAccess(groups, 3, rooms));
    update(groups, staff, L"People");
    EXPECT_EQ(L"People", fetch(groups, staff)->name);
    EXPECT_ERROR(update(groups, rooms, L"Mine"), Code::mayNotChangeGroup, L"Groups");
}

TEST_F(Rights, ToAGroupGoWithTheGroup)
{
    sql(("INSERT INTO role_groups (role, group_id, may_delete) VALUES (3, " + std::to_string(staff) + ", 1)")
            .c_str());
    remove(openGroups(L"employee"), staff);
    EXPECT_EQ(L"0", sqlText("SELECT count(*) FROM role_groups"));
}

TEST_F(Rights, FollowTheRoleAtOnce)
{
    const auto groups = openGroups(L"employee");
    sql("UPDATE roles SET may_add = 1, may_delete = 1, may_change = 1 WHERE name = 'User'");
    EXPECT_TRUE(hasAccess(groups, 1, 0));
    EXPECT_TRUE(hasAccess(groups, 2, staff));
    EXPECT_TRUE(hasAccess(groups, 3, staff));
    add(groups, L"Vehicles");
    sql("UPDATE accounts SET role = 1 WHERE login = 'employee'; UPDATE roles SET may_add = 0");
    EXPECT_FALSE(hasAccess(groups, 1, 0));
}

TEST_F(Rights, EndWithTheAccount)
{
    const auto groups = openGroups(L"employee");
    sql("UPDATE roles SET may_add = 1; DELETE FROM accounts WHERE login = 'employee'");
    EXPECT_FALSE(hasAccess(groups, 1, 0));
    EXPECT_ERROR(add(groups, L"Vehicles"), Code::mayNotAddGroups, L"Groups");
}

TEST_F(Rights, OfANewAccountFollowItsRole)
{
    sql("INSERT INTO roles (id, name, may_add) VALUES (4, 'Planners', 1);"
        "INSERT INTO accounts (login, role) VALUES ('mia', 4)");
    const auto groups = openGroups(L"mia");
    EXPECT_TRUE(hasAccess(groups, 1, 0));
    EXPECT_FALSE(hasAccess(groups, 3, staff));
}

TEST_F(Rights, NeedARoleThatExists)
{
    EXPECT_ERROR(sql("INSERT INTO accounts (login, role) VALUES ('mia', 99)"), Code::ruleBroken, L"Database",
                 L"FOREIGN KEY constraint failed");
}
