#include "framework/com/Dispatch.h"

#include "framework/com/Boundary.h"

namespace korvane
{

namespace
{

HRESULT invokeAs(std::span<const DualFace> faces, DISPID id, WORD flags, DISPPARAMS* arguments,
                 VARIANT* result, EXCEPINFO* exception, UINT* badArgument)
{
    for (const DualFace& face : faces)
    {
        if (!face.typeInformation)
            continue;
        const HRESULT outcome =
            face.typeInformation()->Invoke(face.object, id, flags, arguments, result, exception, badArgument);
        if (outcome != DISP_E_MEMBERNOTFOUND)
            return outcome;
    }
    return DISP_E_MEMBERNOTFOUND;
}

} // namespace

HRESULT typeInfoOf(std::span<const DualFace> faces, UINT index, ITypeInfo** information) noexcept
{
    if (!information)
        return E_POINTER;
    *information = nullptr;
    if (index != 0)
        return DISP_E_BADINDEX;
    return guard([&] {
        for (const DualFace& face : faces)
            if (face.typeInformation && !*information)
                *information = ComPtr<ITypeInfo>(face.typeInformation()).detach();
    });
}

HRESULT idsOfNames(std::span<const DualFace> faces, REFIID reserved, LPOLESTR* names, UINT count,
                   DISPID* ids) noexcept
{
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids || count == 0)
        return E_INVALIDARG;
    return guard([&]() -> HRESULT {
        HRESULT result = DISP_E_UNKNOWNNAME;
        for (const DualFace& face : faces)
        {
            if (!face.typeInformation)
                continue;
            ids[0] = DISPID_UNKNOWN;
            result = face.typeInformation()->GetIDsOfNames(names, count, ids);
            // A known member with an unknown argument name ends the search too: the member is the right one.
            if (result == S_OK || ids[0] != DISPID_UNKNOWN)
                return result;
        }
        return result;
    });
}

HRESULT invoke(std::span<const DualFace> faces, DISPID id, REFIID reserved, WORD flags, DISPPARAMS* arguments,
               VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept
{
    if (reserved != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    return guard([&] {
        SetErrorInfo(0, nullptr); // what is there is not about this call
        const HRESULT outcome = invokeAs(faces, id, flags, arguments, result, exception, badArgument);
        // A script may assign an object with Set to a property that takes any value.
        if (outcome == DISP_E_MEMBERNOTFOUND && flags == DISPATCH_PROPERTYPUTREF)
            return invokeAs(faces, id, DISPATCH_PROPERTYPUT, arguments, result, exception, badArgument);
        return outcome;
    });
}

} // namespace korvane
