// The base of the host's windows.
#pragma once

#include "framework/com/Platform.h"

#include <string>

namespace korvane::host
{

class Window
{
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND handle() const noexcept { return handle_; }

protected:
    Window() = default;
    virtual ~Window();

    struct Design
    {
        const wchar_t* className = nullptr;
        const wchar_t* title = nullptr;
        DWORD style = 0;
        DWORD extendedStyle = 0;
        HBRUSH background = nullptr;
        UINT classStyle = 0;
    };

    /// Makes the window, hidden unless its style says otherwise, at a place that the system chooses. Throws a Failure when it cannot.
    void create(const Design& design, HWND owner, HMENU menu, SIZE size);

    /// Handles a message. A failure that it throws is shown to the user.
    virtual LRESULT receive(UINT message, WPARAM first, LPARAM second);

    std::wstring title() const;

private:
    static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM first, LPARAM second) noexcept;

    HWND handle_ = nullptr;
};

/// Whether a key is down, as of the message that is handled.
bool isKeyDown(int key) noexcept;

} // namespace korvane::host
