// A temporary folder with what is put into it.
#pragma once

#include "framework/com/Platform.h"

#include <filesystem>
#include <string>

namespace korvane::test
{

class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        static int count = 0;
        const auto name =
            L"korvane " + std::to_wstring(GetCurrentProcessId()) + L'-' + std::to_wstring(++count);
        const auto path = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(path); // what a program left that had the same id and was killed
        std::filesystem::create_directories(path);
        path_ = path.wstring();
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::wstring& path() const noexcept { return path_; }

private:
    std::wstring path_;
};

} // namespace korvane::test
