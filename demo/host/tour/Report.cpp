#include "demo/host/tour/Report.h"

#include "framework/com/Failure.h"

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

void writeLine(HANDLE file, std::wstring_view line)
{
    const int size = static_cast<int>(line.size());
    const int converted = WideCharToMultiByte(CP_UTF8, 0, line.data(), size, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(converted), '\0');
    WideCharToMultiByte(CP_UTF8, 0, line.data(), size, bytes.data(), converted, nullptr, nullptr);
    bytes += '\n';
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

} // namespace

void print(std::wstring_view line)
{
    writeLine(output(), line);
}

Report::Report(const std::wstring& file, bool everything)
    : file_(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr)),
      everything_(everything)
{
    if (file_ == INVALID_HANDLE_VALUE)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

Report::~Report()
{
    CloseHandle(file_);
}

void Report::detail(std::wstring_view text, int indentation)
{
    while (!text.empty())
    {
        const auto end = text.find_first_of(L"\r\n");
        if (end != 0)
        {
            const auto line =
                std::wstring(static_cast<std::size_t>(indentation), L' ').append(text.substr(0, end));
            writeLine(file_, line);
            if (everything_)
                print(line);
        }
        text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + 1);
    }
}

void Report::summary(std::wstring_view line)
{
    if (!everything_)
        print(line);
}

} // namespace korvane::host
