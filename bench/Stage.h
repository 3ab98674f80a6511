// The window that dialogs appear in, and the host around it.
#pragma once

#include "bench/MemoryData.h"
#include "demo/host/ControlSite.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <vector>

namespace korvane::bench
{

constexpr const wchar_t* fontFace = L"MS Shell Dlg";
constexpr int fontPoints = 8;

class Stage
{
public:
    Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    HWND window() const noexcept { return window_; }

    /// What a host does to show the group dialog: creates it by name, places it, gives it its command, and
    /// reads Ready.
    void open(IEditGroups* command);
    /// The same for another dialog.
    void open(const wchar_t* dialogProgId, IUnknown* command);
    /// Reads Ready again, on the dialog as it stands.
    void readReady() const;
    /// Ends the dialog and lets go of it.
    void close() noexcept;

    HWND dialogWindow() const;
    /// The windows on the dialog, in their order.
    std::vector<HWND> dialogControls() const;
    HWND listBox() const;

    /// A command that changes groups of a data layer.
    static ComPtr<IEditGroups> commandFor(const MemoryData& data);

private:
    HWND window_ = nullptr;
    ComPtr<host::ControlSite> site_;
    ComPtr<IAppDialog> dialog_;
};

/// The windows on a window, in their order.
std::vector<HWND> childrenOf(HWND window);

std::wstring classNameOf(HWND window);

/// The style that a window was made with. The platform takes the scroll bar off a list that needs none.
DWORD designedStyleOf(HWND window);

} // namespace korvane::bench
