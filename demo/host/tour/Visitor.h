// The visitor whom the tour leads: what a user does and sees in the host, and what then stands in the database.
// Each deed is told. What is not as expected is thrown as a Failure with the reason.
#pragma once

#include "demo/host/MainWindow.h"
#include "demo/host/tour/Bookings.h"
#include "demo/host/tour/GroupRows.h"
#include "demo/host/tour/Report.h"
#include "demo/host/tour/Roster.h"
#include "demo/host/tour/User.h"

#include <string>
#include <vector>

namespace korvane::host
{

void expect(bool isTheCase, const std::wstring& what);

std::wstring quoted(const std::wstring& text);

/// A control of a dialog, as a user tells it from the others.
struct Field
{
    const wchar_t* name = L"";
    const wchar_t* className = L"";
    const wchar_t* caption = nullptr; ///< null where there is one of the class only
    DWORD style = 0;                  ///< what it has beyond others of its class
    const wchar_t* label = nullptr;   ///< text of the label before it
};

/// A field that is told by its label.
constexpr Field labelled(const wchar_t* name, const wchar_t* className, const wchar_t* label) noexcept
{
    return {name, className, nullptr, 0, label};
}

// In every dialog.
inline constexpr Field okButton{L"OK", L"Button", L"OK"};
inline constexpr Field cancelButton{L"Cancel", L"Button", L"Cancel"};

class Visitor
{
public:
    /// @param folder where the pictures go.
    Visitor(MainWindow& window, std::wstring folder, Report& report);
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;
    ~Visitor() = default;

    /// From now on what is booked is read here.
    void reads(const Bookings& bookings) noexcept { bookings_ = &bookings; }
    const Bookings& bookings() const noexcept { return *bookings_; }
    Roster roster() const { return Roster(bookings_->root()); }

    MainWindow& window() const noexcept { return window_; }
    HWND mainWindow() const noexcept { return main_; }
    HWND list() const noexcept { return list_; }
    HWND schedule() const noexcept { return schedule_; }
    /// The dialog that was opened last.
    HWND dialog() const noexcept { return dialog_; }
    /// The window that takes input now.
    HWND front() const noexcept;
    /// A part of the dialog; it must be there, and once.
    HWND find(const Field& field) const;

    // What the user does.
    /// Keys by their names, such as "Ctrl+N".
    void press(const std::wstring& keys);
    void hold(const std::wstring& key);
    void release(const std::wstring& key);
    void type(const std::wstring& text);
    void click(const Field& field);
    void clickAt(HWND window, POINT place, const std::wstring& what);
    void doubleClickAt(HWND window, POINT place, const std::wstring& what);
    void rightClickAt(HWND window, POINT place, const std::wstring& what);
    /// Takes hold of something and draws it elsewhere, without letting it go yet.
    void dragTo(HWND window, POINT from, POINT to, const std::wstring& what);
    /// Lets go of it where it is.
    void drop();
    void choose(const wchar_t* menu, const wchar_t* item);
    void answer(const wchar_t* box, int button, const std::wstring& name);
    /// Lets go of all keys and of the mouse, after a deed that failed.
    void letGo() const noexcept { user_.letGo(); }

    // What the user then sees.
    void waitForMenu();
    /// The dialog takes the keyboard, and the window waits for it.
    void waitForDialog(const wchar_t* title);
    void waitForBox(const wchar_t* title);
    void waitForBoxToGo(const wchar_t* title);
    void waitForText(const Field& field, const std::wstring& text);
    void waitForFocus(HWND control, const std::wstring& what);
    void waitForEnd(HWND part);
    void picture(HWND window, const wchar_t* name);

    // What stands in the database, and stood there when the step began.
    void beginStep();
    std::vector<GroupRow> groups() const;
    const std::vector<GroupRow>& groupsBefore() const noexcept { return groupsBefore_; }
    const std::vector<Booking>& bookedBefore() const noexcept { return bookedBefore_; }

    // What was asked for since the step began: of the data layer, and of the commands.
    const std::wstring& trace();
    bool hasCalled(const std::wstring& line) { return trace().find(line) != std::wstring::npos; }
    std::wstring takeOrders();

private:
    void pointAt(HWND window, POINT place, const std::wstring& what);
    void waitUntilTaken();
    void waitUntilAtRest();

    MainWindow& window_;
    HWND main_;
    HWND list_;
    HWND schedule_;
    HWND dialog_ = nullptr;
    POINT dragged_{}; ///< where the hand is that holds something
    const Bookings* bookings_ = nullptr;
    std::wstring folder_;
    Report& report_;
    User user_;
    std::vector<GroupRow> groupsBefore_;
    std::vector<Booking> bookedBefore_;
    std::wstring trace_;
    std::wstring orders_;
};

} // namespace korvane::host
