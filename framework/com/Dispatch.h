// Late binding of an object through the type information of its dual interfaces.
#pragma once

#include "framework/com/TypeInfo.h"

#include <array>
#include <span>
#include <type_traits>

namespace korvane
{

/// One interface of an object, as late binding sees it.
struct DualFace
{
    ITypeInfo* (*typeInformation)() = nullptr; ///< null for an interface that is not dual
    IDispatch* object = nullptr;
};

// The members of IDispatch over all dual interfaces of an object, the first one's name or id winning.
HRESULT typeInfoOf(std::span<const DualFace> faces, UINT index, ITypeInfo** information) noexcept;
HRESULT idsOfNames(std::span<const DualFace> faces, REFIID reserved, LPOLESTR* names, UINT count,
                   DISPID* ids) noexcept;
HRESULT invoke(std::span<const DualFace> faces, DISPID id, REFIID reserved, WORD flags, DISPPARAMS* arguments,
               VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

/// Implements IDispatch on top of a base that inherits it, once for all of the base's dual interfaces.
template <class Class, class Base, class... Interfaces> class LateBound : public Base
{
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        if (!count)
            return E_POINTER;
        *count = 1;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** information) override
    {
        return typeInfoOf(faces(), index, information);
    }

    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        return idsOfNames(faces(), reserved, names, count, ids);
    }

    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override
    {
        return invoke(faces(), id, reserved, flags, arguments, result, exception, badArgument);
    }

protected:
    using Base::Base;
    ~LateBound() = default;

private:
    template <class Interface> DualFace face() noexcept
    {
        if constexpr (std::is_base_of_v<IDispatch, Interface>)
            return {&typeInfo<Interface>, static_cast<Interface*>(static_cast<Class*>(this))};
        else
            return {};
    }

    std::array<DualFace, sizeof...(Interfaces)> faces() noexcept { return {face<Interfaces>()...}; }
};

} // namespace korvane
