// The visitor whom the tour leads: what a user does and sees in the host, and what then stands in the database.
// Each deed is told. What is not as expected is thrown as a Failure with the reason.
#pragma once

#include "demo/host/MainWindow.h"
#include "demo/host/tour/Bookings.h"
#include "demo/host/tour/GroupRows.h"
#include "demo/host/tour/User.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace korvane::host
{

void expect(bool isTheCase, const std::wstring& what);

std::wstring quoted(const std::wstring& text);

class Visitor
{
public:
    /// @param folder where the pictures go.
    Visitor(MainWindow& window, std::wstring folder);
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;
    ~Visitor() = default;

    /// From now on what is booked is read here.
    void reads(const Bookings& bookings) noexcept { bookings_ = &bookings; }
    const Bookings& bookings() const noexcept { return *bookings_; }

    MainWindow& window() const noexcept { return window_; }
    HWND mainWindow() const noexcept { return main_; }
    HWND list() const noexcept { return list_; }
    HWND schedule() const noexcept { return schedule_; }

    // What the user does.
    void press(std::initializer_list<WORD> keys, const std::wstring& keyNames);
    void type(const std::wstring& text);
    void clickAt(HWND window, POINT place, const std::wstring& what);
    void doubleClickAt(HWND window, POINT place, const std::wstring& what);
    /// Takes hold of something and draws it elsewhere, without letting it go yet.
    void dragTo(HWND window, POINT from, POINT to, const std::wstring& what);
    void dropAt(POINT place, const std::wstring& what);
    void hold(WORD key, const std::wstring& keyName);
    void release(WORD key, const std::wstring& keyName);
    /// Lets go of all keys and of the mouse, after a deed that failed.
    void letGo() const noexcept { user_.letGo(); }
    void clickButton(HWND dialog, const wchar_t* caption);
    /// Opens a menu of the window and chooses an item of it, both counted from 0.
    void chooseInMenu(int menu, int item, const std::wstring& what);
    void selectRow(const std::wstring& name);
    /// Closes the window by its menu.
    void leave();

    // What the user then sees.
    void waitForMenu();
    /// The open dialog, once it takes the keyboard; it must have this title.
    HWND dialog(const wchar_t* title);
    /// The one visible control of a class.
    HWND control(HWND dialog, const wchar_t* className);
    void waitForText(HWND edit, const std::wstring& text, const std::wstring& what);
    void waitForFocus(HWND control, const std::wstring& what);
    HWND errorBox() { return messageBox(L"Error"); }
    HWND messageBox(const wchar_t* title);
    /// Clicks a button of a message box, and waits until the box is gone.
    void answer(HWND box, int button, const std::wstring& name);
    /// No dialog any more, and the window takes input again: in the list, or in the schedule.
    void waitForEnd();
    void waitForEndIn(HWND part);
    void picture(HWND window, const wchar_t* name);

    // What then stands in the database, and in the window.
    std::vector<GroupRow> rows() const;
    void expectRows(const std::vector<GroupRow>& expected);

    // What the data layer was asked for.
    void clearTrace();
    const std::wstring& trace();
    /// What the commands were told since it was last asked, one line for each.
    std::wstring takeOrders();
    void expectCall(const std::wstring& line);
    void expectNoCall(const std::wstring& line);

private:
    void pointAt(HWND window, POINT place, const std::wstring& what);
    void waitUntilTaken();
    void waitUntilAtRest();

    MainWindow& window_;
    HWND main_;
    HWND list_;
    HWND schedule_;
    const Bookings* bookings_ = nullptr;
    std::wstring folder_;
    User user_;
    std::wstring trace_;
    std::wstring orders_;
};

} // namespace korvane::host
