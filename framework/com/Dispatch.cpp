#include "framework/com/Dispatch.h"

#include "framework/com/Boundary.h"

#include <algorithm>

namespace korvane
{

namespace
{

/// A script may assign an object with Set to a property that takes any value, and without it to one that takes objects
/// only. What there is, is asked for: platforms differ in how they refuse the other.
WORD kindFor(const MemberEntry& member, WORD flags) noexcept
{
    const bool puts = flags == DISPATCH_PROPERTYPUT || flags == DISPATCH_PROPERTYPUTREF;
    const WORD known = member.kinds & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    return puts && known != 0 && (known & flags) == 0 ? known : flags;
}

} // namespace

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
        return table.information(member->face)
            ->Invoke(faces[member->face], id, kindFor(*member, flags), arguments, result, exception,
                     badArgument);
    });
}

} // namespace korvane
