#include "demo/host/MainWindow.h"

#include "demo/host/Display.h"
#include "demo/host/Language.h"
#include "demo/host/Notice.h"
#include "framework/com/Boundary.h"
#include "framework/com/LateBound.h"
#include "framework/com/Module.h"

#include <windowsx.h>

#include <algorithm>

namespace korvane::host
{

namespace
{

// Among the library's pictures.
constexpr long pictureApplication = 100;
constexpr long cursorMove = 25500;
constexpr long cursorCopy = 25501;

// The parts of the status bar.
enum StatusPart : WPARAM
{
    partFile,
    partSelection,
    partNotice,
    partAccount
};

constexpr UINT_PTR timerChanges = 1;
constexpr UINT betweenLooks = 1000; // milliseconds

/// The handle of an icon or cursor, which the picture owns.
LPARAM handleOf(const ComPtr<IPictureDisp>& picture)
{
    OLE_HANDLE handle = 0;
    call(picture.as<IPicture>(), &IPicture::get_Handle, &handle);
    return static_cast<LPARAM>(handle);
}

/// Room for the groups and for a schedule beside them, as far as the screen has it.
SIZE firstSize()
{
    const int dpi = screenDpi();
    const RECT screen = workArea(nullptr);
    return {std::min<LONG>(MulDiv(1080, dpi, 96), screen.right - screen.left),
            std::min<LONG>(MulDiv(560, dpi, 96), screen.bottom - screen.top)};
}

} // namespace

MainWindow::MainWindow(OpenDatabase& database)
    : database_(database), library_(createByProgId<IResources>(L"KorvaneDlg.Resources")),
      resources_(library_), groupKeys_(createKeys(Part::groups)), scheduleKeys_(createKeys(Part::schedule))
{
    create({L"KorvaneHost.Main", L"Korvane", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0,
            reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1)},
           nullptr, createMenuBar(resources_), firstSize());
    useIcon();
    createStatusBar();
    createParts();
    layOut();
    showAccount();
    SetTimer(handle(), timerChanges, betweenLooks, nullptr);
}

MainWindow::~MainWindow()
{
    dialog_.reset(); // its owner is this window
}

void MainWindow::createParts()
{
    schedule_ = std::make_unique<ScheduleWindow>(handle(), database_.view());
    useCursors();
    schedule_->onOpen = [this] { run(entryNamed(changeActivity)); };
    schedule_->onDrop = [this](const Bar& bar, const Slot& landing, bool copies) {
        drop(bar, landing, copies);
    };
    schedule_->onSelect = [this] { showSelection(); };
    content_ = std::make_unique<GroupList>(handle(), messageRefresh);
    content_->onSelect = [this] { schedule_->showGroup(content_->selected()); };
    content_->follow(database_.view());
    content_->selectFirst();
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
    if (schedule_->isMoving())
        return false;
    const bool inSchedule = GetFocus() == schedule_->handle();
    return TranslateAcceleratorW(handle(), (inSchedule ? scheduleKeys_ : groupKeys_).get(), &message) != 0;
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
        chosen(LOWORD(first));
        return 0;
    case WM_NOTIFY:
        if (auto& notification = *reinterpret_cast<NMHDR*>(second);
            content_ && notification.hwndFrom == content_->handle())
            return content_->notified(notification);
        return 0;
    case WM_SIZE:
        layOut();
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(first) == WA_INACTIVE && IsChild(handle(), GetFocus()))
            lastFocus_ = GetFocus();
        return Window::receive(message, first, second);
    case WM_CONTEXTMENU:
        if (schedule_ && reinterpret_cast<HWND>(first) == schedule_->handle())
            showMenuAt({GET_X_LPARAM(second), GET_Y_LPARAM(second)});
        return 0;
    case WM_SETFOCUS:
        if (content_)
            SetFocus(lastFocus_ ? lastFocus_ : content_->handle());
        return 0;
    case WM_INITMENUPOPUP:
        fillMenu(reinterpret_cast<HMENU>(first));
        return 0;
    case WM_TIMER:
        attempt([this] { lookForChanges(); }); // what is refused is tried again, and need not be told
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
    const LPARAM icon = handleOf(icon_);
    SendMessageW(handle(), WM_SETICON, ICON_BIG, icon);
    SendMessageW(handle(), WM_SETICON, ICON_SMALL, icon);
}

