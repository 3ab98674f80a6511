#include "framework/com/Module.h"

#include "framework/com/Failure.h"

#include <atomic>
#include <string_view>

// The linker's name for the first byte of the module, which is its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace korvane::module
{

namespace
{
std::atomic<long> locks;
}

HINSTANCE instance() noexcept
{
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

void path(wchar_t (&buffer)[MAX_PATH])
{
    const DWORD length = GetModuleFileNameW(instance(), buffer, MAX_PATH);
    if (length == 0 || length == MAX_PATH)
        throw Failure(HRESULT_FROM_WIN32(length == 0 ? GetLastError() : ERROR_INSUFFICIENT_BUFFER));
}

std::wstring programName()
{
    wchar_t buffer[MAX_PATH];
    const std::wstring_view file(buffer, GetModuleFileNameW(nullptr, buffer, MAX_PATH));
    const std::wstring_view name = file.substr(file.find_last_of(L"\\/") + 1);
    return std::wstring(name.substr(0, name.find_last_of(L'.')));
}

void lock() noexcept
{
    ++locks;
}

void unlock() noexcept
{
    --locks;
}

long lockCount() noexcept
{
    return locks;
}

void stay() noexcept
{
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(instance()), &self);
}

} // namespace korvane::module
