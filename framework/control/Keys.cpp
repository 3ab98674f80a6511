#include "framework/control/Keys.h"

#include "framework/control/Control.h"

#include <commctrl.h>

namespace korvane
{

namespace
{

/// The character of a key is on its way already when the key arrives, and goes with it.
void dropCharacter(HWND window, UINT keyMessage) noexcept
{
    const UINT first = keyMessage == WM_SYSKEYDOWN ? WM_SYSCHAR : WM_CHAR;
    MSG character;
    PeekMessageW(&character, window, first, first + 1, PM_REMOVE); // or a dead character
}

LRESULT CALLBACK keys(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                      DWORD_PTR watching) noexcept
{
    const auto& control = *reinterpret_cast<const Control*>(watching);
    switch (message)
    {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        if (!control.takesKey(static_cast<WORD>(first), keyModifiers()))
            break;
        dropCharacter(window, message);
        // When Alt goes up, the platform opens the menu, unless another key has come by here: any one will do.
        return message == WM_SYSKEYDOWN ? DefWindowProcW(window, message, 0, second) : 0;
    case WM_CHAR:
        if (!control.takesCharacter(static_cast<wchar_t>(first)))
            break;
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    {
        // The container, which the control's own notification tells, may let go of the dialog.
        const ComPtr<IUnknown> alive(control.keptAlive());
        const LRESULT result = DefSubclassProc(window, message, first, second);
        control.focusNotified(message == WM_SETFOCUS);
        return result;
    }
    case WM_NCDESTROY:
        RemoveWindowSubclass(window, &keys, id);
        break;
    default:
        break;
    }
    return DefSubclassProc(window, message, first, second);
}

} // namespace

DWORD keyModifiers() noexcept
{
    DWORD modifiers = 0;
    if (GetKeyState(VK_SHIFT) < 0)
        modifiers |= shiftKey;
    if (GetKeyState(VK_CONTROL) < 0)
        modifiers |= controlKey;
    if (GetKeyState(VK_MENU) < 0)
        modifiers |= altKey;
    return modifiers;
}

void watchKeys(HWND window, const Control& control) noexcept
{
    SetWindowSubclass(window, &keys, 0, reinterpret_cast<DWORD_PTR>(&control));
}

} // namespace korvane
