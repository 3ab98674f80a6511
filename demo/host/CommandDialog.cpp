#include "demo/host/CommandDialog.h"

#include "demo/host/Display.h"
#include "demo/host/ErrorBox.h"
#include "demo/host/Notice.h"
#include "framework/com/Boundary.h"
#include "framework/com/LateBound.h"

#include <algorithm>
#include <string>

namespace korvane::host
{

namespace
{

constexpr long textError = 1000; // in the library's string table
constexpr DWORD commonStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD extendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

} // namespace

CommandDialog::CommandDialog(HWND owner, ComPtr<IResources> resources, bool resizable)
    : owner_(owner), resources_(std::move(resources)), style_(commonStyle | (resizable ? WS_THICKFRAME : 0))
{
    create({className, L"", style_, extendedStyle, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1)}, owner,
           nullptr, {});
    EnableWindow(owner_, FALSE);

    site_ = make<ControlSite>(handle());
    site_->font = makeMessageFont();
    site_->onDone = [this](bool cancelled) { onEnd(cancelled); };
    site_->onError = [this](HRESULT number, std::wstring_view source, std::wstring_view description) {
        showError(number, source, description);
    };
    site_->onResize = [this] { fit(site_->extent()); };
    site_->onExtent = [this](SIZE extent) { fit(extent); };
    site_->onSubmit = [this](IAppCommand& command) { return execute(command); };
}

CommandDialog::~CommandDialog()
{
    notifier_.reset();
    site_->close();
    // Before the window goes: otherwise some other program's window would become the active one.
    EnableWindow(owner_, TRUE);
}

bool CommandDialog::open(const ComPtr<IAppCommand>& command)
{
    Bstr progId;
    call(command, &IAppCommand::get_DialogClass, progId.put());
    const auto dialog = createByProgId<IAppDialog>(progId.view());
    site_->host(dialog.as<IUnknown>());
    call(dialog, &IAppDialog::putref_Resources, resources_.get());
    call(dialog, &IAppDialog::putref_Command, command.as<IDispatch>().get());

    const Bstr name = fetch(dialog, &IAppDialog::get_Name);
    SetWindowTextW(handle(), withoutAccessKey(name.view()).c_str());
    centre(); // a question that comes first appears on this monitor
    VARIANT_BOOL ready = VARIANT_FALSE;
    call(dialog, &IAppDialog::get_Ready, &ready);
    if (ready == VARIANT_FALSE)
        return false;
    call(dialog, &IAppDialog::get_Notifier, notifier_.put());

    fit(site_->extent());
    centre();
    RECT own{};
    GetWindowRect(handle(), &own);
    smallest_ = {own.right - own.left, own.bottom - own.top};
    ShowWindow(handle(), SW_SHOW);
    site_->activateUi();
    return true;
}

LRESULT CommandDialog::receive(UINT message, WPARAM first, LPARAM second)
{
    switch (message)
    {
    case WM_ACTIVATE:
        site_->frameActivated(LOWORD(first) != WA_INACTIVE);
        if (LOWORD(first) != WA_INACTIVE)
            focusArrived();
        return 0;
    case WM_SETFOCUS:
        focusArrived();
        return 0;
    case WM_SIZE:
        sized();
        return 0;
    case WM_SYSCOLORCHANGE: // comes to this window alone
        SendMessageW(GetWindow(handle(), GW_CHILD), message, first, second);
        return 0;
    case WM_GETMINMAXINFO:
        if (isResizable())
            reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {smallest_.cx, smallest_.cy};
        return 0;
    case WM_CLOSE:
        onEnd(true);
        return 0;
    default:
        return Window::receive(message, first, second);
    }
}

/// A failure of the command goes out to the dialog, which stays open.
bool CommandDialog::execute(IAppCommand& command)
{
    VARIANT_BOOL ignored = VARIANT_FALSE; // most commands give False also after a write
    const auto failure =
        attempt([&] { call(ComPtr<IAppCommand>(&command), &IAppCommand::Execute, &ignored); });
    tell(&command, !failure);
    if (onExecuted)
        onExecuted(); // a command that has failed may have written a part
    if (failure)
        throw *failure;
    return true;
}

/// What goes wrong in the notifier is the dialog's to tell.
void CommandDialog::tell(IAppCommand* executed, bool success) const
{
    if (const auto notifier = notifier_) // the dialog may end in the call
        notifier->OnExecuted(executed, success ? VARIANT_TRUE : VARIANT_FALSE);
}

void CommandDialog::tellOfOthers() const
{
    tell(nullptr, true); // theirs is a command of another process
}

void CommandDialog::showError(HRESULT number, std::wstring_view source, std::wstring_view description) const
{
    Bstr title;
    call(resources_, &IResources::GetString, textError, title.put());
    host::showError(handle(), title.c_str(), errorText(number, source, description));
}

/// Gives the window the size in which the control fits it exactly.
void CommandDialog::fit(SIZE extent) const
{
    RECT place{0, 0, extent.cx, extent.cy};
    AdjustWindowRectEx(&place, style_, FALSE, extendedStyle);
    SetWindowPos(handle(), nullptr, 0, 0, place.right - place.left, place.bottom - place.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    RECT own{};
    GetWindowRect(handle(), &own);
    moveTo(own.left, own.top);
}

/// The user has given the window another size, which the control takes.
void CommandDialog::sized() const
{
    if (!isResizable() || !site_)
        return;
    RECT area{};
    GetClientRect(handle(), &area);
    site_->resize({area.right, area.bottom});
}

/// Over the owner.
void CommandDialog::centre() const
{
    RECT owner{};
    RECT own{};
    GetWindowRect(owner_, &owner);
    GetWindowRect(handle(), &own);
    moveTo((owner.left + owner.right - (own.right - own.left)) / 2,
           (owner.top + owner.bottom - (own.bottom - own.top)) / 2);
}

/// As near to a place as leaves all of the dialog on the owner's screen.
void CommandDialog::moveTo(LONG left, LONG top) const
{
    RECT own{};
    GetWindowRect(handle(), &own);
    const RECT screen = workArea(owner_);
    SetWindowPos(handle(), nullptr,
                 std::max(screen.left, std::min(left, screen.right - (own.right - own.left))),
                 std::max(screen.top, std::min(top, screen.bottom - (own.bottom - own.top))), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// Into the dialog, which knows where it was.
void CommandDialog::focusArrived() const
{
    if (site_ && site_->isUiActive())
        site_->activateUi();
}

} // namespace korvane::host
