// Calls of COM methods as C++ calls: what fails is thrown, and what comes out is returned, owned.
//
//   call(groups, &IGroups::Remove, id, &removed);
//   const bool granted = fetch(groups, &IGroups::HasAccess, 3L, id);
#pragma once

#include "framework/com/Bstr.h"
#include "framework/com/ComPtr.h"
#include "framework/com/Failure.h"
#include "framework/com/Variant.h"

#include <tuple>
#include <type_traits>

namespace korvane
{

/// Calls a method of an object and throws a Failure, with the object's error information, when it fails.
template <class Object, class Interface, class... Parameters, class... Arguments>
HRESULT call(const ComPtr<Object>& object, HRESULT (STDMETHODCALLTYPE Interface::*method)(Parameters...),
             Arguments&&... arguments)
{
    if (!object)
        throwFailure(E_POINTER);
    const ComPtr<Object> held(object.get()); // the pointer may be emptied, or its owner end, in the call
    SetErrorInfo(0, nullptr);                // what is there belongs to an earlier call
    const HRESULT result = (held.get()->*method)(std::forward<Arguments>(arguments)...);
    if (FAILED(result))
        throwFailureOfCall(result, static_cast<Interface*>(held.get()), __uuidof(Interface));
    return result;
}

// What came out of a call, in the hands of an owner.
inline bool owned(VARIANT_BOOL flag) noexcept
{
    return flag != VARIANT_FALSE;
}
inline long owned(long number) noexcept
{
    return number;
}
inline OleDate owned(DATE days) noexcept
{
    return {days};
}
inline HWND owned(HWND window) noexcept
{
    return window;
}
inline Bstr owned(BSTR text) noexcept
{
    return Bstr::adopt(text);
}
inline Variant owned(const VARIANT& value) noexcept
{
    return Variant::adopt(value);
}
template <class Interface> ComPtr<Interface> owned(Interface* object) noexcept
{
    return ComPtr<Interface>::adopt(object);
}

/// What the last of a method's parameters gives out.
template <class... Parameters>
using LastOut =
    std::remove_pointer_t<std::tuple_element_t<sizeof...(Parameters) - 1, std::tuple<Parameters...>>>;

/// Calls a method and returns what its last parameter gives out. What a failing call leaves there is not touched: it is
/// nobody's.
template <class Object, class Interface, class... Parameters, class... Arguments>
auto fetch(const ComPtr<Object>& object, HRESULT (STDMETHODCALLTYPE Interface::*method)(Parameters...),
           Arguments&&... arguments)
{
    LastOut<Parameters...> out{};
    call(object, method, std::forward<Arguments>(arguments)..., &out);
    return owned(out);
}

/// The same where a failure is no more than nothing: Nothing, Empty, no text.
template <class Object, class Interface, class... Parameters, class... Arguments>
auto fetchIfAny(const ComPtr<Object>& object, HRESULT (STDMETHODCALLTYPE Interface::*method)(Parameters...),
                Arguments&&... arguments) noexcept
{
    LastOut<Parameters...> out{};
    const bool came =
        object && SUCCEEDED((object.get()->*method)(std::forward<Arguments>(arguments)..., &out));
    return owned(came ? out : LastOut<Parameters...>{});
}

} // namespace korvane
