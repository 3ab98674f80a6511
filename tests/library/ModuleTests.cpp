// The DLL as a module: what it asks of the system, what it offers, and how long it stays.
#include "tests/library/PortableExecutable.h"
#include "tests/support/ComRules.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

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

// What COM does when it unloads, without COM's delay: the module answers, and then it really goes.
void useAndFreeCopy()
{
    const std::wstring copy =
        folderOfTests() + L"\\KorvaneDlgCopy" + std::to_wstring(GetCurrentProcessId()) + L".dll";
    ASSERT_TRUE(CopyFileW((folderOfTests() + L"\\KorvaneDlg.dll").c_str(), copy.c_str(), FALSE));
    const HMODULE module = LoadLibraryW(copy.c_str());
    ASSERT_NE(module, nullptr);
    {
        const auto getCopysClassObject = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(getCopysClassObject(__uuidof(::ctlEditGroups), IID_IClassFactory, factory.putVoid()), S_OK);
        ComPtr<IAppDialog> dialog;
        ASSERT_EQ(factory->CreateInstance(nullptr, __uuidof(IAppDialog), dialog.putVoid()), S_OK);
        Bstr title;
        EXPECT_EQ(dialog->get_Name(title.put()), S_OK);
        VARIANT_BOOL ready = VARIANT_FALSE;
        EXPECT_TRUE(FAILED(dialog->get_Ready(&ready))); // it has a window by then, but no command
        ComPtr<ITypeInfo> information;
        EXPECT_EQ(dialog->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.put()), S_OK);
    }
    SetErrorInfo(0, nullptr);
    const auto canCopyUnload = reinterpret_cast<HRESULT(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    EXPECT_EQ(canCopyUnload(), S_OK);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleW(copy.c_str()), nullptr);
    EXPECT_TRUE(DeleteFileW(copy.c_str()));
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

} // namespace korvane::test
