// A real OLE container with the host contract, that notes what a dialog tells it, and the user before it.
#pragma once

#include "demo/host/ControlSite.h"
#include "tests/support/Library.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <string>
#include <vector>

namespace korvane::test
{

class Container
{
public:
    /// What the site offers. Without any of it, it is a plain container.
    struct Offer
    {
        bool font = true;
        bool sink = true;
        bool commandSite = true;
    };

    Container() : Container(Offer{}) {}
    explicit Container(Offer offer);
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    ~Container();

    /// Places a dialog in the window and gives it its command, as a host does before it reads Ready.
    void place(REFCLSID dialogClass, IUnknown* command) { place(create<IAppDialog>(dialogClass), command); }
    void place(ComPtr<IAppDialog> created, IUnknown* command);
    /// Reads Ready; throws the failure that it raises.
    bool ready();
    bool show(REFCLSID dialogClass, IUnknown* command)
    {
        place(dialogClass, command);
        return ready();
    }
    /// Closes the dialog and lets go of it.
    void close();

    // What the dialog told.
    std::vector<bool> done; ///< the cancelled flags
    std::vector<ErrorInfo> errors;
    int resizes = 0;
    int submitted = 0;
    SIZE extent{}; ///< the last one that the dialog asked for

    /// What the host does with a submitted command; executes it unless a test sets something else.
    std::function<bool(IAppCommand&)> onSubmit;
    /// The dialog has the host's modeless windows disabled, or enabled again.
    std::function<void(bool enable)> onModeless = [](bool) {};

    // What the user sees.
    HWND window() const { return window_; }
    HWND dialogWindow() const;
    /// The n-th child window of a class, in tab order.
    HWND control(const wchar_t* windowClass, int index = 0) const;
    HWND button(const wchar_t* caption) const;
    static std::wstring text(HWND window);
    RECT place(HWND control) const; ///< in pixels, on the dialog
    bool visible(HWND control) const;
    /// The windows that show tooltips over the container's.
    std::vector<HWND> toolTips() const;

    // What the user does. Keys go to the window with the focus, as messages through the host's message loop.
    void press(WORD key, bool shift = false, bool alt = false, bool control = false);
    void type(const wchar_t* text);
    static void click(HWND control);
    static void point(HWND control, POINT place); ///< moves the pointer there
    static void clickAt(HWND control, int x, int y, bool twice = false);
    void pump() const;

    ComPtr<IAppDialog> dialog;
    ComPtr<host::ControlSite> site;

private:
    HWND window_ = nullptr;
};

/// What a screen reader calls a window.
std::wstring accessibleName(HWND window);

/// The items of a list box.
std::vector<std::wstring> items(HWND listBox);
/// Selects an item by a click on it.
void clickItem(HWND listBox, int index, bool twice = false);

} // namespace korvane::test
