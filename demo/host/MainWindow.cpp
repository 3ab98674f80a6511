#include "demo/host/MainWindow.h"

#include "demo/host/Create.h"
#include "demo/host/ErrorBox.h"
#include "demo/host/PreparedCommand.h"
#include "framework/com/Boundary.h"
#include "framework/com/Module.h"

namespace korvane::host
{

namespace
{

constexpr long pictureApplication = 100; // among the library's pictures

enum Message : UINT
{
    messageDialogEnded = WM_APP,
    messageRefresh,
    messageInvoke
};

} // namespace

MainWindow::MainWindow(OpenDatabase& database)
    : database_(database), resources_(createByProgId<IResources>(L"KorvaneDlg.Resources")),
      keys_(createKeys())
{
    const int dpi = screenDpi();
    create({L"KorvaneHost.Main", L"Korvane", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0,
            reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1)},
           nullptr, createMenuBar(), {MulDiv(560, dpi, 96), MulDiv(420, dpi, 96)});
    useIcon();
    createStatusBar();
    content_ = std::make_unique<GroupList>(handle(), messageRefresh);
    content_->follow(database_.root());
    layOut();
}

MainWindow::~MainWindow()
{
    dialog_.reset(); // its owner is this window
}

void MainWindow::show() const noexcept
{
    ShowWindow(handle(), SW_SHOWDEFAULT); // as the program's starter wishes
    UpdateWindow(handle());
}

bool MainWindow::translate(MSG& message)
{
    if (dialog_)
        return dialog_->translate(message);
    return TranslateAcceleratorW(handle(), keys_.get(), &message) != 0;
}

void MainWindow::invoke(const std::function<void()>& body) const
{
    SendMessageW(handle(), messageInvoke, 0, reinterpret_cast<LPARAM>(&body));
}

LRESULT MainWindow::receive(UINT message, WPARAM first, LPARAM second)
{
    switch (message)
    {
    case WM_COMMAND:
        if (const CommandEntry* entry = entryOf(LOWORD(first)))
            run(*entry);
        else if (LOWORD(first) == menuExit)
            SendMessageW(handle(), WM_CLOSE, 0, 0);
        return 0;
    case WM_NOTIFY:
        if (auto& notification = *reinterpret_cast<NMHDR*>(second);
            content_ && notification.hwndFrom == content_->handle())
            return content_->notified(notification);
        return 0;
    case WM_SIZE:
        layOut();
        return 0;
    case WM_SETFOCUS:
        if (content_)
            SetFocus(content_->handle());
        return 0;
    case messageRefresh:
        content_->refresh();
        return 0;
    case messageDialogEnded:
        dialogEnded(first != 0);
        return 0;
    case messageInvoke:
        (*reinterpret_cast<const std::function<void()>*>(second))();
        return 0;
    case WM_DESTROY:
        dialog_.reset();
        PostQuitMessage(0);
        return 0;
    default:
        return Window::receive(message, first, second);
    }
}

void MainWindow::useIcon()
{
    call(resources_, &IResources::GetIcon, pictureApplication, icon_.put());
    OLE_HANDLE icon = 0;
    call(icon_.as<IPicture>(), &IPicture::get_Handle, &icon);
    const auto handleOfIcon = static_cast<LPARAM>(icon);
    SendMessageW(handle(), WM_SETICON, ICON_BIG, handleOfIcon);
    SendMessageW(handle(), WM_SETICON, ICON_SMALL, handleOfIcon);
}

void MainWindow::createStatusBar()
{
    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0,
                              0, handle(), nullptr, module::instance(), nullptr);
    if (!status_)
        throw Failure(HRESULT_FROM_WIN32(GetLastError()));
}

void MainWindow::layOut() noexcept
{
    if (!content_)
        return;
    SendMessageW(status_, WM_SIZE, 0, 0); // it places itself at the bottom
    RECT area{};
    RECT bar{};
    GetClientRect(handle(), &area);
    GetWindowRect(status_, &bar);
    area.bottom -= bar.bottom - bar.top;
    content_->place(area);

    const int accountWidth = MulDiv(160, screenDpi(), 96);
    const int ends[] = {area.right - accountWidth, -1};
    SendMessageW(status_, SB_SETPARTS, std::size(ends), reinterpret_cast<LPARAM>(ends));
    const wchar_t* account = database_.account().empty() ? L"Administrator" : database_.account().c_str();
    SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(database_.path().c_str()));
    SendMessageW(status_, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(account));
}

void MainWindow::run(const CommandEntry& entry)
{
    if (dialog_)
        return;
    command_ = prepareCommand(entry, database_.root(), content_->selected());
    entry_ = &entry;
    dialog_ = std::make_unique<CommandDialog>(handle(), resources_);
    dialog_->onEnd = [this](bool cancelled) { PostMessageW(handle(), messageDialogEnded, cancelled, 0); };
    bool shown = false;
    const auto failure = attempt([&] { shown = dialog_->open(command_); });
    if (!shown)
        dialog_.reset();
    if (failure)
        throw *failure;
}

void MainWindow::dialogEnded(bool cancelled)
{
    if (!dialog_)
        return;
    dialog_.reset();
    const auto command = std::move(command_);
    if (cancelled)
        return;
    // What the command worked on is what the user wants to see now.
    Variant subject;
    call(command, &IAppCommand::get_Operand, Bstr(entry_->subject).get(), subject.put());
    content_->select(toLong(subject.get()));
}

} // namespace korvane::host
