// The host's window: the menu with the commands, the groups, the schedule of the selected one, and a status bar.
#pragma once

#include "demo/host/AccountMenu.h"
#include "demo/host/CommandDialog.h"
#include "demo/host/CommandMenu.h"
#include "demo/host/CommandTable.h"
#include "demo/host/GroupList.h"
#include "demo/host/LanguageMenu.h"
#include "demo/host/OpenDatabase.h"
#include "demo/host/PreparedCommand.h"
#include "demo/host/schedule/ScheduleWindow.h"

#include <memory>

namespace korvane::host
{

class MainWindow final : public Window
{
public:
    explicit MainWindow(OpenDatabase& database);
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow() override;

    void show() const noexcept;

    /// For the message loop: true when the message was a key of the open dialog or of the menu.
    bool translate(MSG& message);

    /// Runs something on the window's thread and waits for the end of it; for other threads.
    void invoke(const std::function<void()>& body) const;

    /// A command is about to be given its operands.
    std::function<void(const Order& order)> onOrder;

    const GroupList& content() const noexcept { return *content_; }
    /// Goes on as somebody else, with the same database.
    void logIn(const std::wstring& login);
    /// Goes on in another language: that of a file beside the program, or without a name the library's own.
    void speak(const std::wstring& language);

    ScheduleWindow& schedule() const noexcept { return *schedule_; }
    OpenDatabase& database() const noexcept { return database_; }

private:
    enum Message : UINT
    {
        messageDialogEnded = WM_APP,
        messageRefresh,
        messageInvoke
    };

    LRESULT receive(UINT message, WPARAM first, LPARAM second) override;

    void useIcon();
    void useCursors();
    void fillMenu(HMENU menu);
    void createStatusBar();
    void createParts();
    void layOut() noexcept;
    void showStatus(std::size_t part, const std::wstring& text) const noexcept;
    void showSelection() const;
    void showAccount() const;
    void showChanges(bool tells);
    void lookForChanges();
    const Resource& resourceOf(const Slot& slot) const;
    void showMenuAt(POINT place) const;
    void chosen(int id);
    void run(const CommandEntry& entry);
    ComPtr<IAppCommand> prepared(const Order& order) const;
    void start(const CommandEntry& entry, const Order& order);
    void remove(const Bar& bar, const Order& order);
    void drop(const Bar& bar, const Slot& landing, bool copies);
    void dialogEnded(bool cancelled);
    void closeDialog();
    void goToOtherPart() noexcept;

    OpenDatabase& database_;
    bool outdated_ = false;      ///< something that has changed could not be read yet
    ComPtr<IResources> library_; ///< the library's own resources
    ComPtr<IResources> resources_;
    std::wstring language_;
    LanguageMenu languages_;
    AccountMenu accounts_;
    ComPtr<IPictureDisp> icon_;       ///< owns the window's icon
    ComPtr<IPictureDisp> moveCursor_; ///< like the icon, theirs are used in the schedule
    ComPtr<IPictureDisp> copyCursor_;
    Keys groupKeys_;
    Keys scheduleKeys_;
    HWND status_ = nullptr;
    HWND lastFocus_ = nullptr; ///< what had the focus when another window became active
    std::unique_ptr<GroupList> content_;
    std::unique_ptr<ScheduleWindow> schedule_;
    ComPtr<IAppCommand> command_;
    const CommandEntry* entry_ = nullptr; ///< of the command
    std::unique_ptr<CommandDialog> dialog_;
};

} // namespace korvane::host
