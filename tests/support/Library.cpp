#include "tests/support/Library.h"

#include "framework/com/Bstr.h"

namespace korvane::test
{

namespace
{

template <class Function> Function* entryPoint(const char* name)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library(), name)));
}

} // namespace

std::wstring folderOfTests()
{
    wchar_t path[MAX_PATH];
    const std::wstring file(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return file.substr(0, file.find_last_of(L'\\'));
}

HMODULE library()
{
    static const HMODULE loaded = LoadLibraryW((folderOfTests() + L"\\KorvaneDlg.dll").c_str());
    return loaded;
}

HRESULT create(REFCLSID classId, REFIID iid, void** object)
{
    static auto* const getClassObject =
        entryPoint<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject");
    ComPtr<IClassFactory> factory;
    const HRESULT result = getClassObject(classId, IID_IClassFactory, factory.putVoid());
    return FAILED(result) ? result : factory->CreateInstance(nullptr, iid, object);
}

HRESULT canUnload()
{
    static auto* const canUnloadNow = entryPoint<HRESULT WINAPI()>("DllCanUnloadNow");
    return canUnloadNow();
}

ErrorInfo errorOf(HRESULT number)
{
    ErrorInfo error{number, {}, {}};
    ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, information.put()) == S_OK)
    {
        Bstr source;
        Bstr description;
        information->GetSource(source.put());
        information->GetDescription(description.put());
        error.source = source.view();
        error.description = description.view();
    }
    return error;
}

} // namespace korvane::test
