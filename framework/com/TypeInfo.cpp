#include "framework/com/TypeInfo.h"

#include "framework/com/Decimal.h"
#include "framework/com/Failure.h"
#include "framework/com/Module.h"

#include <string>

namespace korvane
{

namespace
{

std::atomic<TypeInfoSlot*> loadedSlots;

/// Looks through the module's type libraries, resources 1, 2 and so on, as far as they are numbered.
ComPtr<ITypeInfo> findTypeInfo(REFGUID guid)
{
    wchar_t path[MAX_PATH];
    module::path(path);
    for (int index = 1;; ++index)
    {
        ComPtr<ITypeLib> library;
        require(LoadTypeLibEx((std::wstring(path) + L'\\' + decimal(index)).c_str(), REGKIND_NONE,
                              library.put()));
        ComPtr<ITypeInfo> information;
        if (SUCCEEDED(library->GetTypeInfoOfGuid(guid, information.put())))
            return information;
    }
}

} // namespace

ITypeInfo* typeInfoOf(TypeInfoSlot& slot)
{
    if (ITypeInfo* information = slot.information)
        return information;

    ComPtr<ITypeInfo> found = findTypeInfo(slot.iid);
    ITypeInfo* expected = nullptr;
    if (!slot.information.compare_exchange_strong(expected, found.get()))
        return expected; // another apartment was quicker
    slot.next = loadedSlots;
    while (!loadedSlots.compare_exchange_weak(slot.next, &slot))
    {
    }
    return found.detach();
}

ComPtr<ITypeInfo> classInfoOf(REFCLSID classId)
{
    return findTypeInfo(classId);
}

void releaseTypeInfos() noexcept
{
    for (TypeInfoSlot* slot = loadedSlots.exchange(nullptr); slot; slot = slot->next)
        ComPtr<ITypeInfo>::adopt(slot->information.exchange(nullptr));
}

} // namespace korvane
