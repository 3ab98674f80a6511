#include "framework/com/Registration.h"

#include "framework/com/Boundary.h"
#include "framework/com/Decimal.h"
#include "framework/com/Module.h"

#include <algorithm>
#include <string>
#include <vector>

namespace korvane
{

namespace
{

void requireRegistry(LSTATUS status)
{
    if (status != ERROR_SUCCESS)
        throw Failure(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

class Key
{
public:
    explicit Key(HKEY key) noexcept : key_(key) {}
    Key(HKEY parent, const std::wstring& path)
    {
        requireRegistry(
            RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key_, nullptr));
    }
    /// What is there already; without it, the key is null.
    static Key existing(HKEY parent, const std::wstring& path) noexcept
    {
        HKEY key = nullptr;
        RegOpenKeyExW(parent, path.c_str(), 0, KEY_QUERY_VALUE, &key);
        return Key(key);
    }
    Key(Key&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    ~Key()
    {
        if (key_)
            RegCloseKey(key_);
    }

    HKEY get() const noexcept { return key_; }

    void set(const wchar_t* name, const std::wstring& text) const
    {
        requireRegistry(RegSetValueExW(key_, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                                       static_cast<DWORD>(text.size() + 1) * DWORD{sizeof(wchar_t)}));
    }

    Key sub(const wchar_t* name, const std::wstring& text = {}) const
    {
        Key key(key_, name);
        if (!text.empty())
            key.set(nullptr, text);
        return key;
    }

private:
    HKEY key_ = nullptr;
};

HKEY hiveOf(Scope scope) noexcept
{
    return scope == Scope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

/// While it lives, everything that is written under HKEY_CLASSES_ROOT, by the platform's own type library
/// registration too, goes to one part of the registry: that key by itself is a view of both parts, and writes to the
/// user's where the user has the same key.
class ClassesRoot
{
public:
    explicit ClassesRoot(Scope scope) : classes_(hiveOf(scope), L"Software\\Classes")
    {
        enableForTypeLibraries();
        requireRegistry(RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_.get()));
    }
    ClassesRoot(const ClassesRoot&) = delete;
    ClassesRoot& operator=(const ClassesRoot&) = delete;
    ~ClassesRoot() { RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr); }

private:
    /// The platform's type library registration has a mind of its own since Windows Vista: it writes to the machine's
    /// part, whatever the key is, unless it was told otherwise. Looked up by name: not every platform has it.
    static void enableForTypeLibraries() noexcept
    {
        const auto enable = reinterpret_cast<void(WINAPI*)()>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"oleaut32"), "OaEnablePerUserTLibRegistration")));
        if (enable)
            enable();
    }

    Key classes_;
};

std::wstring text(const GUID& guid)
{
    wchar_t buffer[40];
    StringFromGUID2(guid, buffer, ARRAYSIZE(buffer));
    return buffer;
}

std::wstring modulePath()
{
    wchar_t buffer[MAX_PATH];
    module::path(buffer);
    return buffer;
}

std::wstring keyOf(const ClassEntry& entry)
{
    return L"CLSID\\" + text(*entry.classId);
}

std::wstring progIdOf(const LibraryRegistration& library, const ClassEntry& entry)
{
    return std::wstring(library.name) + L'.' + entry.name;
}

void registerClass(const LibraryRegistration& library, const ClassEntry& entry)
{
    const std::wstring progId = progIdOf(library, entry);
    const std::wstring path = modulePath();

    const Key program(HKEY_CLASSES_ROOT, progId);
    program.set(nullptr, entry.description);
    program.sub(L"CLSID", text(*entry.classId));

    const Key key(HKEY_CLASSES_ROOT, keyOf(entry));
    key.set(nullptr, entry.description);
    key.sub(L"InprocServer32", path).set(L"ThreadingModel", L"Apartment");
    key.sub(L"ProgID", progId);
    key.sub(L"Programmable");
    key.sub(L"TypeLib", text(*library.typeLibrary));
    key.sub(L"Version", L"1.0");
    if (entry.toolboxBitmap == 0)
        return;
    key.sub(L"Control");
    key.sub(L"MiscStatus", L"0").sub(L"1", decimal(static_cast<long>(library.controlStatus)));
    key.sub(L"ToolboxBitmap32", path + L',' + decimal(entry.toolboxBitmap));
    key.sub(L"Implemented Categories").sub(L"{40FC6ED4-2438-11CF-A3DB-080036F12502}"); // controls
}

