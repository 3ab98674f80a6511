// Late binding of an object through the type information of its dual interfaces.
#pragma once

#include "framework/com/MemberTable.h"

#include <array>
#include <span>
#include <type_traits>

namespace korvane
{

/// The table of a class, made on first use.
using ClassMembers = const MemberTable& (*)();

// The members of IDispatch over all dual interfaces of an object.
HRESULT typeInfoOf(ClassMembers members, UINT index, ITypeInfo** information) noexcept;
HRESULT idsOfNames(ClassMembers members, REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids) noexcept;
/// @param faces the object's interfaces, as they stand in the table.
HRESULT invoke(ClassMembers members, std::span<IDispatch* const> faces, DISPID id, REFIID reserved,
               WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
               UINT* badArgument) noexcept;

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
        return typeInfoOf(&members, index, information);
    }

    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        return idsOfNames(&members, reserved, names, count, ids);
    }

    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override
    {
        const std::array<IDispatch*, sizeof...(Interfaces)> faces{face<Interfaces>()...};
        return invoke(&members, faces, id, reserved, flags, arguments, result, exception, badArgument);
    }

protected:
    using Base::Base;
    ~LateBound() = default;

private:
    template <class Interface> static constexpr bool isDual = std::is_base_of_v<IDispatch, Interface>;

    static const MemberTable& members()
    {
        static MemberTableSlot slot;
        const IID* const ids[] = {isDual<Interfaces> ? &__uuidof(Interfaces) : nullptr...};
        return memberTable(slot, ids);
    }

    template <class Interface> IDispatch* face() noexcept
    {
        if constexpr (isDual<Interface>)
            return static_cast<Interface*>(static_cast<Class*>(this));
        else
            return nullptr;
    }
};

} // namespace korvane
