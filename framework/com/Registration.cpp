#include "framework/com/Registration.h"

#include "framework/com/Boundary.h"
#include "framework/com/Decimal.h"
#include "framework/com/Module.h"

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

/// While it lives, everything that is written under HKEY_CLASSES_ROOT, by the platform's own type library
/// registration too, goes to one part of the registry: that key by itself is a view of both parts, and writes to the
/// user's where the user has the same key.
class ClassesRoot
{
public:
    explicit ClassesRoot(Scope scope)
        : classes_(scope == Scope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER, L"Software\\Classes")
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

void registerClass(const LibraryRegistration& library, const ClassEntry& entry)
{
    const std::wstring progId = std::wstring(library.name) + L'.' + entry.name;
    const std::wstring classId = text(*entry.classId);
    const std::wstring path = modulePath();

    const Key program(HKEY_CLASSES_ROOT, progId);
    program.set(nullptr, entry.description);
    program.sub(L"CLSID", classId);

    const Key key(HKEY_CLASSES_ROOT, L"CLSID\\" + classId);
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

void deleteTree(const std::wstring& path)
{
    const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, path.c_str());
    if (status != ERROR_FILE_NOT_FOUND)
        requireRegistry(status);
}

struct Library
{
    std::wstring path;
    ComPtr<ITypeLib> library;
    TLIBATTR attributes;
};

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

bool sameFile(const std::wstring& left, const std::wstring& right)
{
    return CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

/// Where a type library is registered; empty when it is not.
std::wstring registeredPath(const TLIBATTR& attributes)
{
    Bstr path;
    const HRESULT result = QueryPathOfRegTypeLib(attributes.guid, attributes.wMajorVerNum,
                                                 attributes.wMinorVerNum, attributes.lcid, path.put());
    return SUCCEEDED(result) ? std::wstring(path.c_str()) : std::wstring();
}

/// True when somebody else has registered a contract, at a file that is still there: a registration whose file is
/// gone would leave callers without the contract.
bool isRegisteredElsewhere(const Library& own)
{
    const std::wstring registered = registeredPath(own.attributes);
    return !registered.empty() && !sameFile(registered, own.path) &&
           SUCCEEDED(LoadTypeLibEx(registered.c_str(), REGKIND_NONE, ComPtr<ITypeLib>().put()));
}

/// The type libraries to register: the module's own, and the contracts that nobody else has registered.
std::vector<Library> librariesToRegister(int count)
{
    std::vector<Library> libraries;
    for (int index = 1; index <= count; ++index)
        if (Library library = loadLibrary(index); index == 1 || !isRegisteredElsewhere(library))
            libraries.push_back(std::move(library));
    return libraries;
}

void unregisterLibrary(int index)
{
    const Library own = loadLibrary(index);
    if (!sameFile(registeredPath(own.attributes), own.path))
        return;
    const TLIBATTR& attributes = own.attributes;
    require(UnRegisterTypeLib(attributes.guid, attributes.wMajorVerNum, attributes.wMinorVerNum,
                              attributes.lcid, attributes.syskind));
}

void removeEverything(const LibraryRegistration& library, std::span<const ClassEntry> classes)
{
    for (const ClassEntry& entry : classes)
    {
        deleteTree(std::wstring(library.name) + L'.' + entry.name);
        deleteTree(L"CLSID\\" + text(*entry.classId));
    }
    for (int index = 1; index <= library.typeLibraries; ++index)
        unregisterLibrary(index);
}

} // namespace

void registerModule(const LibraryRegistration& library, std::span<const ClassEntry> classes, Scope scope)
{
    // Looked up before the user's part takes the place of the whole: a contract of the machine counts for users too.
    std::vector<Library> libraries = librariesToRegister(library.typeLibraries);
    const ClassesRoot root(scope);
    const auto failure = attempt([&] {
        for (Library& own : libraries)
            require(RegisterTypeLib(own.library.get(), own.path.data(), nullptr));
        for (const ClassEntry& entry : classes)
            registerClass(library, entry);
    });
    if (!failure)
        return;
    attempt([&] { removeEverything(library, classes); });
    throw *failure;
}

void unregisterModule(const LibraryRegistration& library, std::span<const ClassEntry> classes, Scope scope)
{
    const ClassesRoot root(scope);
    removeEverything(library, classes);
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

} // namespace korvane
