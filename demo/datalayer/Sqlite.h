// SQLite with owners: connection, statement, reading, transaction. What SQLite reports is thrown as a Failure.
#pragma once

#include "framework/com/Platform.h"
#include "framework/com/Variant.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace korvane::store
{

class Connection
{
public:
    /// Opens a database file, made when it does not exist, and read-only when it cannot be written.
    Connection(const std::wstring& path, long lockTimeout);

    /// Runs statements that give no rows.
    void execute(const char* sql);

    long lastInsertedId() const noexcept;
    sqlite3* handle() const noexcept { return handle_.get(); }

private:
    struct Close
    {
        void operator()(sqlite3* handle) const noexcept;
    };

    friend class Reading;
    friend class Transaction;

    void endReading() noexcept;

    std::unique_ptr<sqlite3, Close> handle_;
    int readings_ = 0;
    bool reading_ = false; ///< whether the readings still share one state
};

/// A statement with its parameters, run row by row.
class Statement
{
public:
    template <class... Parameters>
    Statement(const Connection& connection, const char* sql, const Parameters&... parameters)
        : Statement(connection, sql, Prepared())
    {
        int index = 0;
        (bind(++index, parameters), ...);
    }

    /// Goes to the next row; false when there is none.
    bool next();

    /// Runs a statement to its end.
    void run()
    {
        while (next())
        {
        }
    }

    // Columns of the current row, counted from 0.
    long number(int column) const noexcept;
    bool flag(int column) const noexcept { return number(column) != 0; }
    std::optional<long> numberOrNull(int column) const noexcept;
    OleDate date(int column) const noexcept;
    std::wstring text(int column) const;

private:
    struct Prepared
    {
    };
    struct Finalize
    {
        void operator()(sqlite3_stmt* handle) const noexcept;
    };

    Statement(const Connection& connection, const char* sql, Prepared);
    void bind(int index, long number);
    void bind(int index, std::optional<long> numberOrNull);
    void bind(int index, OleDate date);
    void bind(int index, std::wstring_view text);

    std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

/// While one lives, all that is read comes from one state of the database, which spares the locking of each
/// single read. Other users' writes wait for its end. A write on the same connection ends that, and what is
/// read later is the new state.
class Reading
{
public:
    explicit Reading(Connection& connection);
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    ~Reading();

private:
    Connection& connection_;
};

/// Writes that happen together or not at all. It takes the right to write when it begins, so that what is read
/// in it still holds when it writes; without a commit everything is taken back.
class Transaction
{
public:
    explicit Transaction(Connection& connection);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();

private:
    Connection& connection_;
};

} // namespace korvane::store
