// Calls of objects that are known by the names of their members only, as a script makes them.
#pragma once

#include "framework/com/Call.h"

#include <initializer_list>
#include <string_view>
#include <vector>

namespace korvane
{

/// Arguments as Invoke wants them: the last one first. They stay the caller's.
std::vector<VARIANT> lastFirst(std::initializer_list<Variant> arguments);

/// The value of a property. Throws the object's failure, or DISP_E_UNKNOWNNAME where it has no such member.
Variant get(const ComPtr<IDispatch>& object, std::wstring_view property,
            std::initializer_list<Variant> arguments = {});

/// The same where a failure, or no such property, is no more than nothing: Empty.
Variant getIfAny(const ComPtr<IDispatch>& object, std::wstring_view property);

/// Calls a method and returns what it returns.
Variant invoke(const ComPtr<IDispatch>& object, std::wstring_view method,
               std::initializer_list<Variant> arguments = {});

/// What a failed Invoke has told. The texts are taken out of the exception.
Failure failureOfInvoke(HRESULT outcome, EXCEPINFO& exception);

/// The object in a value; empty where there is none.
ComPtr<IUnknown> objectIn(const Variant& value);

/// A new object of the class that a ProgID names.
ComPtr<IUnknown> createObject(std::wstring_view progId);

/// The same, asked for an interface. Throws E_NOINTERFACE for an object without it.
template <class Interface> ComPtr<Interface> createByProgId(std::wstring_view progId)
{
    auto wanted = createObject(progId).as<Interface>();
    if (!wanted)
        throw Failure(E_NOINTERFACE);
    return wanted;
}

} // namespace korvane
