// A program file, read as a file: what it imports and exports.
#pragma once

#include "framework/com/Platform.h"

#include <cstddef>
#include <string>
#include <vector>

namespace korvane::test
{

class PortableExecutable
{
public:
    /// Reads the file. Throws a Failure when it cannot be read and std::out_of_range when it is no such file.
    explicit PortableExecutable(const std::wstring& path);

    WORD machine() const;
    bool isDll() const;
    bool hasRelocations() const;
    /// Of IMAGE_DLLCHARACTERISTICS_..., those for protection.
    WORD securityFlags() const;

    /// In lower case.
    std::vector<std::string> importedModules() const;
    std::vector<std::string> exportedNames() const;

private:
    template <class Structure> Structure at(std::size_t offset) const;
    std::string textAt(std::size_t offset) const;
    IMAGE_DATA_DIRECTORY directory(std::size_t index) const;
    std::size_t offsetOf(DWORD address) const;

    std::vector<std::byte> bytes_;
    IMAGE_NT_HEADERS headers_{};
    std::size_t sections_ = 0;
};

} // namespace korvane::test