void MainWindow::useCursors()
{
    call(resources_, &IResources::GetCursor, cursorMove, moveCursor_.put());
    call(resources_, &IResources::GetCursor, cursorCopy, copyCursor_.put());
    schedule_->useCursors(
        {reinterpret_cast<HCURSOR>(handleOf(moveCursor_)), reinterpret_cast<HCURSOR>(handleOf(copyCursor_))});
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
    const int dpi = screenDpi();
    const LONG groups = std::min<LONG>(MulDiv(210, dpi, 96), area.right / 3);
    content_->place({area.left, area.top, groups, area.bottom});
    schedule_->place({groups, area.top, area.right, area.bottom});

    const int noticeEnd = static_cast<int>(area.right) - MulDiv(110, dpi, 96);
    const int selectionEnd = noticeEnd - MulDiv(160, dpi, 96);
    const int ends[] = {std::max<int>(groups, selectionEnd - MulDiv(430, dpi, 96)), selectionEnd, noticeEnd,
                        -1};
    SendMessageW(status_, SB_SETPARTS, std::size(ends), reinterpret_cast<LPARAM>(ends));
    showStatus(partFile, database_.path());
}

void MainWindow::showStatus(std::size_t part, const std::wstring& text) const noexcept
{
    SendMessageW(status_, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(text.c_str()));
}

void MainWindow::showSelection() const
{
    showStatus(partSelection, schedule_->describeSelection());
}

/// Who works here, and what there is for him to read.
void MainWindow::showAccount() const
{
    const std::wstring login = database_.login();
    const long unread = database_.unreadMessages();
    const std::wstring notice = messageNotice(resources_, unread);
    showStatus(partNotice, notice);
    showStatus(partAccount, login);
    SetWindowTextW(handle(), titleFor(login, unread, notice).c_str());
}

/// Something has been written.
/// @param tells whether the user is to be told where it cannot be read.
void MainWindow::showChanges(bool tells)
{
    outdated_ = true;
    database_.hasChanged(); // what was written up to now is what is read now
    content_->load();
    schedule_->refresh(tells);
    showAccount();
    outdated_ = false;
}

/// What others have written, in this process or another one, is told to nobody: whoever wants to know has to ask.
void MainWindow::lookForChanges()
{
    if (database_.tellOfOthers() && dialog_)
        dialog_->tellOfOthers();
    if (outdated_ || database_.hasChanged())
        showChanges(false);
}

void MainWindow::logIn(const std::wstring& login)
{
    if (dialog_)
        return;
    database_.logIn(login);
    content_->follow(database_.view());
    schedule_->follow(database_.view());
    showAccount();
}

/// Those that are other ones each time they are opened.
void MainWindow::fillMenu(HMENU menu)
{
    if (menu == accountMenu(GetMenu(handle())))
        accounts_.fill(menu, database_.view(), database_.login());
    else if (menu == languageMenu(GetMenu(handle())))
        languages_.fill(menu, languageFolder(), language_);
}

/// What is opened from now on is in the language. So are the errors of commands without a dialog: the library takes its
/// texts from what a dialog was given last.
void MainWindow::speak(const std::wstring& language)
{
    if (dialog_)
        return;
    auto resources = resourcesIn(language, library_);
    const HMENU bar = createMenuBar(resources);
    call(createByProgId<IAppDialog>(L"KorvaneDlg.ctlEditGroups"), &IAppDialog::putref_Resources,
         resources.get());
    resources_ = std::move(resources);
    language_ = language;
    const HMENU former = GetMenu(handle());
    SetMenu(handle(), bar);
    DestroyMenu(former);
    showAccount();
}

/// The commands on activities or, among the names, on resources, where the right button was released; by keyboard, at
/// the cursor.
void MainWindow::showMenuAt(POINT place) const
{
    const auto found = schedule_->menuPlace(place);
    if (!found)
        return;
    const CommandEntry& entry = entryNamed(found->isOfResource ? editResource : changeActivity);
    TrackPopupMenu(menuWith(GetMenu(handle()), entry), TPM_RIGHTBUTTON, found->point.x, found->point.y, 0,
                   handle(), nullptr);
}

void MainWindow::goToOtherPart() noexcept
{
    SetFocus(GetFocus() == schedule_->handle() ? content_->handle() : schedule_->handle());
}

} // namespace korvane::host
