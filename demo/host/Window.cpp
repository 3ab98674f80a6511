#include "demo/host/Window.h"

#include "demo/host/ErrorBox.h"
#include "framework/com/Boundary.h"
#include "framework/com/Module.h"

namespace korvane::host
{

Window::~Window()
{
    if (!handle_)
        return;
    // What the end of the window still sends finds no object any more.
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
}

void Window::create(const Design& design, HWND owner, HMENU menu, SIZE size)
{
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = design.classStyle;
    windowClass.lpfnWndProc = &procedure;
    windowClass.hInstance = module::instance();
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = design.background;
    windowClass.lpszClassName = design.className;
    if (!RegisterClassExW(&windowClass) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));

    CreateWindowExW(design.extendedStyle, design.className, design.title, design.style, CW_USEDEFAULT,
                    CW_USEDEFAULT, size.cx, size.cy, owner, menu, module::instance(), this);
    if (!handle_)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

LRESULT Window::receive(UINT message, WPARAM first, LPARAM second)
{
    return DefWindowProcW(handle_, message, first, second);
}

std::wstring Window::title() const
{
    wchar_t text[256];
    return {text, static_cast<std::size_t>(GetWindowTextW(handle_, text, ARRAYSIZE(text)))};
}

LRESULT CALLBACK Window::procedure(HWND handle, UINT message, WPARAM first, LPARAM second) noexcept
{
    if (message == WM_NCCREATE)
    {
        auto* created = static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(second)->lpCreateParams);
        created->handle_ = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (!window)
        return DefWindowProcW(handle, message, first, second);
    if (message == WM_NCDESTROY)
    {
        window->handle_ = nullptr;
        return DefWindowProcW(handle, message, first, second);
    }
    LRESULT result = 0;
    if (const auto failure = attempt([&] { result = window->receive(message, first, second); }))
        showFailure(handle, *failure);
    return result;
}

bool isKeyDown(int key) noexcept
{
    return GetKeyState(key) < 0;
}

} // namespace korvane::host
