#include "framework/com/TypeInfo.h"

#include "framework/com/Decimal.h"
#include "framework/com/Failure.h"
#include "framework/com/Module.h"

#include <string>

namespace korvane
{

namespace
{

/// The library's resource for calls, in modules that have one.
constexpr int bindingLibrary = 100;

ComPtr<ITypeLib> libraryIn(int resource)
{
    wchar_t path[MAX_PATH];
    module::path(path);
    ComPtr<ITypeLib> library;
    require(
        LoadTypeLibEx((std::wstring(path) + L'\\' + decimal(resource)).c_str(), REGKIND_NONE, library.put()));
    return library;
}

ComPtr<ITypeInfo> describedIn(const ComPtr<ITypeLib>& library, REFGUID id) noexcept
{
    ComPtr<ITypeInfo> information;
    library->GetTypeInfoOfGuid(id, information.put());
    return information;
}

} // namespace

ComPtr<ITypeInfo> typeInfoOf(REFGUID id)
{
    for (int index = 1;; ++index) // the resources 1, 2 and so on, as far as they are numbered
        if (auto information = describedIn(libraryIn(index), id))
            return information;
}

ComPtr<ITypeInfo> bindingInfoOf(REFGUID id)
{
    ComPtr<ITypeInfo> information;
    if (FindResourceW(module::instance(), MAKEINTRESOURCEW(bindingLibrary), L"TYPELIB"))
        information = describedIn(libraryIn(bindingLibrary), id);
    return information ? information : typeInfoOf(id);
}

} // namespace korvane
