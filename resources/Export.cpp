#include "resources/Resources.h"

#include <memory>
#include <span>
#include <string>

namespace korvane
{

namespace
{

/// A resource's type or id: a number, or a name.
class ResourceKey
{
public:
    explicit ResourceKey(const VARIANT& value)
    {
        const Variant direct = Variant::valueOf(value);
        if (direct.type() == VT_BSTR)
            name_ = direct.get().bstrVal ? direct.get().bstrVal : L"";
        else if (number_ = toLong(direct.get()); number_ < 0 || number_ > 0xffff)
            throw Failure(DISP_E_OVERFLOW);
    }

    const wchar_t* get() const noexcept { return name_.empty() ? MAKEINTRESOURCEW(number_) : name_.c_str(); }

private:
    std::wstring name_;
    long number_ = 0;
};

std::span<const std::byte> customResource(const VARIANT& type, const VARIANT& id)
{
    const HRSRC place = FindResourceW(module::instance(), ResourceKey(id).get(), ResourceKey(type).get());
    if (!place)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    const void* bytes = LockResource(LoadResource(module::instance(), place));
    return {static_cast<const std::byte*>(bytes), SizeofResource(module::instance(), place)};
}

struct CloseFile
{
    void operator()(HANDLE file) const noexcept { CloseHandle(file); }
};

/// Writes at the start of the file. An existing longer file keeps its tail: it is not truncated.
void writeAtStart(BSTR fileName, std::span<const std::byte> bytes)
{
    const HANDLE opened = CreateFileW(fileName ? fileName : L"", GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
    const std::unique_ptr<void, CloseFile> file(opened);
    DWORD written = 0;
    if (!WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ||
        written != bytes.size())
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

} // namespace

STDMETHODIMP Resources::Export(VARIANT resourceType, VARIANT resourceId, BSTR fileName, VARIANT_BOOL* written)
{
    return returns(written, [&] {
        return !attempt([&] { writeAtStart(fileName, customResource(resourceType, resourceId)); });
    });
}

} // namespace korvane
