// Arguments that callers give as VARIANTs.
#pragma once

#include "framework/com/Platform.h"

#include <optional>
#include <string>
#include <vector>

namespace korvane::store
{

/// Whether a value is Empty, by reference or not.
bool isEmpty(const VARIANT& value) noexcept;

/// The number that a value holds, by reference or not.
std::optional<long> longIn(const VARIANT& value);

/// The link id that a value holds. What is no number is the id of no link group: 0.
long linkIn(const VARIANT& value);

/// The numbers in an array of VARIANTs, given by reference or not. Throws an error for everything else.
std::vector<long> namesIn(const VARIANT& value);

/// A value as the trace shows it.
struct Argument
{
    const VARIANT& value;
};
std::wstring shown(const Argument& argument);

} // namespace korvane::store
