// Registration with the system: what it writes, what it leaves alone, and that nothing of it stays.
#include "tests/support/Allocation.h"
#include "tests/support/ComRules.h"
#include "tests/support/Registry.h"
#include "tests/support/TemporaryFolder.h"

#include <KorvaneData.h>
#include <KorvaneDlg.h>
#include <KorvaneLib.h>

#include <gmock/gmock.h>
#include <sddl.h>

namespace korvane::test
{

namespace
{

using testing::Each;
using testing::IsEmpty;
using testing::StartsWith;

std::wstring text(const GUID& id)
{
    wchar_t buffer[40];
    StringFromGUID2(id, buffer, ARRAYSIZE(buffer));
    return buffer;
}

std::wstring libraryPath()
{
    wchar_t path[MAX_PATH];
    return {path, GetModuleFileNameW(library(), path, MAX_PATH)};
}

HRESULT change(const char* entryPoint, HMODULE module = library())
{
    return reinterpret_cast<HRESULT(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, entryPoint)))();
}

HRESULT registerServer()
{
    return change("DllRegisterServer");
}

HRESULT unregisterServer()
{
    return change("DllUnregisterServer");
}

HRESULT install(bool add, const wchar_t* commandLine)
{
    return reinterpret_cast<HRESULT(WINAPI*)(BOOL, LPCWSTR)>(
        reinterpret_cast<void*>(GetProcAddress(library(), "DllInstall")))(add, commandLine);
}

std::wstring progIdOf(const PublicClass& publicClass)
{
    return L"KorvaneDlg." + publicClass.name;
}

struct LibraryIds
{
    GUID id;
    std::vector<IID> interfaces; ///< those that automation marshals
};

LibraryIds idsOf(ITypeLib* described)
{
    LibraryIds ids{};
    TLIBATTR* attributes = nullptr;
    require(described->GetLibAttr(&attributes));
    ids.id = attributes->guid;
    described->ReleaseTLibAttr(attributes);
    for (UINT index = 0; index < described->GetTypeInfoCount(); ++index)
    {
        ComPtr<ITypeInfo> information;
        require(described->GetTypeInfo(index, information.put()));
        TYPEATTR* type = nullptr;
        require(information->GetTypeAttr(&type));
        if (type->typekind == TKIND_DISPATCH || (type->wTypeFlags & TYPEFLAG_FDUAL) != 0)
            ids.interfaces.push_back(type->guid);
        information->ReleaseTypeAttr(type);
    }
    return ids;
}

std::wstring registeredLibrary(const GUID& id)
{
    BSTR path = nullptr;
    if (FAILED(QueryPathOfRegTypeLib(id, 1, 0, 0, &path)))
        return L"(none)";
    std::wstring result = path;
    SysFreeString(path);
    return result.substr(0, result.find(L'\0'));
}

/// A contract's type library in a file of the host's, as a host would install and register it.
class HostsContract
{
public:
    HostsContract()
    {
        EXPECT_TRUE(CopyFileW((folderOfTests() + L"\\KorvaneLib.tlb").c_str(), file_.c_str(), FALSE));
        EXPECT_EQ(LoadTypeLibEx(file_.c_str(), REGKIND_NONE, library_.put()), S_OK);
        EXPECT_EQ(RegisterTypeLib(library_.get(), file_.data(), nullptr), S_OK);
    }
    HostsContract(const HostsContract&) = delete;
    HostsContract& operator=(const HostsContract&) = delete;
    ~HostsContract()
    {
        library_.reset();
        DeleteFileW(file_.c_str());
    }

    const std::wstring& file() const noexcept { return file_; }

    void deleteFile()
    {
        library_.reset();
        EXPECT_TRUE(DeleteFileW(file_.c_str()));
    }

private:
    static std::wstring fileName()
    {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        return std::wstring(folder) + L"HostsKorvaneLib" + std::to_wstring(GetCurrentProcessId()) + L".tlb";
    }

    std::wstring file_ = fileName();
    ComPtr<ITypeLib> library_;
};

