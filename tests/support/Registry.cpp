#include "tests/support/Registry.h"

#include <KorvaneData.h>
#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>
#include <KorvaneLib.h>

#include <utility>

namespace korvane::test
{

namespace
{

constexpr const wchar_t* classesPath = L"Software\\Classes";

class Key
{
public:
    Key(HKEY hive, const std::wstring& path, REGSAM access = KEY_READ)
    {
        if (RegOpenKeyExW(hive, path.c_str(), 0, access, &key_) != ERROR_SUCCESS)
            key_ = nullptr;
    }
    static Key made(HKEY hive, const std::wstring& path)
    {
        Key key;
        RegCreateKeyExW(hive, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key.key_, nullptr);
        return key;
    }
    Key(Key&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    ~Key()
    {
        if (key_)
            RegCloseKey(key_);
    }

    explicit operator bool() const noexcept { return key_ != nullptr; }
    HKEY get() const noexcept { return key_; }

    std::vector<std::wstring> subkeys() const
    {
        std::vector<std::wstring> names;
        wchar_t name[256];
        for (DWORD index = 0, length = ARRAYSIZE(name);
             key_ &&
             RegEnumKeyExW(key_, index, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
             ++index, length = ARRAYSIZE(name))
            names.emplace_back(name, length);
        return names;
    }

private:
    Key() = default;

    HKEY key_ = nullptr;
};

/// The hive and the path within it.
std::pair<HKEY, std::wstring> placeOf(const std::wstring& path)
{
    return {path.starts_with(L"HKLM") ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER, path.substr(5)};
}

std::string printable(const std::wstring& text)
{
    std::string result;
    for (const wchar_t character : text)
        result += character < 0x80 ? static_cast<char>(character) : '?';
    return result;
}

} // namespace

std::optional<std::wstring> registryText(const std::wstring& path, const wchar_t* name)
{
    const auto [hive, rest] = placeOf(path);
    wchar_t text[1024];
    DWORD size = sizeof text;
    if (RegGetValueW(hive, rest.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size) != ERROR_SUCCESS)
        return std::nullopt;
    return text;
}

void forgetTypeLibraries()
{
    for (const GUID* library :
         {&LIBID_KorvaneDlg, &LIBID_KorvaneLib, &LIBID_KorvaneInterfaces, &LIBID_KorvaneData})
        UnRegisterTypeLib(*library, 1, 0, LOCALE_NEUTRAL, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
}

bool registryKeyExists(const std::wstring& path)
{
    const auto [hive, rest] = placeOf(path);
    return static_cast<bool>(Key(hive, rest));
}

Registrations Registrations::now()
{
    Registrations result;
    for (const auto& [hive, name] : {std::pair(HKEY_LOCAL_MACHINE, std::wstring(L"HKLM")),
                                     std::pair(HKEY_CURRENT_USER, std::wstring(L"HKCU"))})
    {
        const std::wstring classes = classesPath + std::wstring(L"\\");
        for (const wchar_t* container : {L"CLSID", L"TypeLib", L"Interface"})
        {
            std::wstring path = classes + container;
            const auto ids = Key(hive, path).subkeys();
            path += L'\\';
            for (const std::wstring& id : ids)
                result.collect(hive, name, path + id);
        }
        for (const std::wstring& progId : Key(hive, classesPath).subkeys())
            if (progId.starts_with(L"Korvane"))
                result.collect(hive, name, classes + progId);
    }
    return result;
}

void Registrations::collect(HKEY hive, const std::wstring& hiveName, const std::wstring& path)
{
    const Key key(hive, path);
    if (!key)
        return;
    Values& values = keys_[hiveName + L'\\' + path];
    wchar_t name[256];
    std::vector<BYTE> bytes(65536);
    for (DWORD index = 0;; ++index)
    {
        DWORD length = ARRAYSIZE(name);
        DWORD type = REG_NONE;
        auto size = static_cast<DWORD>(bytes.size());
        if (RegEnumValueW(key.get(), index, name, &length, nullptr, &type, bytes.data(), &size) !=
            ERROR_SUCCESS)
            break;
        values[std::wstring(name, length)] = {type,
                                              {bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(size)}};
    }
    const std::wstring start = path + L'\\';
    for (const std::wstring& sub : key.subkeys())
        collect(hive, hiveName, start + sub);
}

std::vector<std::string> Registrations::since(const Registrations& earlier) const
{
    std::vector<std::string> differences;
    for (const auto& [path, values] : keys_)
        if (const auto found = earlier.keys_.find(path); found == earlier.keys_.end())
            differences.push_back("+ " + printable(path));
        else if (found->second != values)
            differences.push_back("~ " + printable(path));
    for (const auto& [path, values] : earlier.keys_)
        if (!keys_.contains(path))
            differences.push_back("- " + printable(path));
    return differences;
}

void Registrations::restore() const
{
    const Registrations present = now();
    for (const auto& [path, values] : present.keys_)
        if (!keys_.contains(path))
        {
            const auto [hive, rest] = placeOf(path);
            RegDeleteTreeW(hive, rest.c_str()); // fails where the key above it went before
        }
    for (const auto& [path, values] : keys_)
    {
        const auto found = present.keys_.find(path);
        if (found != present.keys_.end() && found->second == values)
            continue;
        const auto [hive, rest] = placeOf(path);
        const Key key = Key::made(hive, rest);
        if (found != present.keys_.end())
            for (const auto& [name, value] : found->second)
                if (!values.contains(name))
                    RegDeleteValueW(key.get(), name.c_str());
        for (const auto& [name, value] : values)
            RegSetValueExW(key.get(), name.c_str(), 0, value.type, value.bytes.data(),
                           static_cast<DWORD>(value.bytes.size()));
    }
}

} // namespace korvane::test
