#include "tests/demo/datalayer/ChildProcess.h"

#include "tests/demo/datalayer/ActivityTest.h"

namespace korvane::store::test
{

namespace
{

constexpr DWORD patience = 60000;

std::wstring programPath()
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

/// Works on the root of a database.
template <class Work> int inDatabase(const std::wstring& file, Work&& work)
{
    require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    const auto failure = attempt([&] {
        const DataLayer layer;
        const auto database = layer.makeDatabase();
        database->put_LockTimeout(static_cast<long>(patience));
        const auto root = korvane::fetch(database, &IDatabase::Open, Bstr(file).get(), BSTR(nullptr));
        work(root);
    });
    CoUninitialize();
    return failure ? failure->number() : S_OK;
}

int add(const std::wstring& file, const std::wstring& group)
{
    return inDatabase(file, [&](const ComPtr<IRoot>& root) {
        const auto groups = korvane::fetch(root, &IRoot::get_Groups);
        korvane::fetch(groups, &IGroups::Add, Bstr(group).get(), 3L);
    });
}

int book(const std::wstring& file, long link, const std::vector<long>& names)
{
    return inDatabase(file, [&](const ComPtr<IRoot>& root) { Desk(root).addNames(link, names); });
}

int lock(const std::wstring& file, const std::wstring& sql, DWORD milliseconds,
         const std::wstring& readyEvent)
{
    Connection connection(file, 0);
    Statement statement(connection, std::string(sql.begin(), sql.end()).c_str());
    statement.next();
    const HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, readyEvent.c_str());
    SetEvent(ready);
    Sleep(milliseconds);
    CloseHandle(ready);
    return 0;
}

} // namespace

ChildProcess ChildProcess::adding(const std::wstring& file, const std::wstring& group)
{
    return ChildProcess({L"add", file, group});
}

ChildProcess ChildProcess::booking(const std::wstring& file, long link, long firstName, long secondName)
{
    return ChildProcess(
        {L"book", file, std::to_wstring(link), std::to_wstring(firstName), std::to_wstring(secondName)});
}

ChildProcess ChildProcess::locking(const std::wstring& file, const std::wstring& sql, DWORD milliseconds)
{
    const auto readyEvent = L"korvane lock " + std::to_wstring(GetCurrentProcessId());
    return ChildProcess({L"lock", file, sql, std::to_wstring(milliseconds), readyEvent}, readyEvent);
}

ChildProcess::ChildProcess(const std::vector<std::wstring>& arguments, const std::wstring& readyEvent)
    : ChildProcess(arguments)
{
    // Whoever comes first makes the event.
    const HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, readyEvent.c_str());
    const HANDLE awaited[] = {ready, process_.hProcess};
    EXPECT_EQ(WAIT_OBJECT_0, WaitForMultipleObjects(2, awaited, FALSE, patience)) << "no lock was taken";
    CloseHandle(ready);
}

ChildProcess::ChildProcess(const std::vector<std::wstring>& arguments)
{
    std::wstring line = L'"' + programPath() + L"\" --child";
    for (const std::wstring& argument : arguments)
        line += L" \"" + argument + L'"';
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process_))
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

bool ChildProcess::isRunning() const
{
    return WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

void ChildProcess::kill()
{
    if (!process_.hProcess)
        return;
    TerminateProcess(process_.hProcess, 1);
    WaitForSingleObject(process_.hProcess, patience);
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
    process_ = {};
}

DWORD ChildProcess::exitCode() const
{
    WaitForSingleObject(process_.hProcess, patience);
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process_.hProcess, &code);
    return code;
}

int ChildProcess::run(const std::vector<std::wstring>& arguments)
{
    if (arguments.size() == 3 && arguments[0] == L"add")
        return add(arguments[1], arguments[2]);
    if (arguments.size() == 5 && arguments[0] == L"book")
        return book(arguments[1], std::stol(arguments[2]),
                    {std::stol(arguments[3]), std::stol(arguments[4])});
    if (arguments.size() == 5 && arguments[0] == L"lock")
        return lock(arguments[1], arguments[2], std::stoul(arguments[3]), arguments[4]);
    return E_INVALIDARG;
}

} // namespace korvane::store::test
