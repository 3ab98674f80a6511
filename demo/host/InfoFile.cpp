#include "demo/host/InfoFile.h"

#include "framework/com/Failure.h"

#include <cstring>
#include <filesystem>

namespace korvane::host
{

namespace
{

// One per line, as ANSI text; an empty line would end them.
constexpr const char* labels = "Mobile phone\r\n"
                               "Private phone\r\n"
                               "Fax\r\n"
                               "E-mail\r\n"
                               "Address\r\n"
                               "Birthday\r\n";

} // namespace

void addInfoFile(const std::wstring& folder)
{
    const std::wstring path = folder + (folder.ends_with(L'\\') ? L"" : L"\\") + infoFile;
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS)
        return;
    DWORD written = 0;
    const bool done = file != INVALID_HANDLE_VALUE &&
                      WriteFile(file, labels, static_cast<DWORD>(std::strlen(labels)), &written, nullptr);
    const DWORD error = done ? ERROR_SUCCESS : GetLastError();
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
    if (!done)
        throw Failure(HRESULT_FROM_WIN32(error));
}

void addInfoFilesOf(const std::wstring& languages, const std::wstring& folder)
{
    std::error_code none; // a language need not have labels of its own
    for (const auto& file : std::filesystem::directory_iterator(languages + L"\\labels", none))
        std::filesystem::copy_file(file.path(), std::filesystem::path(folder) / file.path().filename(),
                                   std::filesystem::copy_options::skip_existing, none);
}

} // namespace korvane::host