/// The library once more, in a folder of its own.
class OtherCopy
{
public:
    OtherCopy()
    {
        const std::wstring file = folder_.path() + L"\\KorvaneDlg.dll";
        EXPECT_TRUE(CopyFileW(libraryPath().c_str(), file.c_str(), FALSE));
        module_ = LoadLibraryW(file.c_str());
    }
    OtherCopy(const OtherCopy&) = delete;
    OtherCopy& operator=(const OtherCopy&) = delete;
    ~OtherCopy() { FreeLibrary(module_); }

    HRESULT registerServer() const { return change("DllRegisterServer", module_); }
    HRESULT unregisterServer() const { return change("DllUnregisterServer", module_); }

private:
    TemporaryFolder folder_;
    HMODULE module_ = nullptr;
};

/// Stands in for the machine's hive while it lives; its classes can be read but not written.
class ReadOnlyMachine
{
public:
    ReadOnlyMachine()
    {
        RegCreateKeyW(HKEY_CURRENT_USER, path, &root_);
        RegCreateKeyW(root_, L"Software\\Classes", &classes_);
        protect(L"D:(A;;KR;;;WD)");
        EXPECT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, root_), ERROR_SUCCESS);
    }
    ReadOnlyMachine(const ReadOnlyMachine&) = delete;
    ReadOnlyMachine& operator=(const ReadOnlyMachine&) = delete;
    ~ReadOnlyMachine()
    {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        protect(L"D:(A;;KA;;;WD)");
        RegCloseKey(classes_);
        RegCloseKey(root_);
        RegDeleteTreeW(HKEY_CURRENT_USER, path);
    }

private:
    static constexpr const wchar_t* path = L"Software\\Korvane test of a machine";

    void protect(const wchar_t* rights) const
    {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        EXPECT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor,
                                                                         nullptr));
        EXPECT_EQ(RegSetKeySecurity(classes_, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
        LocalFree(descriptor);
    }

    HKEY root_ = nullptr;
    HKEY classes_ = nullptr;
};

/// Begins with nothing registered, and leaves what was registered before.
class RegistrationTests : public testing::Test
{
protected:
    RegistrationTests()
    {
        forgetTypeLibraries();
        unregisterServer();
        install(false, L"user");
        before = Registrations::now();
    }

    std::vector<std::string> changes() const { return Registrations::now().since(before); }

    RegistryGuard guard;
    Registrations before;
};

} // namespace

