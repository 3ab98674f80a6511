#include "demo/host/tour/Report.h"

#include "framework/com/Platform.h"

#include <string>

namespace korvane::host
{

namespace
{

/// A program with windows has no console of its own: without a redirection, that of the caller serves.
HANDLE output()
{
    static const HANDLE found = [] {
        const HANDLE own = GetStdHandle(STD_OUTPUT_HANDLE);
        if (own && own != INVALID_HANDLE_VALUE)
            return own;
        AttachConsole(ATTACH_PARENT_PROCESS);
        return GetStdHandle(STD_OUTPUT_HANDLE);
    }();
    return found;
}

} // namespace

void print(std::string_view indentation, std::wstring_view line)
{
    std::string bytes(indentation);
    const int size = static_cast<int>(line.size());
    const int converted = WideCharToMultiByte(CP_UTF8, 0, line.data(), size, nullptr, 0, nullptr, nullptr);
    bytes.resize(indentation.size() + static_cast<std::size_t>(converted));
    WideCharToMultiByte(CP_UTF8, 0, line.data(), size, bytes.data() + indentation.size(), converted, nullptr,
                        nullptr);
    bytes += '\n';
    DWORD written = 0;
    WriteFile(output(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

void printLines(std::string_view indentation, std::wstring_view text)
{
    while (!text.empty())
    {
        const auto end = text.find_first_of(L"\r\n");
        if (end != 0)
            print(indentation, text.substr(0, end));
        text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + 1);
    }
}

} // namespace korvane::host
