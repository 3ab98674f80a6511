// Type information from the type libraries in the module's resources.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Platform.h"

namespace korvane
{

/// The type information of an interface or a class. Throws a Failure when no type library of the module describes it.
ComPtr<ITypeInfo> typeInfoOf(REFGUID id);

/// The same for calls through it: where the module has a type library in which everything stands that parameters refer
/// to, from there. The platform would look for a neighbour's types in the registry.
ComPtr<ITypeInfo> bindingInfoOf(REFGUID id);

} // namespace korvane
