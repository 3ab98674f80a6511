// How the host shows errors.
#pragma once

#include "framework/com/Failure.h"

#include <string>
#include <string_view>

namespace korvane::host
{

/// Description, source and number, as the error box shows them.
std::wstring errorText(HRESULT number, std::wstring_view source, std::wstring_view description);

/// Shows an error until the user has read it.
void showError(HWND owner, const wchar_t* title, const std::wstring& text) noexcept;

/// Shows a failure of the host itself.
void showFailure(HWND owner, const Failure& failure) noexcept;

} // namespace korvane::host
