#include "tests/support/Questions.h"

namespace korvane::test
{

namespace
{

Questions* current = nullptr;

std::wstring textOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring classOf(HWND window)
{
    wchar_t name[32];
    GetClassNameW(window, name, 32);
    return name;
}

} // namespace

Questions::Questions() : hook_(SetWindowsHookExW(WH_CBT, &hook, nullptr, GetCurrentThreadId()))
{
    current = this;
}

Questions::~Questions()
{
    UnhookWindowsHookEx(hook_);
    current = nullptr;
}

LRESULT CALLBACK Questions::hook(int code, WPARAM first, LPARAM second)
{
    auto* const window = reinterpret_cast<HWND>(first);
    const bool isBox = code == HCBT_ACTIVATE && classOf(window) == L"#32770" &&
                       (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) == 0;
    if (isBox && current)
        current->note(window);
    return CallNextHookEx(nullptr, code, first, second);
}

void Questions::note(HWND box)
{
    Asked question{textOf(box), {}, {}, GetWindow(box, GW_OWNER)};
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    {
        if (classOf(child) == L"Button" && (GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE) != 0)
            question.buttons.push_back(GetDlgCtrlID(child));
        else if (classOf(child) != L"Button" && !textOf(child).empty())
            question.text = textOf(child);
    }
    asked.push_back(std::move(question));
    const bool isLetter = answerKey >= 'A' && answerKey <= 'Z';
    PostMessageW(box, isLetter ? WM_SYSCHAR : WM_KEYDOWN, answerKey, isLetter ? 1L << 29 | 1 : 1);
}

} // namespace korvane::test
