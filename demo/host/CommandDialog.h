// The window around a dialog control: shows it for a command, and executes what it submits.
#pragma once

#include "demo/host/ControlSite.h"
#include "demo/host/Window.h"

#include <KorvaneInterfaces.h>
#include <KorvaneLib.h>

#include <functional>

namespace korvane::host
{

class CommandDialog final : public Window
{
public:
    static constexpr const wchar_t* className = L"KorvaneHost.Dialog";

    /// While the dialog lives, its owner takes no input.
    /// @param resizable whether the user may give the window another size, which the control then takes.
    CommandDialog(HWND owner, ComPtr<IResources> resources, bool resizable);
    CommandDialog(const CommandDialog&) = delete;
    CommandDialog& operator=(const CommandDialog&) = delete;
    ~CommandDialog() override;

    /// The dialog has ended; it waits to be destroyed, but not from within this call.
    std::function<void(bool cancelled)> onEnd;
    /// A command was executed, or has failed on the way; the dialog may stay open.
    std::function<void()> onExecuted;

    /// Creates the control of a prepared command and shows it. False when the control says that it is not to
    /// be shown.
    bool open(const ComPtr<IAppCommand>& command);

    /// Others have written to the database: the dialog's notifier, if it has one, is told.
    void tellOfOthers() const;

    /// For the message loop: true when the control has consumed the message.
    bool translate(MSG& message) const { return site_->translate(message); }

private:
    LRESULT receive(UINT message, WPARAM first, LPARAM second) override;

    bool execute(IAppCommand& command);
    void showError(HRESULT number, std::wstring_view source, std::wstring_view description) const;
    void tell(IAppCommand* executed, bool success) const;
    void fit(SIZE extent) const;
    bool isResizable() const noexcept { return (style_ & WS_THICKFRAME) != 0; }
    void sized() const;
    void centre() const;
    void moveTo(LONG left, LONG top) const;
    void focusArrived() const;

    HWND owner_;
    ComPtr<IResources> resources_;
    DWORD style_;
    SIZE smallest_{}; ///< of a window that can be resized
    ComPtr<ControlSite> site_;
    ComPtr<IXtExecuteEvents> notifier_;
};

} // namespace korvane::host
