// A library whose string table lacks the locale is of no use and says so at once. Seen on copies of the DLL.
#include "framework/com/Variant.h"
#include "tests/support/Library.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <gmock/gmock.h>

#include <cwchar>
#include <vector>

namespace korvane::test
{

namespace
{

/// A copy of the DLL in which the first block of texts is another one.
class ChangedCopy
{
public:
    /// @param first text of id 0; an empty one is a missing one to the platform.
    explicit ChangedCopy(const wchar_t* first)
        : path_(folderOfTests() + L"\\KorvaneDlgTexts" + std::to_wstring(GetCurrentProcessId()) + L".dll")
    {
        EXPECT_TRUE(CopyFileW((folderOfTests() + L"\\KorvaneDlg.dll").c_str(), path_.c_str(), FALSE));
        std::vector<WORD> block;
        block.push_back(static_cast<WORD>(std::wcslen(first)));
        block.insert(block.end(), first, first + std::wcslen(first));
        block.insert(block.end(), 15, 0); // the other texts of the block are empty
        const HANDLE update = BeginUpdateResourceW(path_.c_str(), FALSE);
        EXPECT_NE(update, nullptr);
        EXPECT_TRUE(UpdateResourceW(update, RT_STRING, MAKEINTRESOURCEW(1), 1030, block.data(),
                                    static_cast<DWORD>(block.size() * sizeof(WORD))));
        EXPECT_TRUE(EndUpdateResourceW(update, FALSE));
        module_ = LoadLibraryW(path_.c_str());
        EXPECT_NE(module_, nullptr);
    }
    ChangedCopy(const ChangedCopy&) = delete;
    ChangedCopy& operator=(const ChangedCopy&) = delete;
    ~ChangedCopy()
    {
        EXPECT_EQ(entryPoint<HRESULT WINAPI()>("DllCanUnloadNow")(), S_OK);
        FreeLibrary(module_);
        DeleteFileW(path_.c_str());
    }

    HRESULT create(REFCLSID classId, REFIID iid, void** object) const
    {
        ComPtr<IClassFactory> factory;
        require(entryPoint<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(
            classId, IID_IClassFactory, factory.putVoid()));
        return factory->CreateInstance(nullptr, iid, object);
    }

private:
    template <class Function> Function* entryPoint(const char* name) const
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

    std::wstring path_;
    HMODULE module_ = nullptr;
};

HRESULT creationWith(const wchar_t* first)
{
    const ChangedCopy copy(first);
    void* object = &object;
    const HRESULT result = copy.create(__uuidof(::Resources), __uuidof(IResources), &object);
    EXPECT_EQ(object, nullptr);
    return result;
}

} // namespace

TEST(MissingTextsTests, ResourcesAreNotCreatedWithoutALocale)
{
    EXPECT_EQ(creationWith(L""), DISP_E_TYPEMISMATCH);
}

TEST(MissingTextsTests, ResourcesAreNotCreatedWithALocaleThatIsNoNumber)
{
    EXPECT_EQ(creationWith(L"English"), DISP_E_TYPEMISMATCH);
}

TEST(MissingTextsTests, ResourcesAreNotCreatedWithALocaleBeyondAllNumbers)
{
    EXPECT_EQ(creationWith(L"99999999999"), DISP_E_OVERFLOW);
}

TEST(MissingTextsTests, AnotherLocaleIsTheOneThatTheResourcesTell)
{
    const ChangedCopy copy(L"1030");
    ComPtr<IResources> resources;
    ASSERT_EQ(copy.create(__uuidof(::Resources), __uuidof(IResources), resources.putVoid()), S_OK);
    long locale = 0;
    EXPECT_EQ(resources->get_LocaleID(&locale), S_OK);
    EXPECT_EQ(locale, 1030);
}

// A dialog needs the resources, and fails as they do.
TEST(MissingTextsTests, ADialogWithoutTextsTellsWhatIsWrong)
{
    const ChangedCopy copy(L"English");
    ComPtr<IAppDialog> dialog;
    ASSERT_EQ(copy.create(__uuidof(::ctlEditGroups), __uuidof(IAppDialog), dialog.putVoid()), S_OK);
    Bstr title;
    EXPECT_EQ(dialog->get_Name(title.put()), DISP_E_TYPEMISMATCH);
    VARIANT_BOOL ready = VARIANT_TRUE;
    EXPECT_EQ(dialog->get_Ready(&ready), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(ready, VARIANT_FALSE);
}

} // namespace korvane::test
