// The DLL as a module: what it asks of the system, what it offers, and how long it stays.
#include "tests/library/PortableExecutable.h"
#include "tests/support/Allocation.h"
#include "tests/support/ComRules.h"
#include "tests/support/Leaks.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

#include <thread>

namespace korvane::test
{

namespace
{

const PortableExecutable& dll()
{
    static const PortableExecutable file(folderOfTests() + L"\\KorvaneDlg.dll");
    return file;
}

HRESULT getClassObject(REFCLSID classId, REFIID iid, void** object)
{
    static const auto function = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(library(), "DllGetClassObject")));
    return function(classId, iid, object);
}

} // namespace

// No runtime of a compiler has to be installed with the library.
TEST(ModuleTests, ImportsOnlyFromTheSystem)
{
    const auto imported = dll().importedModules();
    EXPECT_THAT(imported, testing::Contains("ole32.dll"));
    EXPECT_THAT(imported, testing::Each(testing::AnyOf("advapi32.dll", "comctl32.dll", "comdlg32.dll",
                                                       "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
                                                       "oleaut32.dll", "shell32.dll", "user32.dll")));
}

TEST(ModuleTests, ExportsTheEntryPointsOfAComServerAndNoMore)
{
    EXPECT_THAT(dll().exportedNames(),
                testing::UnorderedElementsAre("DllCanUnloadNow", "DllGetClassObject", "DllInstall",
                                              "DllRegisterServer", "DllUnregisterServer"));
}

