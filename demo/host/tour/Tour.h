// A tour through the host by keyboard and mouse, which checks each step and tells about it.
#pragma once

#include "demo/host/MainWindow.h"
#include "demo/host/tour/GroupRows.h"
#include "demo/host/tour/User.h"

#include <initializer_list>
#include <string>
#include <thread>
#include <vector>

namespace korvane::host
{

class Tour
{
public:
    /// Starts the tour on a thread of its own; the window's thread goes on with its messages. At its end the
    /// window is closed.
    /// @param folder where the pictures go.
    Tour(MainWindow& window, std::wstring folder);
    Tour(const Tour&) = delete;
    Tour& operator=(const Tour&) = delete;
    ~Tour() { succeeded(); }

    /// Waits for the end. True when every step did what it said.
    bool succeeded();

private:
    struct Step
    {
        const wchar_t* title;
        void (Tour::*run)();
    };

    bool go();
    bool take(const Step& step, int number);

    // The steps.
    void addByKeyboard();
    void addByShortcut();
    void addByMouse();
    void rename();
    void addWithNameThatIsTaken();
    void cancel();
    void walkByKeyboard();
    void remove();
    void leave();

    // What the user does.
    void press(std::initializer_list<WORD> keys, const std::wstring& keyNames);
    void type(const std::wstring& text);
    void clickAt(HWND window, POINT place, const std::wstring& what);
    void doubleClickAt(HWND window, POINT place, const std::wstring& what);
    void pointAt(HWND window, POINT place, const std::wstring& what);
    void clickButton(HWND dialog, const wchar_t* caption);
    void chooseInMenu(int item, const std::wstring& what);
    void selectRow(const std::wstring& name);

    // What the user then sees.
    void waitUntilTaken();
    HWND dialog();
    HWND control(HWND dialog, const wchar_t* className);
    void waitForText(HWND edit, const std::wstring& text);
    void waitForFocus(HWND control, const std::wstring& what);
    void waitForEnd();
    void picture(HWND window, const wchar_t* name);

    // What then stands in the database and in the window.
    std::vector<GroupRow> rows() const;
    void expectRows(const std::vector<GroupRow>& expected);
    void expectTrace(const std::wstring& line, bool there);
    std::wstring trace();

    MainWindow& window_;
    HWND main_;
    HWND list_;
    std::wstring folder_;
    User user_;
    std::wstring trace_; ///< of the step so far
    bool succeeded_ = false;
    std::thread thread_;
};

} // namespace korvane::host
