#include "tests/support/Questions.h"

#include <utility>

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

bool isBox(HWND window)
{
    return window && classOf(window) == L"#32770" && (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) == 0;
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
    if (current && code == HCBT_ACTIVATE && isBox(window))
        current->note(window);
    else if (current && code == HCBT_SETFOCUS && isBox(GetParent(window)))
        current->noteFocus(window);
    return CallNextHookEx(nullptr, code, first, second);
}

/// A box opens with the focus on its default button. It may get the focus before it is active, or after.
void Questions::noteFocus(HWND button)
{
    const HWND box = GetParent(button);
    if (std::exchange(focused_.box, box) == box)
        return;
    focused_.button = GetDlgCtrlID(button);
    if (noted_ == box)
        asked.back().defaultButton = focused_.button;
}

void Questions::note(HWND box)
{
    Asked question;
    question.title = textOf(box);
    question.owner = GetWindow(box, GW_OWNER);
    question.defaultButton = focused_.box == box ? focused_.button : 0;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    {
        const LONG style = GetWindowLongW(child, GWL_STYLE);
        const bool isIcon = classOf(child) == L"Static" && (style & SS_TYPEMASK) == SS_ICON;
        if (classOf(child) == L"Button" && (style & WS_VISIBLE) != 0)
            question.buttons.push_back(GetDlgCtrlID(child));
        else if (isIcon && (style & WS_VISIBLE) != 0)
            question.icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
        else if (classOf(child) != L"Button" && !textOf(child).empty())
            question.text = textOf(child);
    }
    asked.push_back(std::move(question));
    noted_ = box;
    onAsked();
    const bool isLetter = answerKey >= 'A' && answerKey <= 'Z';
    PostMessageW(box, isLetter ? WM_SYSCHAR : WM_KEYDOWN, answerKey, isLetter ? 1L << 29 | 1 : 1);
}

} // namespace korvane::test