std::wstring textAt(HKEY hive, const std::wstring& path, const wchar_t* name)
{
    wchar_t buffer[MAX_PATH + 8]; // a file, with the number of a resource
    DWORD size = sizeof buffer;
    const LSTATUS status = RegGetValueW(hive, path.c_str(), name, RRF_RT_REG_SZ, nullptr, buffer, &size);
    return status == ERROR_SUCCESS ? std::wstring(buffer) : std::wstring();
}

bool sameFile(const std::wstring& left, const std::wstring& right)
{
    return CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

void deleteTree(const std::wstring& path)
{
    const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, path.c_str());
    if (status != ERROR_FILE_NOT_FOUND)
        requireRegistry(status);
}

/// The file of a class that is registered.
std::wstring serverOf(const ClassEntry& entry)
{
    return textAt(HKEY_CLASSES_ROOT, keyOf(entry) + L"\\InprocServer32", nullptr);
}

bool isRegistered(std::span<const ClassEntry> classes)
{
    return std::any_of(classes.begin(), classes.end(),
                       [](const ClassEntry& entry) { return sameFile(serverOf(entry), modulePath()); });
}

/// Each word size has classes of its own, but since Windows 7 both share the names. Where Windows knows one word size
/// only, there is no other one to ask, and the class is gone.
bool isRegisteredForOtherWordSize(const ClassEntry& entry, Scope scope)
{
    const REGSAM otherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    HKEY found = nullptr;
    const LSTATUS status = RegOpenKeyExW(hiveOf(scope), (L"Software\\Classes\\" + keyOf(entry)).c_str(), 0,
                                         KEY_QUERY_VALUE | otherView, &found);
    const Key key(found);
    return status == ERROR_SUCCESS;
}

/// A class that another copy of the module has registered is that copy's, if it is still there.
void unregisterClass(const LibraryRegistration& library, const ClassEntry& entry, Scope scope)
{
    const std::wstring server = serverOf(entry);
    if (!sameFile(server, modulePath()) && GetFileAttributesW(server.c_str()) != INVALID_FILE_ATTRIBUTES)
        return;
    deleteTree(keyOf(entry));
    if (!isRegisteredForOtherWordSize(entry, scope))
        deleteTree(progIdOf(library, entry));
}

struct Library
{
    std::wstring path;
    ComPtr<ITypeLib> library;
    TLIBATTR attributes;
};

ComPtr<ITypeLib> loadFile(const std::wstring& path) noexcept
{
    ComPtr<ITypeLib> library;
    LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put());
    return library;
}

Library loadLibrary(int index)
{
    Library result{modulePath() + L'\\' + decimal(index), {}, {}};
    require(LoadTypeLibEx(result.path.c_str(), REGKIND_NONE, result.library.put()));
    TLIBATTR* attributes = nullptr;
    require(result.library->GetLibAttr(&attributes));
    result.attributes = *attributes;
    result.library->ReleaseTLibAttr(attributes);
    return result;
}

/// The key of a type library that tells its file, for one word size in one part of the registry. Its default value is
/// the file in use. Each module that brings the library along has a value there by its own name, which is its file:
/// the platform deletes all of them with the key, and none of its own is changed.
class LibraryKey
{
public:
    LibraryKey(Scope scope, const TLIBATTR& attributes)
        : hive_(hiveOf(scope)),
          path_(L"Software\\Classes\\TypeLib\\" + text(attributes.guid) + L'\\' + version(attributes) +
                (sizeof(void*) == 8 ? L"\\0\\win64" : L"\\0\\win32"))
    {
    }

    std::wstring fileInUse() const { return value(nullptr); }
    std::wstring fileOf(const wchar_t* module) const { return value(module); }

    void note(const wchar_t* module, const std::wstring& file) const { Key(hive_, path_).set(module, file); }
    void forget(const wchar_t* module) const { RegDeleteKeyValueW(hive_, path_.c_str(), module); }

    /// The files of the modules that are noted.
    std::vector<std::wstring> noted() const
    {
        std::vector<std::wstring> files;
        const Key key = Key::existing(hive_, path_);
        wchar_t name[256];
        DWORD length = ARRAYSIZE(name);
        for (DWORD index = 0; RegEnumValueW(key.get(), index, name, &length, nullptr, nullptr, nullptr,
                                            nullptr) == ERROR_SUCCESS;
             ++index, length = ARRAYSIZE(name))
            if (length != 0)
                files.push_back(value(name));
        return files;
    }

private:
    /// As in the platform's own keys: hexadecimal.
    static std::wstring version(const TLIBATTR& attributes)
    {
        wchar_t buffer[16];
        wsprintfW(buffer, L"%x.%x", attributes.wMajorVerNum, attributes.wMinorVerNum);
        return buffer;
    }

