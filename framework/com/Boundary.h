// The one boundary where a C++ exception becomes an HRESULT with error information.
#pragma once

#include "framework/com/Call.h"

#include <optional>
#include <type_traits>

namespace korvane
{

/// The exception being handled, as a Failure: std::bad_alloc is E_OUTOFMEMORY, and what nobody knows is
/// E_UNEXPECTED, for the library is a guest in somebody's process and must not end it.
Failure currentFailure() noexcept;

/// Sets up what the first exception, of the process and of the calling thread, would have to allocate: when memory is
/// short, it would be too late by then.
void prepareForFailures() noexcept;

/// Runs plain C++ behind a COM method. The body returns nothing, or an HRESULT such as S_FALSE.
template <class Body> HRESULT guard(Body&& body) noexcept
{
    try
    {
        if constexpr (std::is_void_v<decltype(body())>)
        {
            body();
            return S_OK;
        }
        else
            return body();
    }
    catch (...)
    {
        return currentFailure().report();
    }
}

/// Runs plain C++ where a failure is to be kept or shown instead of returned. Empty when it succeeded.
template <class Body> std::optional<Failure> attempt(Body&& body) noexcept
{
    try
    {
        body();
        return std::nullopt;
    }
    catch (...)
    {
        return currentFailure();
    }
}

/// The same where the failure is told to somebody at once, and success is to cost nothing.
template <class Body, class Tell> void attempt(Body&& body, Tell&& tell) noexcept
{
    try
    {
        body();
    }
    catch (...)
    {
        tell(currentFailure());
    }
}

/// Runs a body and, where it fails, takes back what it has begun. The body's failure is the one that is thrown.
template <class Body, class Undo> void undoOnFailure(Body&& body, Undo&& undo)
{
    const auto failure = attempt(std::forward<Body>(body));
    if (!failure)
        return;
    attempt(std::forward<Undo>(undo));
    throw *failure;
}

// What a C++ value becomes when it leaves through an out parameter.
inline BSTR released(Bstr&& text)
{
    return text.detach();
}
inline VARIANT released(Variant&& value)
{
    return value.detach();
}
inline VARIANT_BOOL released(bool&& flag)
{
    return flag ? VARIANT_TRUE : VARIANT_FALSE;
}
inline long released(long&& number)
{
    return number;
}
inline DATE released(OleDate&& date)
{
    return date.days;
}
template <class Interface> Interface* released(ComPtr<Interface>&& object)
{
    return object.detach();
}

/// As guard, for a method with one result: the out parameter is checked and cleared first, and stored last.
template <class Result, class Body> HRESULT returns(Result* result, Body&& body) noexcept
{
    if (!result)
        return Failure(E_POINTER).report();
    *result = Result{};
    return guard([&] { *result = released(body()); });
}

// The one-line bodies of properties that are fields: read(value, GroupID) and write(GroupID, value).
template <class Result, class Field> HRESULT read(Result* value, const Field& field) noexcept
{
    return returns(value, [&] { return field; });
}

inline HRESULT write(long& field, long value) noexcept
{
    field = value;
    return S_OK;
}
inline HRESULT write(bool& field, VARIANT_BOOL value) noexcept
{
    field = value != VARIANT_FALSE;
    return S_OK;
}
inline HRESULT write(OleDate& field, DATE value) noexcept
{
    field = {value};
    return S_OK;
}
inline HRESULT write(Bstr& field, BSTR value) noexcept
{
    return guard([&] { field = Bstr(view(value)); });
}
template <class Interface> HRESULT write(ComPtr<Interface>& field, Interface* value) noexcept
{
    field = ComPtr<Interface>(value);
    return S_OK;
}

/// Throws E_POINTER for an out or object parameter that must not be null.
template <class Pointer> Pointer* notNull(Pointer* pointer)
{
    if (!pointer)
        throw Failure(E_POINTER);
    return pointer;
}

} // namespace korvane
