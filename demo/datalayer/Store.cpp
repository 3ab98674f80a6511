#include "demo/datalayer/Store.h"

#include "demo/datalayer/AccountTable.h"
#include "demo/datalayer/BuiltIn.h"
#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Schema.h"

#include <mutex>
#include <vector>

namespace korvane::store
{

namespace
{

struct Opened
{
    DWORD thread;
    std::weak_ptr<Store> store;
};

// Everything else belongs to one apartment; this list is shared by those that there are.
std::mutex openedMutex;
std::vector<Opened> opened;

std::wstring fullPath(const std::wstring& path)
{
    wchar_t buffer[MAX_PATH];
    const DWORD length = GetFullPathNameW(path.c_str(), ARRAYSIZE(buffer), buffer, nullptr);
    if (length == 0 || length >= ARRAYSIZE(buffer))
        throw error(Code::cannotOpen, L"Database", path);
    return {buffer, length};
}

std::wstring folderOf(const std::wstring& path)
{
    const auto end = path.find_last_of(L'\\');
    // The root of a drive keeps its backslash: without it, the drive's current folder would be meant.
    return path.substr(0, end > 2 ? end : end + 1);
}

long accountOf(const Connection& connection, std::wstring_view login)
{
    if (login.empty())
        return builtInAccount;
    const auto found = AccountTable::find(connection, login);
    if (!found)
        throw error(Code::unknownAccount, L"Database");
    return found->id;
}

/// Grows with every write of another connection.
long dataVersion(const Connection& connection)
{
    Statement row(connection, "PRAGMA data_version");
    row.next();
    return row.number(0);
}

Connection connect(const std::wstring& path, long lockTimeout)
{
    Connection connection(path, lockTimeout);
    prepareSchema(connection);
    return connection;
}

} // namespace

Store::Store(const std::wstring& path, std::wstring_view login, long lockTimeout,
             std::shared_ptr<Trace> trace)
    : trace_(std::move(trace)), folder_(folderOf(path)), connection_(connect(path, lockTimeout)),
      account_(accountOf(connection_, login)), dataVersion_(dataVersion(connection_))
{
}

bool Store::hasChanged()
{
    const long former = std::exchange(dataVersion_, dataVersion(connection_));
    return dataVersion_ != former;
}

std::shared_ptr<Store> Store::open(const std::wstring& path, std::wstring_view login, long lockTimeout,
                                   std::shared_ptr<Trace> trace)
{
    auto store = std::make_shared<Store>(fullPath(path), login, lockTimeout, std::move(trace));
    const std::lock_guard lock(openedMutex);
    std::erase_if(opened, [](const Opened& entry) { return entry.store.expired(); });
    opened.push_back({GetCurrentThreadId(), store});
    return store;
}

std::shared_ptr<Store> Store::latest()
{
    const std::lock_guard lock(openedMutex);
    std::shared_ptr<Store> result;
    for (const Opened& entry : opened)
        if (entry.thread == GetCurrentThreadId())
            if (auto store = entry.store.lock())
                result = std::move(store);
    return result;
}

} // namespace korvane::store
