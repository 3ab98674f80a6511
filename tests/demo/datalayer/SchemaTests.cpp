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
