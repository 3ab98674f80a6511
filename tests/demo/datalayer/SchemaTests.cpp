#include "demo/datalayer/Schema.h"
#include "tests/demo/datalayer/DataLayer.h"

#include <sqlite3.h>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

TEST(Schema, IsMadeOnceWhenTwoUsersMeetOnFirstUse)
{
    const TemporaryFolder folder;
    Connection first(folder.path() + L"\\test.db", 0);
    Connection second(folder.path() + L"\\test.db", 0);
    first.execute("BEGIN IMMEDIATE");
    // The second one has found the database empty when it comes upon the lock; only then the tables are made.
    const auto makeTables = [](void* other, int) {
        auto& connection = *static_cast<Connection*>(other);
        connection.execute("ROLLBACK");
        prepareSchema(connection);
        return 1;
    };
    sqlite3_busy_handler(second.handle(), makeTables, &first);
    prepareSchema(second);

    Statement groups(second, "SELECT count(*) FROM groups");
    ASSERT_TRUE(groups.next());
    EXPECT_EQ(3, groups.number(0));
}

TEST(Schema, IsLeftAloneWhereItIs)
{
    const TemporaryFolder folder;
    Connection connection(folder.path() + L"\\test.db", 0);
    prepareSchema(connection);
    connection.execute("UPDATE groups SET name = 'Everything' WHERE id = 2");
    prepareSchema(connection);
    Statement name(connection, "SELECT name FROM groups WHERE id = 2");
    ASSERT_TRUE(name.next());
    EXPECT_EQ(L"Everything", name.text(0));
}

TEST(Schema, OfTheFirstVersionIsBroughtUpToDateWithItsGroupsKept)
{
    const TemporaryFolder folder;
    Connection connection(folder.path() + L"\\test.db", 0);
    connection.execute(R"(
        PRAGMA application_id = 0x4B525644;
        PRAGMA user_version = 1;
        CREATE TABLE roles (id INTEGER PRIMARY KEY, name TEXT, may_add INTEGER, may_delete INTEGER, may_change INTEGER);
        CREATE TABLE accounts (id INTEGER PRIMARY KEY, login TEXT, role INTEGER);
        CREATE TABLE groups (id INTEGER PRIMARY KEY, name TEXT, flags INTEGER, position INTEGER);
        INSERT INTO roles VALUES (1, 'Administrators', 1, 1, 1), (2, 'Employees', 0, 0, 0);
        INSERT INTO accounts VALUES (1, 'admin', 1);
        INSERT INTO groups VALUES (4, 'Vans', 3, 4);
    )");
    prepareSchema(connection);
    prepareSchema(connection);
    Statement found(connection, "SELECT (SELECT name FROM groups), (SELECT count(*) FROM events),"
                                " (SELECT group_concat(may_edit_for_others) FROM roles)");
    ASSERT_TRUE(found.next());
    EXPECT_EQ(L"Vans", found.text(0));
    EXPECT_EQ(0, found.number(1));
    EXPECT_EQ(L"1,0", found.text(2));
}