    std::wstring value(const wchar_t* name) const { return textAt(hive_, path_, name); }

    HKEY hive_;
    std::wstring path_;
};

enum class Holder
{
    nobody, ///< or a file that is gone: it would leave callers without the contract
    module, ///< this one, or another one that shares it
    host
};

Holder holderOf(const LibraryKey& key, const Library& own)
{
    const std::wstring file = key.fileInUse();
    if (sameFile(file, own.path))
        return Holder::module;
    if (file.empty() || !loadFile(file))
        return Holder::nobody;
    for (const std::wstring& noted : key.noted())
        if (sameFile(noted, file))
            return Holder::module;
    return Holder::host;
}

/// A contract that the host has registered is the host's: where it is for the machine, the user's part, which comes
/// first, is not to hide it. What a module has registered for the machine may go with it, and a user needs his own.
bool isTheHosts(const Library& contract, Scope scope)
{
    const LibraryKey key(scope, contract.attributes);
    return holderOf(key, contract) == Holder::host ||
           (scope == Scope::user && key.fileInUse().empty() &&
            holderOf(LibraryKey(Scope::machine, contract.attributes), contract) == Holder::host);
}

void registerLibrary(const wchar_t* module, Library& own, Scope scope)
{
    require(RegisterTypeLib(own.library.get(), own.path.data(), nullptr));
    LibraryKey(scope, own.attributes).note(module, own.path);
}

void registerContract(const wchar_t* module, Library& contract, Scope scope)
{
    if (isTheHosts(contract, scope))
        return;
    const LibraryKey key(scope, contract.attributes);
    const bool isAnotherModules =
        holderOf(key, contract) == Holder::module && !sameFile(key.fileInUse(), key.fileOf(module));
    if (isAnotherModules)
        key.note(module, contract.path);
    else
        registerLibrary(module, contract, scope);
}

void unregisterLibrary(const wchar_t* module, int index, Scope scope)
{
    const Library own = loadLibrary(index);
    const LibraryKey key(scope, own.attributes);
    if (sameFile(key.fileOf(module), own.path))
        key.forget(module);
    if (!sameFile(key.fileInUse(), own.path))
        return;
    for (std::wstring& heir : key.noted())
        if (const auto library = loadFile(heir))
        {
            require(RegisterTypeLib(library.get(), heir.data(), nullptr));
            return;
        }
    const TLIBATTR& attributes = own.attributes;
    require(UnRegisterTypeLib(attributes.guid, attributes.wMajorVerNum, attributes.wMinorVerNum,
                              attributes.lcid, attributes.syskind));
}

void removeEverything(const LibraryRegistration& library, std::span<const ClassEntry> classes, Scope scope)
{
    for (const ClassEntry& entry : classes)
        unregisterClass(library, entry, scope);
    for (int index = 1; index <= library.typeLibraries; ++index)
        unregisterLibrary(library.name, index, scope);
}

} // namespace

void registerModule(const LibraryRegistration& library, std::span<const ClassEntry> classes, Scope scope)
{
    const ClassesRoot root(scope);
    const bool again = isRegistered(classes);
    undoOnFailure(
        [&] {
            Library own = loadLibrary(1);
            registerLibrary(library.name, own, scope);
            for (int index = 2; index <= library.typeLibraries; ++index)
            {
                Library contract = loadLibrary(index);
                registerContract(library.name, contract, scope);
            }
            for (const ClassEntry& entry : classes)
                registerClass(library, entry);
        },
        [&] {
            if (!again) // else there is a registration that still holds
                removeEverything(library, classes, scope);
        });
}

void unregisterModule(const LibraryRegistration& library, std::span<const ClassEntry> classes, Scope scope)
{
    const ClassesRoot root(scope);
    removeEverything(library, classes, scope);
}

Scope writableScope() noexcept
{
    HKEY classes = nullptr;
    const LSTATUS status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes", 0,
                                         KEY_CREATE_SUB_KEY | KEY_SET_VALUE, &classes);
    if (status != ERROR_SUCCESS)
        return Scope::user;
    RegCloseKey(classes);
    return Scope::machine;
}

Scope scopeOf(LPCWSTR commandLine) noexcept
{
    const bool forUser =
        commandLine && CompareStringOrdinal(commandLine, -1, L"user", -1, TRUE) == CSTR_EQUAL;
    return forUser ? Scope::user : writableScope();
}

} // namespace korvane
