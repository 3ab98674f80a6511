#include "tests/demo/datalayer/DataLayer.h"

#include <sqlite3.h>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Sqlite : public testing::Test
{
protected:
    std::wstring text(const char* query) const
    {
        Statement statement(connection, query);
        return statement.next() ? statement.text(0) : L"(no row)";
    }

    TemporaryFolder folder;
    Connection connection{folder.path() + L"\\test.db", 0};
};

} // namespace

TEST_F(Sqlite, TellsAFullDisk)
{
    connection.execute("CREATE TABLE t (x); PRAGMA max_page_count = 3");
    EXPECT_ERROR(connection.execute("INSERT INTO t VALUES (zeroblob(100000))"), Code::diskFull, L"Database");
}

TEST_F(Sqlite, TellsABrokenRule)
{
    connection.execute("CREATE TABLE t (x UNIQUE); INSERT INTO t VALUES (1)");
    EXPECT_ERROR(connection.execute("INSERT INTO t VALUES (1)"), Code::ruleBroken, L"Database",
                 L"UNIQUE constraint failed: t.x");
}

TEST_F(Sqlite, TellsOtherErrorsInItsOwnWords)
{
    EXPECT_ERROR(connection.execute("SELECT missing"), Code::otherDatabaseError, L"Database",
                 L"no such column: missing");
    EXPECT_ERROR(Statement(connection, "SELECT"), Code::otherDatabaseError, L"Database", L"incomplete input");
}

TEST_F(Sqlite, ChecksForeignKeys)
{
    EXPECT_EQ(L"1", text("PRAGMA foreign_keys"));
}

TEST_F(Sqlite, BindsNumbersAndTextsInTheirOrder)
{
    const std::wstring odd(L"a\0b \U0001F600", 6);
    Statement statement(connection, "SELECT ?, ?, ?, typeof(?)", -5L, odd, L"plain", std::wstring_view());
    ASSERT_TRUE(statement.next());
    EXPECT_EQ(-5, statement.number(0));
    EXPECT_EQ(odd, statement.text(1));
    EXPECT_EQ(L"plain", statement.text(2));
    EXPECT_EQ(L"text", statement.text(3));
    EXPECT_FALSE(statement.next());
}

TEST_F(Sqlite, BindsDatesExactlyAndNumbersThatMayBeMissing)
{
    using Number = std::optional<long>;
    const OleDate date{46083.0 + 1.0 / 3};
    Statement statement(connection, "SELECT ?, typeof(?2), ?3, ?2", date, Number(), Number(-7));
    ASSERT_TRUE(statement.next());
    EXPECT_EQ(date, statement.date(0));
    EXPECT_EQ(L"null", statement.text(1));
    EXPECT_EQ(Number(-7), statement.numberOrNull(2));
    EXPECT_EQ(Number(), statement.numberOrNull(3));
}

TEST_F(Sqlite, TakesATransactionBackWithoutACommit)
{
    connection.execute("CREATE TABLE t (x)");
    {
        Transaction transaction(connection);
        connection.execute("INSERT INTO t VALUES (1)");
    }
    EXPECT_EQ(L"0", text("SELECT count(*) FROM t"));
    {
        Transaction transaction(connection);
        connection.execute("INSERT INTO t VALUES (1)");
        transaction.commit();
    }
    EXPECT_EQ(L"1", text("SELECT count(*) FROM t"));
}

TEST_F(Sqlite, EndsATransactionThatTheDatabaseTookBack)
{
    connection.execute("CREATE TABLE t (x UNIQUE ON CONFLICT ROLLBACK); INSERT INTO t VALUES (1)");
    {
        Transaction transaction(connection);
        EXPECT_TRUE(attempt([&] { connection.execute("INSERT INTO t VALUES (1)"); }));
        EXPECT_NE(0, sqlite3_get_autocommit(connection.handle()));
    }
    Transaction next(connection);
    connection.execute("INSERT INTO t VALUES (2)");
    next.commit();
    EXPECT_EQ(L"2", text("SELECT count(*) FROM t"));
}
