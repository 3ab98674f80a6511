// The host's window: the menu with the commands, what the database holds, and a status bar.
#pragma once

#include "demo/host/CommandDialog.h"
#include "demo/host/CommandMenu.h"
#include "demo/host/CommandTable.h"
#include "demo/host/GroupList.h"
#include "demo/host/OpenDatabase.h"

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

    const GroupList& content() const noexcept { return *content_; }
    OpenDatabase& database() const noexcept { return database_; }

private:
    LRESULT receive(UINT message, WPARAM first, LPARAM second) override;

    void useIcon();
    void createStatusBar();
    void layOut() noexcept;
    void run(const CommandEntry& entry);
    void dialogEnded(bool cancelled);

    OpenDatabase& database_;
    ComPtr<IResources> resources_;
    ComPtr<IPictureDisp> icon_; ///< owns the window's icon
    Keys keys_;
    HWND status_ = nullptr;
    std::unique_ptr<GroupList> content_;
    ComPtr<IAppCommand> command_;
    const CommandEntry* entry_ = nullptr; ///< of the command
    std::unique_ptr<CommandDialog> dialog_;
};

} // namespace korvane::host