TEST(ModuleTests, IsALibraryForThisPlatformThatMayBeMovedInMemory)
{
    EXPECT_EQ(dll().machine(), sizeof(void*) == 8 ? IMAGE_FILE_MACHINE_AMD64 : IMAGE_FILE_MACHINE_I386);
    EXPECT_TRUE(dll().isDll());
    EXPECT_TRUE(dll().hasRelocations());
    EXPECT_EQ(dll().securityFlags(),
              IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
}

// Where installers and the Explorer look.
TEST(ModuleTests, TellsWhatItIsAndThatItRegistersItself)
{
    const std::wstring path = folderOfTests() + L"\\KorvaneDlg.dll";
    std::vector<std::byte> information(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    ASSERT_TRUE(
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(information.size()), information.data()));
    const auto told = [&](const std::wstring& name) {
        void* text = nullptr;
        UINT length = 0;
        const BOOL found = VerQueryValueW(information.data(),
                                          (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &text, &length);
        return found ? narrow(static_cast<const wchar_t*>(text)) : "(none)";
    };
    for (const wchar_t* name : {L"FileVersion", L"ProductVersion"})
        EXPECT_EQ(told(name), KORVANE_VERSION);
    EXPECT_EQ(told(L"OriginalFilename"), "KorvaneDlg.dll");
    EXPECT_EQ(told(L"OLESelfRegister"), "");
    for (const wchar_t* name : {L"CompanyName", L"LegalCopyright", L"FileDescription", L"ProductName"})
        EXPECT_THAT(told(name), testing::Not(testing::AnyOf("", "(none)"))) << narrow(name);
}

TEST(ModuleTests, AnUnknownClassIsNotAvailable)
{
    const CLSID unknown{0x11111111, 0x2222, 0x3333, {1, 2, 3, 4, 5, 6, 7, 8}};
    void* object = &object;
    EXPECT_EQ(getClassObject(unknown, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(getClassObject(unknown, IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(getClassObject(__uuidof(::EditGroups), IID_IClassFactory, nullptr), E_POINTER);
}

TEST(ModuleTests, AFactoryHasOnlyTheInterfacesOfAFactory)
{
    for (const PublicClass& publicClass : publicClasses())
    {
        ComPtr<IUnknown> factory;
        ASSERT_EQ(getClassObject(publicClass.id, IID_IUnknown, factory.putVoid()), S_OK);
        EXPECT_TRUE(factory.as<IClassFactory>());
        EXPECT_FALSE(factory.as<IDispatch>());
        void* object = &object;
        EXPECT_EQ(getClassObject(publicClass.id, IID_IDispatch, &object), E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(factory.as<IClassFactory>()->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    }
}

TEST(ModuleTests, MayBeUnloadedWhenNothingIsAlive)
{
    EXPECT_EQ(canUnload(), S_OK);
    EXPECT_EQ(canUnload(), S_OK);
}

TEST(ModuleTests, EveryObjectAndEveryFactoryKeepsItLoaded)
{
    for (const PublicClass& publicClass : publicClasses())
    {
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(getClassObject(publicClass.id, IID_IClassFactory, factory.putVoid()), S_OK);
        EXPECT_EQ(canUnload(), S_FALSE) << narrow(publicClass.name);
        ComPtr<IUnknown> object;
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid()), S_OK);
        factory.reset();
        EXPECT_EQ(canUnload(), S_FALSE) << narrow(publicClass.name);
        object.reset();
        EXPECT_EQ(canUnload(), S_OK) << narrow(publicClass.name);
    }
}

TEST(ModuleTests, ALockOfTheServerKeepsItLoaded)
{
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(getClassObject(__uuidof(::EditGroups), IID_IClassFactory, factory.putVoid()), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.reset();
    EXPECT_EQ(canUnload(), S_FALSE);

    ASSERT_EQ(getClassObject(__uuidof(::EditGroups), IID_IClassFactory, factory.putVoid()), S_OK);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.reset();
    EXPECT_EQ(canUnload(), S_OK);
}

// Its own resources are made when they are needed, and are no reason to stay.
TEST(ModuleTests, TheResourcesThatTheLibraryMadeForItselfDoNotKeepItLoaded)
{
    {
        const auto dialog = create<IAppDialog>(__uuidof(::ctlEditGroups));
        Bstr title;
        ASSERT_EQ(dialog->get_Name(title.put()), S_OK);
        EXPECT_EQ(title, L"Group");
        EXPECT_EQ(canUnload(), S_FALSE);
    }
    EXPECT_EQ(canUnload(), S_OK);
}

TEST(ModuleTests, ResourcesThatAHostHoldsKeepItLoaded)
{
    ComPtr<IResources> held;
    {
        const auto dialog = create<IAppDialog>(__uuidof(::ctlEditGroups));
        Bstr title;
        ASSERT_EQ(dialog->get_Name(title.put()), S_OK);
        ASSERT_EQ(dialog->get_Resources(held.put()), S_OK);
        ASSERT_TRUE(held);
    }
    EXPECT_EQ(canUnload(), S_FALSE);
    held.reset();
    EXPECT_EQ(canUnload(), S_OK);
}

namespace
{

/// The library once more, as a module that can be unloaded as COM does it, without COM's delay.
class LoadedCopy
{
public:
    LoadedCopy()
    {
        EXPECT_TRUE(CopyFileW((folderOfTests() + L"\\KorvaneDlg.dll").c_str(), path_.c_str(), FALSE));
        module_ = LoadLibraryW(path_.c_str());
        EXPECT_NE(module_, nullptr);
    }
    LoadedCopy(const LoadedCopy&) = delete;
    LoadedCopy& operator=(const LoadedCopy&) = delete;
    ~LoadedCopy() { EXPECT_TRUE(DeleteFileW(path_.c_str())); }

    HMODULE module() const { return module_; }
    bool isLoaded() const { return GetModuleHandleW(path_.c_str()) != nullptr; }
    HRESULT canUnload() const { return entry<HRESULT WINAPI()>("DllCanUnloadNow")(); }
    void free() const { EXPECT_TRUE(FreeLibrary(module_)); }

    /// One without boxes and lists: Wine's leave memory behind when they go.
    ComPtr<IAppDialog> dialog() const
    {
        ComPtr<IClassFactory> factory;
        require(entry<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(
            __uuidof(::ctlMoveEvents), IID_IClassFactory, factory.putVoid()));
        ComPtr<IAppDialog> made;
        require(factory->CreateInstance(nullptr, __uuidof(IAppDialog), made.putVoid()));
        return made;
    }

private:
    template <class Function> Function* entry(const char* name) const
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

    std::wstring path_ =
        folderOfTests() + L"\\KorvaneDlgCopy" + std::to_wstring(GetCurrentProcessId()) + L".dll";
    HMODULE module_ = nullptr;
};

void useAndFreeCopy()
{
    const LoadedCopy copy;
    {
        const auto dialog = copy.dialog();
        Bstr title;
        EXPECT_EQ(dialog->get_Name(title.put()), S_OK);
        VARIANT_BOOL ready = VARIANT_FALSE;
        EXPECT_TRUE(FAILED(dialog->get_Ready(&ready))); // it has a window by then, but no command
        ComPtr<ITypeInfo> information;
        EXPECT_EQ(dialog->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.put()), S_OK);
    }
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(copy.canUnload(), S_OK);
    copy.free();
    EXPECT_FALSE(copy.isLoaded());
}

DWORD nextSlot()
{
    const DWORD slot = TlsAlloc();
    TlsFree(slot);
    return slot;
}

} // namespace

TEST(ModuleTests, ACopyIsGoneAfterItWasUsedAndFreed)
{
    useAndFreeCopy();
    const DWORD slot = nextSlot();
    useAndFreeCopy();
    // The library gives its thread slot back; the thread runtime of the compiler that it is built with keeps its own.
    EXPECT_LE(nextSlot(), slot + 1);
}

TEST(ModuleTests, ACopyLeavesNoMemoryBehind)
{
    auto& watch = LeakWatch::instance();
    useAndFreeCopy();
    useAndFreeCopy();
    const long before = watch.living().heapBlocks;
    for (int round = 0; round < 5; ++round)
        useAndFreeCopy();
    // One implementation of the platform keeps a block for the label that is given a font.
    EXPECT_LE(watch.living().heapBlocks, before + 5);
}

namespace
{

/// A thread with an apartment of its own that uses a dialog.
template <class Use> void inApartment(Use&& use)
{
    std::thread([&] {
        require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        use();
        CoUninitialize();
    }).join();
}

void askForTitle(const ComPtr<IAppDialog>& dialog)
{
    Bstr title;
    EXPECT_EQ(dialog->get_Name(title.put()), S_OK);
    EXPECT_FALSE(title.empty());
}

} // namespace

TEST(ModuleTests, AFinishedApartmentLeavesNoMemoryBehind)
{
    auto& watch = LeakWatch::instance();
    const auto use = [] { inApartment([] { askForTitle(create<IAppDialog>(__uuidof(::ctlEditGroups))); }); };
    use();
    use();
    const Living before = watch.living();
    for (int round = 0; round < 10; ++round)
        use();
    const Living after = watch.living();
    EXPECT_EQ(after.libraryBlocks, before.libraryBlocks);
    EXPECT_LT(after.heapBlocks, before.heapBlocks + 10);
}

// COM would come back for the end of that apartment.
TEST(ModuleTests, AnotherApartmentThatUsedItKeepsItLoadedUntilItEnds)
{
    inApartment([] {
        // It lives no longer than this line, and the library's state is for the apartment.
        ASSERT_EQ(create<IAppDialog>(__uuidof(::ctlEditGroups))->putref_Resources(nullptr), S_OK);
        std::thread([] { EXPECT_EQ(canUnload(), S_FALSE); }).join();
    });
    EXPECT_EQ(canUnload(), S_OK);
}

namespace
{

/// One of two watches on COM, of which the second one to hear of the end of an apartment frees a module, as COM does
/// then without asking it.
class Unloader final : public IInitializeSpy
{
public:
    explicit Unloader(const LoadedCopy& copy, int& told) : copy_(copy), told_(told)
    {
        require(CoRegisterInitializeSpy(this, &cookie_));
    }
    virtual ~Unloader() { CoRevokeInitializeSpy(cookie_); }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        *object = iid == IID_IUnknown || iid == IID_IInitializeSpy ? this : nullptr;
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP PreInitialize(DWORD, DWORD) override { return S_OK; }
    STDMETHODIMP PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
    STDMETHODIMP PreUninitialize(DWORD) override
    {
        if (++told_ == 2)
            copy_.free();
        return S_OK;
    }
    STDMETHODIMP PostUninitialize(DWORD) override { return S_OK; }

private:
    const LoadedCopy& copy_;
    int& told_;
    ULARGE_INTEGER cookie_{};
};

} // namespace

// One watch stands before the library's and one after it: whatever order COM calls them in, the last one unloads.
TEST(ModuleTests, ComMayUnloadItAtTheEndOfAnApartmentWhateverIsStillAlive)
{
    const LoadedCopy copy;
    IAppDialog* leaked = nullptr;
    std::thread([&] {
        require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
        int told = 0;
        const Unloader first(copy, told);
        auto dialog = copy.dialog();
        askForTitle(dialog);
        leaked = dialog.detach();
        const Unloader second(copy, told);
        CoUninitialize();
        EXPECT_EQ(told, 2);
    }).join();
    EXPECT_NE(leaked, nullptr);
    EXPECT_FALSE(copy.isLoaded());
}

namespace
{

ULARGE_INTEGER postponed{}; ///< the watch whose end COM was told and has put off
HMODULE staying = nullptr;

HRESULT WINAPI postponeEnd(ULARGE_INTEGER watch)
{
    postponed = watch;
    return S_OK;
}

BOOL WINAPI noteThatItStays(DWORD flags, const wchar_t* name, HMODULE* module)
{
    if ((flags & GET_MODULE_HANDLE_EX_FLAG_PIN) == 0)
        return GetModuleHandleExW(flags, name, module);
    return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                  GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                              name, &staying);
}

} // namespace

// Where COM puts the end of the watch off, it still calls it. Wine does not: here it is made to.
TEST(ModuleTests, ItStaysForAWatchThatComHasNotLetGoOf)
{
    const LoadedCopy copy;
    staying = nullptr;
    {
        const ImportPatch end(copy.module(), "CoRevokeInitializeSpy", reinterpret_cast<void*>(&postponeEnd));
        const ImportPatch stay(copy.module(), "GetModuleHandleExW",
                               reinterpret_cast<void*>(&noteThatItStays));
        ASSERT_TRUE(end.isInPlace() && stay.isInPlace());
        std::thread([&] {
            require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
            askForTitle(copy.dialog());
            CoUninitialize();
            require(CoRevokeInitializeSpy(postponed));
        }).join();
    }
    EXPECT_EQ(staying, copy.module());
    EXPECT_EQ(copy.canUnload(), S_OK);
    copy.free();
}

} // namespace korvane::test
