// Another process that works on the same database file.
#pragma once

#include "framework/com/Platform.h"

#include <string>
#include <utility>
#include <vector>

namespace korvane::store::test
{

/// This test program once more, with a task instead of tests. It is killed when the object goes.
class ChildProcess
{
public:
    /// Adds a group through the data layer; the exit code is the call's result.
    static ChildProcess adding(const std::wstring& file, const std::wstring& group);

    /// Books the activity of a link group for two more resources; the exit code is the call's result.
    static ChildProcess booking(const std::wstring& file, long link, long firstName, long secondName);

    /// Runs SQL that takes a lock, and holds the lock for a time. Returns once the lock is taken.
    static ChildProcess locking(const std::wstring& file, const std::wstring& sql,
                                DWORD milliseconds = INFINITE);

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess(ChildProcess&& other) noexcept : process_(std::exchange(other.process_, {})) {}
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess& operator=(ChildProcess&&) = delete;
    ~ChildProcess() { kill(); }

    bool isRunning() const;
    void kill();
    DWORD exitCode() const;

    /// What main does when it is started as a child.
    static int run(const std::vector<std::wstring>& arguments);

private:
    explicit ChildProcess(const std::vector<std::wstring>& arguments);
    ChildProcess(const std::vector<std::wstring>& arguments, const std::wstring& readyEvent);

    PROCESS_INFORMATION process_{};
};

} // namespace korvane::store::test
