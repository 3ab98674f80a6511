// What is registered with COM, in both hives, as tests see it and put it back.
#pragma once

#include "framework/com/Platform.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace korvane::test
{

/// Where classes are registered, for the machine and for the user.
inline constexpr const wchar_t* machineClasses = L"HKLM\\Software\\Classes";
inline constexpr const wchar_t* userClasses = L"HKCU\\Software\\Classes";

/// A text in the registry; nothing where the key or the value is missing. Paths begin with HKLM or HKCU.
std::optional<std::wstring> registryText(const std::wstring& path, const wchar_t* name = nullptr);

bool registryKeyExists(const std::wstring& path);

/// Takes back what the platform does by itself: whichever program marshals a contract first, in whatever test, makes it
/// register the contract's type library.
void forgetTypeLibraries();

/// The classes, type libraries, interfaces and ProgIDs of the library, of every other library as well.
/// The keys that hold them, `CLSID` for example, do not count: the platform makes them and lets them stay.
class Registrations
{
public:
    /// What is registered now.
    static Registrations now();

    /// What became different since an earlier moment, one key per line, for example `+ HKLM\...\CLSID\{...}`.
    std::vector<std::string> since(const Registrations& earlier) const;

    /// Makes the registry what it was.
    void restore() const;

private:
    struct Value
    {
        DWORD type = REG_NONE;
        std::vector<BYTE> bytes;
        friend bool operator==(const Value&, const Value&) = default;
    };
    using Values = std::map<std::wstring, Value>;

    void collect(HKEY hive, const std::wstring& hiveName, const std::wstring& path);

    std::map<std::wstring, Values> keys_;
};

/// Puts back what was registered when it was made, whatever a test did.
class RegistryGuard
{
public:
    RegistryGuard() : before_(Registrations::now()) {}
    RegistryGuard(const RegistryGuard&) = delete;
    RegistryGuard& operator=(const RegistryGuard&) = delete;
    ~RegistryGuard() { before_.restore(); }

private:
    Registrations before_;
};

} // namespace korvane::test
