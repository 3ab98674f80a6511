#include "tests/demo/datalayer/DataLayer.h"

#include <filesystem>
#include <fstream>

using namespace korvane;
using namespace korvane::store::test;

namespace
{

constexpr const wchar_t* scratch = L"Software\\Korvane data layer test";

/// A part of the registry that stands in for the real one while it lives.
class ScratchRegistry
{
public:
    ScratchRegistry()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, scratch);
        RegCreateKeyW(HKEY_CURRENT_USER, (std::wstring(scratch) + L"\\Software\\Classes").c_str(), &classes_);
        RegCreateKeyW(HKEY_CURRENT_USER, scratch, &root_);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, root_);
        RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_);
    }
    ScratchRegistry(const ScratchRegistry&) = delete;
    ScratchRegistry& operator=(const ScratchRegistry&) = delete;
    ~ScratchRegistry()
    {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegCloseKey(classes_);
        RegCloseKey(root_);
        RegDeleteTreeW(HKEY_CURRENT_USER, scratch);
    }

    std::wstring value(const std::wstring& path, const wchar_t* name = nullptr) const
    {
        wchar_t text[MAX_PATH] = L"(none)";
        DWORD size = sizeof text;
        RegGetValueW(classes_, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
        return text;
    }

private:
    HKEY classes_ = nullptr;
    HKEY root_ = nullptr;
};

/// A program's manifest that depends on the data layer, in force while it lives.
class Manifest
{
public:
    explicit Manifest(const std::wstring& file)
    {
        std::ofstream(std::filesystem::path(file))
            << R"(<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0"><dependency>)"
               R"(<dependentAssembly><assemblyIdentity type="win32" name="KorvaneData.Assembly")"
               R"( version=")" KORVANE_VERSION R"(.0"/>)"
               R"(</dependentAssembly></dependency></assembly>)";
        const std::wstring folder = DataLayer::folder();
        ACTCTXW description{};
        description.cbSize = sizeof description;
        description.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
        description.lpSource = file.c_str();
        description.lpAssemblyDirectory = folder.c_str();
        context_ = CreateActCtxW(&description);
        EXPECT_NE(INVALID_HANDLE_VALUE, context_) << GetLastError();
        EXPECT_TRUE(ActivateActCtx(context_, &cookie_));
    }
    Manifest(const Manifest&) = delete;
    Manifest& operator=(const Manifest&) = delete;
    ~Manifest()
    {
        DeactivateActCtx(0, cookie_);
        ReleaseActCtx(context_);
    }

private:
    HANDLE context_ = nullptr;
    ULONG_PTR cookie_ = 0;
};

class Registration : public DataLayerTest
{
protected:
    HRESULT change(const char* entryPoint) const
    {
        return layer.entry<decltype(DllRegisterServer)>(entryPoint)();
    }

    template <class Interface> ComPtr<Interface> createByName(const wchar_t* progId) const
    {
        CLSID classId{};
        require(CLSIDFromProgID(progId, &classId));
        ComPtr<Interface> object;
        require(
            CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), object.putVoid()));
        return object;
    }
};

} // namespace

TEST_F(Registration, ComesAndGoes)
{
    const ScratchRegistry registry;
    const std::wstring databaseClass = L"{53FB8667-B01F-4A1E-97EC-A53A2DA2EB11}";
    const std::wstring settingsClass = L"{996D09C3-99EB-4243-838E-4CB5A2A52D18}";
    ASSERT_EQ(S_OK, change("DllRegisterServer"));
    EXPECT_EQ(databaseClass, registry.value(L"KorvaneData.Database\\CLSID"));
    EXPECT_EQ(settingsClass, registry.value(L"KorvaneData.Registry\\CLSID"));
    for (const std::wstring& classId : {databaseClass, settingsClass})
    {
        const std::wstring server = L"CLSID\\" + classId + L"\\InprocServer32";
        EXPECT_TRUE(
            std::filesystem::equivalent(DataLayer::folder() + L"\\KorvaneData.dll", registry.value(server)));
        EXPECT_EQ(L"Apartment", registry.value(server, L"ThreadingModel"));
        EXPECT_EQ(L"{147A019E-CB03-4F4F-8554-DE1FE8DA1B67}",
                  registry.value(L"CLSID\\" + classId + L"\\TypeLib"));
    }

    ASSERT_EQ(S_OK, change("DllUnregisterServer"));
    EXPECT_EQ(L"(none)", registry.value(L"KorvaneData.Database"));
    EXPECT_EQ(L"(none)", registry.value(L"KorvaneData.Registry"));
    EXPECT_EQ(L"(none)", registry.value(L"CLSID\\" + databaseClass));
    EXPECT_EQ(L"(none)", registry.value(L"CLSID\\" + settingsClass));
    EXPECT_EQ(S_OK, change("DllUnregisterServer"));
}

TEST_F(Registration, IsNotNeededWithAManifest)
{
    const Manifest manifest(folder.path() + L"\\test.manifest");
    const auto byName = createByName<IDatabase>(L"KorvaneData.Database");
    ComPtr<IRoot> root;
    call(byName, &IDatabase::Open, Bstr(file).get(), BSTR(nullptr), root.put());
    EXPECT_EQ(3u, load(groupsOf(root)).size());

    Variant value;
    call(createByName<IRegistry>(L"KorvaneData.Registry"), &IRegistry::GetValue, Bstr(L"SharedFolder").get(),
         VARIANT{}, value.put());
    EXPECT_EQ(folder.path(), toText(value.get()).c_str());
}
