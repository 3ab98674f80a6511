#include "framework/com/TypeInfo.h"

#include "framework/com/Decimal.h"
#include "framework/com/Failure.h"
#include "framework/com/Module.h"

#include <string>

namespace korvane
{

ComPtr<ITypeInfo> typeInfoOf(REFGUID id)
{
    wchar_t path[MAX_PATH];
    module::path(path);
    for (int index = 1;; ++index) // the resources 1, 2 and so on, as far as they are numbered
    {
        ComPtr<ITypeLib> library;
        require(LoadTypeLibEx((std::wstring(path) + L'\\' + decimal(index)).c_str(), REGKIND_NONE,
                              library.put()));
        ComPtr<ITypeInfo> information;
        if (SUCCEEDED(library->GetTypeInfoOfGuid(id, information.put())))
            return information;
    }
}

} // namespace korvane
