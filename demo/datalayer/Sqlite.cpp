#include "demo/datalayer/Sqlite.h"

#include "demo/datalayer/Errors.h"

#include <sqlite3.h>

#include <new>
#include <utility>

namespace korvane::store
{

namespace
{

std::string utf8(std::wstring_view text)
{
    const int size = static_cast<int>(text.size());
    std::string result(static_cast<std::size_t>(
                           WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(), static_cast<int>(result.size()),
                        nullptr, nullptr);
    return result;
}

std::wstring message(sqlite3* handle)
{
    const void* text = sqlite3_errmsg16(handle);
    return text ? std::wstring(static_cast<const wchar_t*>(text)) : std::wstring();
}

Code codeOf(int result) noexcept
{
    switch (result & 0xff) // the rest tells kinds of the same error apart
    {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Code::locked;
    case SQLITE_READONLY:
        return Code::readOnly;
    case SQLITE_FULL:
        return Code::diskFull;
    case SQLITE_CANTOPEN:
        return Code::cannotOpen;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return Code::damaged;
    case SQLITE_IOERR:
    case SQLITE_PERM:
        return Code::cannotAccess;
    case SQLITE_CONSTRAINT:
        return Code::ruleBroken;
    default:
        return Code::otherDatabaseError;
    }
}

void check(sqlite3* handle, int result)
{
    if (result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE)
        return;
    if (result == SQLITE_NOMEM || result == SQLITE_IOERR_NOMEM)
        throw std::bad_alloc();
    throw error(codeOf(result), L"Database", message(handle));
}

void check(sqlite3_stmt* statement, int result)
{
    check(sqlite3_db_handle(statement), result);
}

} // namespace

Connection::Connection(const std::wstring& path, long lockTimeout)
{
    sqlite3* opened = nullptr;
    const int result =
        sqlite3_open_v2(utf8(path).c_str(), &opened,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXRESCODE, nullptr);
    handle_.reset(opened); // there is one even when opening failed
    if ((result & 0xff) == SQLITE_CANTOPEN)
        throw error(Code::cannotOpen, L"Database", path);
    check(opened, result);
    check(opened, sqlite3_busy_timeout(opened, lockTimeout));
}

void Connection::execute(const char* sql)
{
    check(handle(), sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr));
}

long Connection::lastInsertedId() const noexcept
{
    return static_cast<long>(sqlite3_last_insert_rowid(handle()));
}

void Connection::endReading() noexcept
{
    if (std::exchange(reading_, false) && !sqlite3_get_autocommit(handle()))
        sqlite3_exec(handle(), "COMMIT", nullptr, nullptr, nullptr);
}

void Connection::Close::operator()(sqlite3* handle) const noexcept
{
    sqlite3_close(handle);
}

Statement::Statement(const Connection& connection, const char* sql, Prepared)
{
    sqlite3_stmt* prepared = nullptr;
    const int result = sqlite3_prepare_v2(connection.handle(), sql, -1, &prepared, nullptr);
    handle_.reset(prepared);
    check(connection.handle(), result);
}

bool Statement::next()
{
    const int result = sqlite3_step(handle_.get());
    check(handle_.get(), result);
    return result == SQLITE_ROW;
}

long Statement::number(int column) const noexcept
{
    return sqlite3_column_int(handle_.get(), column);
}

std::optional<long> Statement::numberOrNull(int column) const noexcept
{
    const bool isNull = sqlite3_column_type(handle_.get(), column) == SQLITE_NULL;
    return isNull ? std::nullopt : std::optional(number(column));
}

OleDate Statement::date(int column) const noexcept
{
    return {sqlite3_column_double(handle_.get(), column)};
}

std::wstring Statement::text(int column) const
{
    const auto* text = static_cast<const wchar_t*>(sqlite3_column_text16(handle_.get(), column));
    const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes16(handle_.get(), column));
    return text ? std::wstring(text, bytes / sizeof(wchar_t)) : std::wstring();
}

void Statement::Finalize::operator()(sqlite3_stmt* handle) const noexcept
{
    sqlite3_finalize(handle);
}

void Statement::bind(int index, long number)
{
    check(handle_.get(), sqlite3_bind_int(handle_.get(), index, number));
}

void Statement::bind(int index, std::optional<long> numberOrNull)
{
    if (numberOrNull)
        bind(index, *numberOrNull);
    else
        check(handle_.get(), sqlite3_bind_null(handle_.get(), index));
}

void Statement::bind(int index, OleDate date)
{
    check(handle_.get(), sqlite3_bind_double(handle_.get(), index, date.days));
}

void Statement::bind(int index, std::wstring_view text)
{
    const wchar_t* characters = text.empty() ? L"" : text.data(); // null would be no text at all
    check(handle_.get(),
          sqlite3_bind_text16(handle_.get(), index, characters,
                              static_cast<int>(text.size() * sizeof(wchar_t)), SQLITE_TRANSIENT));
}

Reading::Reading(Connection& connection) : connection_(connection)
{
    if (connection_.readings_ == 0)
    {
        connection_.execute("BEGIN");
        connection_.reading_ = true;
    }
    ++connection_.readings_;
}

Reading::~Reading()
{
    if (--connection_.readings_ == 0)
        connection_.endReading();
}

Transaction::Transaction(Connection& connection) : connection_(connection)
{
    connection_.endReading();
    connection_.execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction()
{
    // After a commit, and after an error that took everything back already, there is nothing left to do.
    if (!sqlite3_get_autocommit(connection_.handle()))
        sqlite3_exec(connection_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit()
{
    connection_.execute("COMMIT");
}

} // namespace korvane::store
