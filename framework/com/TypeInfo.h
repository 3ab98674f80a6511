// The type information of the library's own interfaces, from the type libraries in the module's resources.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Platform.h"

#include <atomic>

namespace korvane
{

/// Keeps an interface's type information once it was needed. One per interface, never destroyed.
struct TypeInfoSlot
{
    const IID& iid;
    std::atomic<ITypeInfo*> information = nullptr;
    TypeInfoSlot* next = nullptr;
};

/// Loads it on first use. Throws a Failure when no type library of the module describes the interface.
ITypeInfo* typeInfoOf(TypeInfoSlot& slot);

template <class Interface> ITypeInfo* typeInfo()
{
    static TypeInfoSlot slot{__uuidof(Interface)};
    return typeInfoOf(slot);
}

/// The type information of a class, for IProvideClassInfo. The caller owns the reference.
ComPtr<ITypeInfo> classInfoOf(REFCLSID classId);

/// Lets go of what was kept; it is loaded again when needed.
void releaseTypeInfos() noexcept;

} // namespace korvane
