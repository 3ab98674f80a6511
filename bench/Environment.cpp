#include "bench/Environment.h"

#include "framework/com/Platform.h"

#include <uxtheme.h>

#include <bit>
#include <cstdint>

namespace korvane::bench
{

namespace
{

/// Of the platform itself: looked up by name, since only Wine has it.
std::string platform()
{
    using GetVersionText = const char*(__cdecl*)();
    const auto wineVersion = reinterpret_cast<GetVersionText>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version")));
    return wineVersion ? std::string("Wine ") + wineVersion() : "Windows";
}

std::string theme()
{
    if (!IsThemeActive())
        return "unthemed";
    wchar_t file[MAX_PATH] = L"";
    wchar_t color[MAX_PATH] = L"";
    if (FAILED(GetCurrentThemeName(file, MAX_PATH, color, MAX_PATH, nullptr, 0)))
        return "themed, of an unknown name";
    const std::string path = utf8(file);
    const std::string name = path.substr(path.find_last_of("\\/") + 1);
    return "themed: " + name + ", colours " + utf8(color);
}

std::string cores()
{
    DWORD_PTR ours = 0;
    DWORD_PTR all = 0;
    if (!GetProcessAffinityMask(GetCurrentProcess(), &ours, &all))
        return "unknown";
    const int count = std::popcount(static_cast<std::uintptr_t>(ours));
    return std::to_string(count) +
           (count == 1 ? " (pinned)" : " (NOT pinned: times depend on where the server runs)");
}

std::string compiler()
{
#ifdef __VERSION__
    return std::string("GCC ") + __VERSION__;
#else
    return "Visual C++ " + std::to_string(_MSC_FULL_VER);
#endif
}

std::string today()
{
    SYSTEMTIME time{};
    GetSystemTime(&time);
    char text[32];
    wsprintfA(text, "%04d-%02d-%02d %02d:%02d UTC", time.wYear, time.wMonth, time.wDay, time.wHour,
              time.wMinute);
    return text;
}

} // namespace

std::string utf8(const wchar_t* text)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string result(size > 0 ? static_cast<std::size_t>(size) : 1, '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.pop_back();
    return result;
}

Environment environment()
{
    return {
        {"platform", platform()},
        {"theme", theme()},
        {"cores", cores()},
        {"process", sizeof(void*) == 4 ? "32 bits" : "64 bits"},
        {"build", std::string(KORVANE_BUILD_TYPE) + ", " + compiler()},
        {"taken", today()},
    };
}

} // namespace korvane::bench
