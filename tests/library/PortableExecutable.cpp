#include "tests/library/PortableExecutable.h"

#include "framework/com/Failure.h"

#include <cctype>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace korvane::test
{

namespace
{

struct CloseFile
{
    void operator()(HANDLE file) const noexcept { CloseHandle(file); }
};

std::vector<std::byte> read(const std::wstring& path)
{
    const HANDLE opened = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    const std::unique_ptr<void, CloseFile> file(opened);
    std::vector<std::byte> bytes(GetFileSize(opened, nullptr));
    DWORD count = 0;
    if (!ReadFile(opened, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) ||
        count != bytes.size())
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    return bytes;
}

} // namespace

PortableExecutable::PortableExecutable(const std::wstring& path) : bytes_(read(path))
{
    const auto start = static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(0).e_lfanew);
    headers_ = at<IMAGE_NT_HEADERS>(start);
    if (headers_.Signature != IMAGE_NT_SIGNATURE)
        throw std::out_of_range("no program file");
    sections_ = start + offsetof(IMAGE_NT_HEADERS, OptionalHeader) + headers_.FileHeader.SizeOfOptionalHeader;
}

WORD PortableExecutable::machine() const
{
    return headers_.FileHeader.Machine;
}

bool PortableExecutable::isDll() const
{
    return (headers_.FileHeader.Characteristics & IMAGE_FILE_DLL) != 0;
}

bool PortableExecutable::hasRelocations() const
{
    return directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size != 0;
}

WORD PortableExecutable::securityFlags() const
{
    return headers_.OptionalHeader.DllCharacteristics &
           (IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
}

std::vector<std::string> PortableExecutable::importedModules() const
{
    std::vector<std::string> names;
    std::size_t offset = offsetOf(directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
    for (;; offset += sizeof(IMAGE_IMPORT_DESCRIPTOR))
    {
        const auto import = at<IMAGE_IMPORT_DESCRIPTOR>(offset);
        if (import.Name == 0)
            return names;
        std::string name = textAt(offsetOf(import.Name));
        for (char& character : name)
            character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        names.push_back(std::move(name));
    }
}

std::vector<std::string> PortableExecutable::exportedNames() const
{
    std::vector<std::string> names;
    const auto exports =
        at<IMAGE_EXPORT_DIRECTORY>(offsetOf(directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress));
    const std::size_t table = offsetOf(exports.AddressOfNames);
    names.reserve(exports.NumberOfFunctions);
    for (DWORD index = 0; index < exports.NumberOfNames; ++index)
        names.push_back(textAt(offsetOf(at<DWORD>(table + index * sizeof(DWORD)))));
    // Without a name, by number only.
    for (DWORD index = exports.NumberOfNames; index < exports.NumberOfFunctions; ++index)
        names.push_back("#" + std::to_string(index + exports.Base));
    return names;
}

template <class Structure> Structure PortableExecutable::at(std::size_t offset) const
{
    if (offset + sizeof(Structure) > bytes_.size())
        throw std::out_of_range("beyond the end of the file");
    Structure result{};
    std::memcpy(&result, bytes_.data() + offset, sizeof result);
    return result;
}

std::string PortableExecutable::textAt(std::size_t offset) const
{
    std::string text;
    for (char character = at<char>(offset); character != '\0'; character = at<char>(++offset))
        text += character;
    return text;
}

IMAGE_DATA_DIRECTORY PortableExecutable::directory(std::size_t index) const
{
    return headers_.OptionalHeader.DataDirectory[index];
}

std::size_t PortableExecutable::offsetOf(DWORD address) const
{
    for (WORD index = 0; index < headers_.FileHeader.NumberOfSections; ++index)
    {
        const auto section = at<IMAGE_SECTION_HEADER>(sections_ + index * sizeof(IMAGE_SECTION_HEADER));
        if (address >= section.VirtualAddress && address < section.VirtualAddress + section.SizeOfRawData)
            return address - section.VirtualAddress + section.PointerToRawData;
    }
    throw std::out_of_range("an address in no section");
}

} // namespace korvane::test