TEST_F(RegistrationTests, UndoingItLeavesNothing)
{
    ASSERT_EQ(registerServer(), S_OK);
    EXPECT_THAT(changes(), testing::Not(IsEmpty()));
    ASSERT_EQ(unregisterServer(), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(RegistrationTests, OnlyAddsToWhatIsThere)
{
    ASSERT_EQ(registerServer(), S_OK);
    EXPECT_THAT(changes(), Each(StartsWith("+ HKLM\\Software\\Classes\\")));
}

TEST_F(RegistrationTests, TwiceIsAsGoodAsOnce)
{
    ASSERT_EQ(registerServer(), S_OK);
    const auto once = Registrations::now();
    EXPECT_EQ(registerServer(), S_OK);
    EXPECT_THAT(Registrations::now().since(once), IsEmpty());
    EXPECT_EQ(unregisterServer(), S_OK);
    EXPECT_EQ(unregisterServer(), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(RegistrationTests, WhatAnotherCopyHasRegisteredSinceIsLeftToIt)
{
    ASSERT_EQ(registerServer(), S_OK);
    const OtherCopy copy;
    ASSERT_EQ(copy.registerServer(), S_OK);
    const auto ofCopy = Registrations::now();
    EXPECT_EQ(unregisterServer(), S_OK);
    EXPECT_THAT(Registrations::now().since(ofCopy), IsEmpty());
    EXPECT_EQ(copy.unregisterServer(), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(RegistrationTests, WhatACopyThatIsGoneHasLeftIsRemoved)
{
    ASSERT_EQ(OtherCopy().registerServer(), S_OK);
    EXPECT_EQ(unregisterServer(), S_OK);
    for (const PublicClass& publicClass : publicClasses())
    {
        EXPECT_FALSE(registryKeyExists(machineClasses + (L"\\CLSID\\" + text(publicClass.id))));
        EXPECT_FALSE(registryKeyExists(machineClasses + (L'\\' + progIdOf(publicClass))));
    }
}

namespace
{

HRESULT WINAPI refuseLibrary(ITypeLib*, wchar_t*, wchar_t*)
{
    return TYPE_E_REGISTRYACCESS;
}

/// The other word size has every class.
LSTATUS WINAPI openKey(HKEY key, const wchar_t* path, DWORD options, REGSAM access, HKEY* opened)
{
    const bool other = (access & (KEY_WOW64_32KEY | KEY_WOW64_64KEY)) != 0;
    return RegOpenKeyExW(key, other ? L"Software" : path, options, access, opened);
}

} // namespace

TEST_F(RegistrationTests, ARegistrationThatFailsLeavesWhatWasThereBefore)
{
    const auto fail = [] {
        const ImportPatch refusal(library(), "RegisterTypeLib", reinterpret_cast<void*>(&refuseLibrary));
        EXPECT_EQ(registerServer(), TYPE_E_REGISTRYACCESS);
    };
    fail();
    EXPECT_THAT(changes(), IsEmpty());
    ASSERT_EQ(registerServer(), S_OK);
    const auto registered = Registrations::now();
    fail();
    EXPECT_THAT(Registrations::now().since(registered), IsEmpty());
}

// Where the tests run, there may be one word size only: the other one is made up.
TEST_F(RegistrationTests, TheNamesThatBothWordSizesShareGoWithTheLastOfThem)
{
    ASSERT_EQ(registerServer(), S_OK);
    {
        const ImportPatch open(library(), "RegOpenKeyExW", reinterpret_cast<void*>(&openKey));
        ASSERT_TRUE(open.isInPlace());
        ASSERT_EQ(unregisterServer(), S_OK);
    }
    for (const PublicClass& publicClass : publicClasses())
    {
        EXPECT_FALSE(registryKeyExists(machineClasses + (L"\\CLSID\\" + text(publicClass.id))));
        EXPECT_EQ(registryText(machineClasses + (L'\\' + progIdOf(publicClass) + L"\\CLSID")),
                  text(publicClass.id));
    }
    EXPECT_EQ(unregisterServer(), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(RegistrationTests, EveryClassCanBeCreatedByItsName)
{
    ASSERT_EQ(registerServer(), S_OK);
    for (const PublicClass& publicClass : publicClasses())
    {
        CLSID id{};
        EXPECT_EQ(CLSIDFromProgID(progIdOf(publicClass).c_str(), &id), S_OK) << narrow(publicClass.name);
        EXPECT_EQ(id, publicClass.id);
        ComPtr<IUnknown> object;
        EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.putVoid()), S_OK)
            << narrow(publicClass.name);
        wchar_t* name = nullptr;
        EXPECT_EQ(ProgIDFromCLSID(id, &name), S_OK);
        EXPECT_STREQ(name, progIdOf(publicClass).c_str());
        CoTaskMemFree(name);
    }
}

TEST_F(RegistrationTests, AClassIsRegisteredCompletely)
{
    ASSERT_EQ(registerServer(), S_OK);
    for (const PublicClass& publicClass : publicClasses())
    {
        SCOPED_TRACE(narrow(publicClass.name));
        const std::wstring name = machineClasses + (L'\\' + progIdOf(publicClass));
        EXPECT_EQ(registryText(name + L"\\CLSID"), text(publicClass.id));
        EXPECT_THAT(registryText(name), testing::Optional(StartsWith(L"Korvane ")));

        const std::wstring key = machineClasses + (L"\\CLSID\\" + text(publicClass.id));
        EXPECT_EQ(registryText(key), registryText(name));
        EXPECT_EQ(registryText(key + L"\\InprocServer32"), libraryPath());
        EXPECT_EQ(registryText(key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
        EXPECT_EQ(registryText(key + L"\\ProgID"), progIdOf(publicClass));
        EXPECT_EQ(registryText(key + L"\\TypeLib"), text(LIBID_KorvaneDlg));
        EXPECT_EQ(registryText(key + L"\\Version"), L"1.0");
        EXPECT_EQ(registryKeyExists(key + L"\\Control"), publicClass.control);
        EXPECT_EQ(registryKeyExists(key + L"\\MiscStatus"), publicClass.control);
        EXPECT_EQ(registryKeyExists(key + L"\\ToolboxBitmap32"), publicClass.control);
    }
}

TEST_F(RegistrationTests, AControlsStatusIsTheOneThatItTellsItself)
{
    ASSERT_EQ(registerServer(), S_OK);
    for (const PublicClass& publicClass : publicClasses())
        if (publicClass.control)
        {
            const std::wstring key = machineClasses + (L"\\CLSID\\" + text(publicClass.id));
            DWORD status = 0;
            ASSERT_EQ(create<IOleObject>(publicClass.id)->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
            EXPECT_EQ(registryText(key + L"\\MiscStatus\\1"), std::to_wstring(status));
            EXPECT_EQ(registryText(key + L"\\MiscStatus"), L"0");
            DWORD registered = 0;
            EXPECT_EQ(OleRegGetMiscStatus(publicClass.id, DVASPECT_CONTENT, &registered), S_OK);
            EXPECT_EQ(registered, status);
        }
}

TEST_F(RegistrationTests, AControlHasAPictureForToolboxes)
{
    ASSERT_EQ(registerServer(), S_OK);
    for (const PublicClass& publicClass : publicClasses())
        if (publicClass.control)
        {
            SCOPED_TRACE(narrow(publicClass.name));
            const std::wstring picture =
                registryText(machineClasses + (L"\\CLSID\\" + text(publicClass.id) + L"\\ToolboxBitmap32"))
                    .value_or(L"");
            const auto comma = picture.rfind(L',');
            ASSERT_NE(comma, std::wstring::npos);
            EXPECT_EQ(picture.substr(0, comma), libraryPath());
            const auto id = std::stoul(picture.substr(comma + 1));
            const HANDLE bitmap = LoadImageW(library(), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, 0);
            ASSERT_NE(bitmap, nullptr);
            BITMAP size{};
            GetObjectW(bitmap, sizeof size, &size);
            EXPECT_EQ(size.bmWidth, 16);
            EXPECT_EQ(size.bmHeight, 16);
            DeleteObject(bitmap);
        }
}

// Dialogs write with the rights of their host: no page of a browser may run them.
TEST_F(RegistrationTests, NoClassCallsItselfSafeForScripts)
{
    ASSERT_EQ(registerServer(), S_OK);
    for (const PublicClass& publicClass : publicClasses())
    {
        const std::wstring categories =
            machineClasses + (L"\\CLSID\\" + text(publicClass.id) + L"\\Implemented Categories\\");
        EXPECT_FALSE(registryKeyExists(categories + L"{7DD95801-9882-11CF-9FA9-00AA006C42C4}"));
        EXPECT_FALSE(registryKeyExists(categories + L"{7DD95802-9882-11CF-9FA9-00AA006C42C4}"));
        EXPECT_EQ(registryKeyExists(categories + L"{40FC6ED4-2438-11CF-A3DB-080036F12502}"),
                  publicClass.control);
    }
}

TEST_F(RegistrationTests, TheTypeLibrariesAreFoundByTheirIds)
{
    ASSERT_EQ(registerServer(), S_OK);
    int resource = 0;
    for (const auto& described : typeLibraries())
    {
        const GUID id = idsOf(described.get()).id;
        EXPECT_EQ(registeredLibrary(id), libraryPath() + L'\\' + std::to_wstring(++resource));
        ComPtr<ITypeLib> loaded;
        EXPECT_EQ(LoadRegTypeLib(id, 1, 0, 0, loaded.put()), S_OK);
    }
    EXPECT_EQ(resource, 4);
}

TEST_F(RegistrationTests, AnInterfaceLeadsToTheLibraryThatDescribesIt)
{
    ASSERT_EQ(registerServer(), S_OK);
    for (const auto& described : typeLibraries())
    {
        const LibraryIds ids = idsOf(described.get());
        EXPECT_THAT(ids.interfaces, testing::Not(IsEmpty()));
        for (const IID& iid : ids.interfaces)
        {
            const std::wstring key = machineClasses + (L"\\Interface\\" + text(iid));
            EXPECT_EQ(registryText(key + L"\\TypeLib"), text(ids.id)) << narrow(text(iid));
            EXPECT_EQ(registryText(key + L"\\TypeLib", L"Version"), L"1.0") << narrow(text(iid));
            EXPECT_TRUE(registryText(key + L"\\ProxyStubClsid32")) << narrow(text(iid));
        }
    }
}

TEST_F(RegistrationTests, AContractThatAHostRegisteredIsLeftAlone)
{
    const HostsContract contract;
    const auto withContract = Registrations::now();

    ASSERT_EQ(registerServer(), S_OK);
    EXPECT_EQ(registeredLibrary(LIBID_KorvaneLib), contract.file());
    EXPECT_THAT(Registrations::now().since(withContract), Each(StartsWith("+ ")));

    ASSERT_EQ(unregisterServer(), S_OK);
    EXPECT_EQ(registeredLibrary(LIBID_KorvaneLib), contract.file());
    EXPECT_THAT(Registrations::now().since(withContract), IsEmpty());
}

TEST_F(RegistrationTests, AContractWhoseFileIsGoneIsRegisteredAnew)
{
    HostsContract contract;
    contract.deleteFile();
    ASSERT_EQ(registerServer(), S_OK);
    EXPECT_EQ(registeredLibrary(LIBID_KorvaneLib), libraryPath() + L"\\2");
    ASSERT_EQ(unregisterServer(), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(RegistrationTests, AContractThatAHostRegisteredLaterIsLeftAlone)
{
    ASSERT_EQ(registerServer(), S_OK);
    const HostsContract contract;
    ASSERT_EQ(unregisterServer(), S_OK);
    EXPECT_EQ(registeredLibrary(LIBID_KorvaneLib), contract.file());
    EXPECT_EQ(registryText(machineClasses + (L"\\Interface\\" + text(__uuidof(IAppCommand)) + L"\\TypeLib")),
              text(LIBID_KorvaneLib));
}

TEST_F(RegistrationTests, ForTheUserItWritesInTheUsersPartOnly)
{
    ASSERT_EQ(install(true, L"user"), S_OK);
    EXPECT_THAT(changes(), testing::Not(IsEmpty()));
    EXPECT_THAT(changes(), Each(StartsWith("+ HKCU\\Software\\Classes\\")));
    for (const PublicClass& publicClass : publicClasses())
    {
        EXPECT_EQ(registryText(userClasses + (L'\\' + progIdOf(publicClass) + L"\\CLSID")),
                  text(publicClass.id));
        EXPECT_EQ(registryText(userClasses + (L"\\CLSID\\" + text(publicClass.id) + L"\\InprocServer32")),
                  libraryPath());
    }
    for (const auto& described : typeLibraries())
    {
        const LibraryIds ids = idsOf(described.get());
        EXPECT_TRUE(registryKeyExists(userClasses + (L"\\TypeLib\\" + text(ids.id) + L"\\1.0")));
        for (const IID& iid : ids.interfaces)
            EXPECT_EQ(registryText(userClasses + (L"\\Interface\\" + text(iid) + L"\\TypeLib")),
                      text(ids.id));
    }

    ASSERT_EQ(install(false, L"user"), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

namespace
{

std::vector<std::string> registering; ///< what was called, in its order

void WINAPI enableForUser()
{
    registering.emplace_back("enable");
}

FARPROC WINAPI findFunction(HMODULE module, const char* name)
{
    return std::string_view(name) == "OaEnablePerUserTLibRegistration"
               ? reinterpret_cast<FARPROC>(&enableForUser)
               : GetProcAddress(module, name);
}

LSTATUS WINAPI redirect(HKEY key, HKEY replacement)
{
    registering.emplace_back(replacement ? "redirect" : "end");
    return RegOverridePredefKey(key, replacement);
}

HRESULT WINAPI registerLibrary(ITypeLib* described, wchar_t* path, wchar_t* help)
{
    registering.emplace_back("library");
    return RegisterTypeLib(described, const_cast<wchar_t*>(path), const_cast<wchar_t*>(help)); // only read
}

} // namespace

// Where the platform is Windows, its type library registration follows a redirected root only when it was told to, and
// a user without rights to the machine's part could not register. Wine follows in any case: all that can be seen here is
// that it is told in time.
TEST_F(RegistrationTests, ThePlatformIsToldThatTheRootOfClassesIsRedirected)
{
    const ImportPatch find(library(), "GetProcAddress", reinterpret_cast<void*>(&findFunction));
    const ImportPatch override(library(), "RegOverridePredefKey", reinterpret_cast<void*>(&redirect));
    const ImportPatch registration(library(), "RegisterTypeLib", reinterpret_cast<void*>(&registerLibrary));
    ASSERT_TRUE(find.isInPlace() && override.isInPlace() && registration.isInPlace());
    registering.clear();
    ASSERT_EQ(install(true, L"user"), S_OK);
    EXPECT_THAT(registering, testing::ElementsAre("enable", "redirect", "library", "library", "library",
                                                  "library", "end"));
    registering.clear();
    ASSERT_EQ(install(false, L"user"), S_OK);
    EXPECT_THAT(registering, testing::ElementsAre("enable", "redirect", "end"));
}

TEST_F(RegistrationTests, TheUserIsNamedInAnyCase)
{
    ASSERT_EQ(install(true, L"USER"), S_OK);
    EXPECT_THAT(changes(), Each(StartsWith("+ HKCU\\Software\\Classes\\")));
    ASSERT_EQ(install(false, L"User"), S_OK);
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(RegistrationTests, WithoutANamedUserItIsForTheMachine)
{
    for (const wchar_t* commandLine : {static_cast<const wchar_t*>(nullptr), L"", L"users"})
    {
        ASSERT_EQ(install(true, commandLine), S_OK);
        EXPECT_THAT(changes(), Each(StartsWith("+ HKLM\\Software\\Classes\\")));
        ASSERT_EQ(install(false, commandLine), S_OK);
        EXPECT_THAT(changes(), IsEmpty());
    }
}

TEST_F(RegistrationTests, UndoingItForTheUserKeepsTheMachines)
{
    ASSERT_EQ(registerServer(), S_OK);
    const auto forMachine = Registrations::now();
    ASSERT_EQ(install(true, L"user"), S_OK);
    ASSERT_EQ(install(false, L"user"), S_OK);
    EXPECT_THAT(Registrations::now().since(forMachine), IsEmpty());
}

TEST_F(RegistrationTests, ForTheMachineItIsCompleteWhereTheUserHasItAlready)
{
    ASSERT_EQ(registerServer(), S_OK);
    const auto ofMachine = changes();
    ASSERT_EQ(unregisterServer(), S_OK);

    ASSERT_EQ(install(true, L"user"), S_OK);
    const auto forUser = Registrations::now();
    ASSERT_EQ(registerServer(), S_OK);
    EXPECT_EQ(Registrations::now().since(forUser), ofMachine);
    ASSERT_EQ(unregisterServer(), S_OK);
    EXPECT_THAT(Registrations::now().since(forUser), IsEmpty());
}

// The user's part comes before the machine's: what stood there would hide the host's contract from its user.
TEST_F(RegistrationTests, AContractThatAHostRegisteredForTheMachineIsNotHiddenFromTheUser)
{
    const HostsContract contract;
    ASSERT_EQ(install(true, L"user"), S_OK);
    EXPECT_FALSE(registryKeyExists(userClasses + (L"\\TypeLib\\" + text(LIBID_KorvaneLib))));
    ASSERT_EQ(install(false, L"user"), S_OK);
    EXPECT_EQ(registeredLibrary(LIBID_KorvaneLib), contract.file());
}

TEST_F(RegistrationTests, WhereTheMachineCannotBeWrittenItIsForTheUser)
{
    {
        const ReadOnlyMachine machine;
        HKEY key = nullptr;
        ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes", 0, KEY_CREATE_SUB_KEY, &key),
                  ERROR_ACCESS_DENIED);
        ASSERT_EQ(registerServer(), S_OK);
    }
    EXPECT_THAT(changes(), testing::Not(IsEmpty()));
    EXPECT_THAT(changes(), Each(StartsWith("+ HKCU\\Software\\Classes\\")));
    {
        const ReadOnlyMachine machine;
        ASSERT_EQ(unregisterServer(), S_OK);
    }
    EXPECT_THAT(changes(), IsEmpty());
}

} // namespace korvane::test
