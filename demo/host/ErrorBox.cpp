#include "demo/host/ErrorBox.h"

#include "framework/com/Boundary.h"

#include <cwchar>

namespace korvane::host
{

std::wstring errorText(HRESULT number, std::wstring_view source, std::wstring_view description)
{
    wchar_t digits[16];
    std::swprintf(digits, ARRAYSIZE(digits), L"0x%08lX", static_cast<unsigned long>(number));
    std::wstring text(description);
    if (!text.empty())
        text += L"\n\n";
    if (!source.empty())
        text += L"Source: " + std::wstring(source) + L"\n";
    return text + L"Number: " + digits;
}

void showError(HWND owner, const wchar_t* title, const std::wstring& text) noexcept
{
    MessageBoxW(owner, text.c_str(), title, MB_OK | MB_ICONERROR);
}

void showFailure(HWND owner, const Failure& failure) noexcept
{
    attempt([&] {
        showError(owner, L"Korvane",
                  errorText(failure.number(), failure.source().view(), failure.description().view()));
    });
}

} // namespace korvane::host
