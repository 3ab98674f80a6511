// An open database, and who works in it.
#pragma once

#include "demo/datalayer/Sqlite.h"
#include "demo/datalayer/Trace.h"

#include <memory>
#include <string>

namespace korvane::store
{

/// Lives as long as the root, or anything that the root gave out. The file is closed when it ends.
class Store
{
public:
    /// Opens a database, made on first use, for an account; an empty login is the built-in administrator.
    static std::shared_ptr<Store> open(const std::wstring& path, std::wstring_view login, long lockTimeout,
                                       std::shared_ptr<Trace> trace);

    /// What was opened last by the calling thread and is still open; empty when nothing is.
    static std::shared_ptr<Store> latest();

    Connection& connection() noexcept { return connection_; }
    Trace& trace() noexcept { return *trace_; }
    long account() const noexcept { return account_; }
    /// Whether somebody else has written to the database since it was opened or asked for last.
    bool hasChanged();
    const std::wstring& folder() const noexcept { return folder_; }

    Store(const std::wstring& path, std::wstring_view login, long lockTimeout, std::shared_ptr<Trace> trace);

private:
    std::shared_ptr<Trace> trace_;
    std::wstring folder_;
    Connection connection_;
    long account_;
    long dataVersion_;
};

} // namespace korvane::store
