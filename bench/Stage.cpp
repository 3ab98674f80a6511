#include "bench/Stage.h"

#include "bench/Library.h"
#include "bench/Measurement.h"
#include "tests/support/Messages.h"

namespace korvane::bench
{

namespace
{

constexpr long operationChange = 3; // shows all controls of the dialog

} // namespace

Stage::Stage()
{
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"Static", L"Stage", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40,
                              40, 500, 400, nullptr, nullptr, nullptr, nullptr);
    demand(window_ != nullptr, "there is no window for the dialogs");
    site_ = make<host::ControlSite>(window_);
    site_->font = host::makeFont(fontFace, fontPoints);
    test::pumpMessages();
}

Stage::~Stage()
{
    close();
    DestroyWindow(window_);
}

void Stage::open(IEditGroups* command)
{
    open(dialogProgId, command);
}

void Stage::open(const wchar_t* progId, IUnknown* command)
{
    dialog_ = create<IAppDialog>(progId);
    site_->host(dialog_.as<IUnknown>());
    call(dialog_, &IAppDialog::putref_Command, queryFor<IDispatch>(command).get());
    readReady();
}

void Stage::readReady() const
{
    VARIANT_BOOL ready = VARIANT_FALSE;
    call(dialog_, &IAppDialog::get_Ready, &ready);
    demand(ready != VARIANT_FALSE, "the dialog is not ready");
}

void Stage::close() noexcept
{
    site_->close();
    dialog_.reset();
}

HWND Stage::dialogWindow() const
{
    long handle = 0;
    call(dialog_.as<IDialogControl>(), &IDialogControl::get_hWnd, &handle);
    return reinterpret_cast<HWND>(static_cast<UINT_PTR>(static_cast<ULONG>(handle)));
}

std::vector<HWND> Stage::dialogControls() const
{
    return childrenOf(dialogWindow());
}

HWND Stage::listBox() const
{
    const HWND list = FindWindowExW(dialogWindow(), nullptr, L"ListBox", nullptr);
    demand(list != nullptr, "the dialog has no list");
    return list;
}

ComPtr<IEditGroups> Stage::commandFor(const MemoryData& data)
{
    auto command = create<IEditGroups>(commandProgId);
    call(command, &IEditGroups::putref_Root, data.root());
    call(command, &IEditGroups::put_GroupID, 4L);
    call(command.as<IAppCommand>(), &IAppCommand::put_Operation, operationChange);
    return command;
}

std::vector<HWND> childrenOf(HWND window)
{
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    return children;
}

std::wstring classNameOf(HWND window)
{
    wchar_t name[64];
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, 64))};
}

DWORD designedStyleOf(HWND window)
{
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    return classNameOf(window) == L"ListBox" ? style | WS_VSCROLL : style;
}

} // namespace korvane::bench
