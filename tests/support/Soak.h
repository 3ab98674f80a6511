// How long the long tests run.
#pragma once

#include "framework/com/Platform.h"

#include <cwchar>

namespace korvane::test
{

/// KORVANE_SOAK in the environment multiplies what the long tests repeat; by default they do what is needed to see one
/// thing that each repetition leaves behind.
inline int soak()
{
    wchar_t text[16]{};
    GetEnvironmentVariableW(L"KORVANE_SOAK", text, 16);
    const long factor = std::wcstol(text, nullptr, 10);
    return factor > 1 ? static_cast<int>(factor) : 1;
}

} // namespace korvane::test
