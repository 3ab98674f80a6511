#include "framework/com/Dispatch.h"

#include "framework/com/Boundary.h"

#include <algorithm>

namespace korvane
{

HRESULT typeInfoOf(ClassMembers members, UINT index, ITypeInfo** information) noexcept
{
    if (!information)
        return E_POINTER;
    *information = nullptr;
    if (index != 0)
        return DISP_E_BADINDEX;
    return guard([&] { *information = ComPtr<ITypeInfo>(members().information()).detach(); });
}

HRESULT idsOfNames(ClassMembers members, REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids) noexcept
{
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids || count == 0 || !names[0])
        return E_INVALIDARG;
    return guard([&]() -> HRESULT {
        std::fill_n(ids, count, DISPID_UNKNOWN);
        const MemberTable& table = members();
        const MemberEntry* member = table.find(std::wstring_view(names[0]));
        if (!member)
            return DISP_E_UNKNOWNNAME;
        ids[0] = member->id;
        // The names of arguments are left to the type library.
        return count == 1 ? S_OK : table.information(member->face)->GetIDsOfNames(names, count, ids);
    });
}

HRESULT invoke(ClassMembers members, std::span<IDispatch* const> faces, DISPID id, REFIID reserved,
               WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
               UINT* badArgument) noexcept
{
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    return guard([&] {
        const MemberTable& table = members();
        const MemberEntry* member = table.find(id);
        if (!member)
            return DISP_E_MEMBERNOTFOUND;
        const auto invokeAs = [&](WORD kind) {
            return table.information(member->face)
                ->Invoke(faces[member->face], id, kind, arguments, result, exception, badArgument);
        };
        const HRESULT outcome = invokeAs(flags);
        // A script may assign an object with Set to a property that takes any value, and without it to one that takes
        // objects only.
        if (outcome == DISP_E_MEMBERNOTFOUND && flags == DISPATCH_PROPERTYPUTREF)
            return invokeAs(DISPATCH_PROPERTYPUT);
        if (outcome == DISP_E_MEMBERNOTFOUND && flags == DISPATCH_PROPERTYPUT)
            return invokeAs(DISPATCH_PROPERTYPUTREF);
        return outcome;
    });
}

} // namespace korvane
