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
        CREATE TABLE role_groups (role INTEGER, group_id INTEGER, PRIMARY KEY (role, group_id)) WITHOUT ROWID;
        INSERT INTO roles VALUES (1, 'Administrators', 1, 1, 1), (2, 'Employees', 0, 0, 0);
        INSERT INTO accounts VALUES (1, 'admin', 1);
        INSERT INTO groups VALUES (4, 'Vans', 3, 4);
    )");
    prepareSchema(connection);
    prepareSchema(connection);
    Statement found(connection, "SELECT (SELECT name FROM groups), (SELECT count(*) FROM events),"
                                " (SELECT group_concat(may_edit_for_others ORDER BY id) FROM roles)");
    ASSERT_TRUE(found.next());
    EXPECT_EQ(L"Vans", found.text(0));
    EXPECT_EQ(0, found.number(1));
    EXPECT_EQ(L"0,1,0,0", found.text(2));
}

namespace
{

/// A database as the second version made it, with a role, accounts and rights of its user's own.
constexpr const char* secondVersion = R"(
    PRAGMA application_id = 0x4B525644;
    PRAGMA user_version = 2;
    CREATE TABLE roles (
        id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE NOCASE UNIQUE, may_add INTEGER NOT NULL DEFAULT 0,
        may_delete INTEGER NOT NULL DEFAULT 0, may_change INTEGER NOT NULL DEFAULT 0,
        may_create_for_others INTEGER NOT NULL DEFAULT 0, may_edit_for_others INTEGER NOT NULL DEFAULT 0);
    CREATE TABLE accounts (id INTEGER PRIMARY KEY AUTOINCREMENT, login TEXT NOT NULL COLLATE NOCASE UNIQUE,
        role INTEGER NOT NULL REFERENCES roles);
    CREATE TABLE groups (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT, flags INTEGER, position INTEGER);
    CREATE TABLE role_groups (
        role INTEGER NOT NULL REFERENCES roles ON DELETE CASCADE,
        group_id INTEGER NOT NULL REFERENCES groups ON DELETE CASCADE,
        may_delete INTEGER NOT NULL DEFAULT 0, may_change INTEGER NOT NULL DEFAULT 0,
        PRIMARY KEY (role, group_id)) WITHOUT ROWID;
    CREATE TABLE names (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, color INTEGER NOT NULL DEFAULT 0,
        account INTEGER UNIQUE REFERENCES accounts ON DELETE SET NULL);
    CREATE TABLE group_names (group_id INTEGER NOT NULL, name_id INTEGER NOT NULL, position INTEGER NOT NULL,
        PRIMARY KEY (group_id, name_id)) WITHOUT ROWID;
    CREATE TABLE types (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, color INTEGER NOT NULL DEFAULT 0);
    CREATE TABLE group_types (group_id INTEGER NOT NULL, type_id INTEGER NOT NULL, position INTEGER NOT NULL,
        PRIMARY KEY (group_id, type_id)) WITHOUT ROWID;
    INSERT INTO roles VALUES (1, 'Administrators', 1, 1, 1, 1, 1), (2, 'Employees', 0, 0, 0, 0, 0),
        (3, 'manager', 1, 0, 0, 0, 0);
    INSERT INTO accounts VALUES (1, 'admin', 1), (2, 'employee', 2), (3, 'mia', 3);
    INSERT INTO groups VALUES (4, 'Vans', 3, 4);
    INSERT INTO role_groups VALUES (2, 4, 0, 1), (3, 4, 1, 0);
    INSERT INTO names VALUES (1, 'SuperUser', 0, 1), (2, 'Emily', 255, 2);
    INSERT INTO types VALUES (0, 'Activity', 12566463);
)";

} // namespace

TEST(Schema, OfTheSecondVersionIsBroughtUpToDateWithWhatItsAccountsMayDo)
{
    const TemporaryFolder folder;
    Connection connection(folder.path() + L"\\test.db", 0);
    connection.execute(secondVersion);
    prepareSchema(connection);
    const auto text = [&](const char* query) {
        Statement row(connection, query);
        return row.next() ? row.text(0) : L"(no row)";
    };
    EXPECT_EQ(L"-1 No User 0, 1 Administrator 3, 2 Manager 2, 3 User 1, 4 manager 4 1",
              text("SELECT group_concat(concat_ws(' ', id, name, reach), ', ' ORDER BY id) FROM roles"));
    EXPECT_EQ(L"admin 1, employee 3, mia 4",
              text("SELECT group_concat(login || ' ' || role, ', ' ORDER BY id) FROM accounts"));
    EXPECT_EQ(
        L"3 4 0 1, 4 4 1 0",
        text("SELECT group_concat(concat_ws(' ', role, group_id, may_delete, may_change), ', ' ORDER BY role)"
             "  FROM role_groups"));
    EXPECT_EQ(L"2 Emily 255 2 2", text("SELECT concat_ws(' ', id, name, color, account, flags) FROM names"
                                       " WHERE id = 2"));
    EXPECT_EQ(L"1 0 0 0 0",
              text("SELECT concat_ws(' ', may_add, may_delete, may_change, may_create_for_others,"
                   " may_edit_for_others) FROM roles WHERE id = 4"));
    EXPECT_EQ(L"(no row)", text("PRAGMA foreign_key_check"));
    EXPECT_EQ(L"3", text("PRAGMA user_version"));
}
