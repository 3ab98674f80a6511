// The module: its handle, and the count of what keeps it loaded.
#pragma once

#include "framework/com/Platform.h"

#include <string>

namespace korvane::module
{

/// The DLL or program that this code is linked into.
HINSTANCE instance() noexcept;

/// Full path of the module's file. Throws a Failure when it cannot be told.
void path(wchar_t (&buffer)[MAX_PATH]);

/// Name of the running program: its file without folder and extension.
std::wstring programName();

// Every COM object and every server lock of the module counts; several apartments may count at once.
void lock() noexcept;
void unlock() noexcept;
long lockCount() noexcept;

/// Keeps the module loaded to the end of the process.
void stay() noexcept;

/// Counts one object for as long as it lives.
class Lock
{
public:
    Lock() noexcept { lock(); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { unlock(); }
};

} // namespace korvane::module
