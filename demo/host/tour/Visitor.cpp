#include "demo/host/tour/Visitor.h"

#include "demo/host/Orders.h"
#include "demo/host/tour/Picture.h"
#include "demo/host/tour/Report.h"
#include "demo/host/tour/Screen.h"
#include "framework/com/Boundary.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

constexpr const wchar_t* menuClass = L"#32768";
constexpr const wchar_t* messageBoxClass = L"#32770";

} // namespace

void expect(bool isTheCase, const std::wstring& what)
{
    if (!isTheCase)
        throw tourFailure(L"expected: " + what);
}

std::wstring quoted(const std::wstring& text)
{
    return L"\"" + text + L"\"";
}

Visitor::Visitor(MainWindow& window, std::wstring folder)
    : window_(window), main_(window.handle()), list_(window.content().handle()),
      schedule_(window.schedule().handle()), folder_(std::move(folder)),
      user_([this] { waitUntilTaken(); }, [this] { waitUntilAtRest(); })
{
    window_.onOrder = [this](const Order& order) { orders_ += shown(order) + L"\n"; };
}

// --- what the user does

void Visitor::press(std::initializer_list<WORD> keys, const std::wstring& keyNames)
{
    print("   ", L"press " + keyNames);
    user_.press(keys);
}

void Visitor::type(const std::wstring& text)
{
    print("   ", L"type " + quoted(text));
    user_.type(text);
}

void Visitor::clickAt(HWND window, POINT place, const std::wstring& what)
{
    print("   ", L"click on " + what);
    pointAt(window, place, what);
    user_.click(place);
}

void Visitor::doubleClickAt(HWND window, POINT place, const std::wstring& what)
{
    print("   ", L"double click on " + what);
    pointAt(window, place, what);
    user_.doubleClick(place);
}

void Visitor::pointAt(HWND window, POINT place, const std::wstring& what)
{
    user_.moveTo(place);
    waitFor(L"nothing is in front of " + what, [&] { return WindowFromPoint(place) == window; });
}

void Visitor::dragTo(HWND window, POINT from, POINT to, const std::wstring& what)
{
    print("   ", L"drag " + what);
    pointAt(window, from, what);
    user_.pressButton(from);
    user_.moveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
    user_.moveTo(to);
}

void Visitor::dropAt(POINT place, const std::wstring& what)
{
    print("   ", L"drop " + what);
    user_.releaseButton(place);
}

void Visitor::hold(WORD key, const std::wstring& keyName)
{
    print("   ", L"hold " + keyName);
    user_.hold(key);
}

void Visitor::release(WORD key, const std::wstring& keyName)
{
    print("   ", L"release " + keyName);
    user_.release(key);
}

void Visitor::clickButton(HWND dialog, const wchar_t* caption)
{
    const HWND button = visibleChild(dialog, L"Button", caption);
    expect(button != nullptr, L"a button " + quoted(caption));
    clickAt(button, middleOf(button), caption);
}

void Visitor::chooseInMenu(int menu, int item, const std::wstring& what)
{
    const HMENU bar = GetMenu(main_);
    wchar_t title[64];
    RECT place{};
    expect(GetMenuStringW(bar, static_cast<UINT>(menu), title, ARRAYSIZE(title), MF_BYPOSITION) > 0 &&
               GetMenuItemRect(main_, bar, static_cast<UINT>(menu), &place),
           L"a menu bar");
    clickAt(main_, middleOf(place), std::wstring(L"the menu ") + title);
    waitForMenu();
    expect(GetMenuItemRect(nullptr, GetSubMenu(bar, menu), static_cast<UINT>(item), &place) != FALSE,
           L"an item " + what);
    clickAt(visibleWindow(menuClass), middleOf(place), what);
}

void Visitor::selectRow(const std::wstring& name)
{
    const auto now = rows();
    const auto found =
        std::find_if(now.begin(), now.end(), [&](const GroupRow& row) { return row.name == name; });
    expect(found != now.end(), L"a group " + quoted(name));
    const auto row = static_cast<int>(found - now.begin());
    expect(itemOf(list_, row, 0) == name, quoted(name) + L" in the window's list");
    clickAt(list_, middleOf(list_, placeOfRow(list_, row)), quoted(name) + L" in the window's list");
    waitFor(L"the row is selected", [&] {
        long selected = 0;
        window_.invoke([&] { selected = window_.content().selected(); });
        return selected == found->id;
    });
}

void Visitor::leave()
{
    press({VK_MENU, 'F'}, L"Alt+F");
    waitForMenu();
    press({'X'}, L"X");
    waitFor(L"the window is gone", [&] { return !IsWindow(main_); });
}

// --- what the user then sees

void Visitor::waitForMenu()
{
    waitFor(L"the menu is open", [&] { return isInMenu(main_) && visibleWindow(menuClass); });
}

void Visitor::waitUntilTaken()
{
    waitFor(L"the input is taken", [&] {
        bool waiting = false;
        window_.invoke([&] { waiting = (HIWORD(GetQueueStatus(QS_INPUT)) & QS_INPUT) != 0; });
        return !waiting;
    });
}

/// Under Wine the windows stand on a display that knows nothing of keys that a program sends. Whenever a window there
/// comes under the pointer or gets the focus, the display says which keys are down, none, and Wine believes it: an Alt
/// that is held while such word is on its way is up again when the letter comes. So nobody holds a key before the
/// display has answered the window's thread, and with it has told all that came before. On Windows no word goes lost.
void Visitor::waitUntilAtRest()
{
    // For a tenth of a second after the last input Wine knows the pointer's place without asking the display.
    constexpr int quiet = 150; // milliseconds
    const auto isQuiet = [] {
        LASTINPUTINFO last{sizeof last, 0};
        return GetLastInputInfo(&last) && static_cast<int>(GetTickCount() - last.dwTime) > quiet;
    };
    const auto askDisplay = [] {
        POINT pointer{};
        GetCursorPos(&pointer);
    };
    waitFor(L"nothing moves any more", [&] {
        if (!isQuiet())
            return false;
        askDisplay(); // what this thread has sent to it is done
        bool waiting = false;
        for (int round = 0; round < 2; ++round) // what it tells may move something else
            window_.invoke([&] {
                askDisplay();
                waiting = HIWORD(GetQueueStatus(QS_ALLEVENTS)) != 0;
            });
        return !waiting && isQuiet();
    });
}

HWND Visitor::dialog(const wchar_t* title)
{
    HWND found = nullptr;
    waitFor(L"a dialog is open and has the keyboard", [&] {
        found = visibleWindow(CommandDialog::className);
        return found && GetForegroundWindow() == found && IsChild(found, focusIn(main_));
    });
    expect(!IsWindowEnabled(main_), L"a window that waits for the dialog");
    expect(textOf(found) == title, L"the title " + quoted(title));
    return found;
}

HWND Visitor::control(HWND dialog, const wchar_t* className)
{
    const auto found = visibleChildren(dialog, className);
    expect(found.size() == 1, std::wstring(L"one control of the class ") + className);
    return found.front();
}

void Visitor::waitForText(HWND edit, const std::wstring& text, const std::wstring& what)
{
    std::wstring seen;
    const auto failure = attempt([&] {
        waitFor(what + L" is " + quoted(text), [&] {
            seen = textOf(edit);
            return seen == text;
        });
    });
    if (failure)
        throw tourFailure(std::wstring(failure->description().view()) + L"; seen last: " + quoted(seen));
}

void Visitor::waitForFocus(HWND control, const std::wstring& what)
{
    waitFor(L"the keyboard is with " + what, [&] { return focusIn(main_) == control; });
}

HWND Visitor::messageBox(const wchar_t* title)
{
    HWND box = nullptr;
    waitFor(std::wstring(L"there is a box ") + title,
            [&] { return (box = visibleWindow(messageBoxClass, title)) != nullptr; });
    return box;
}

void Visitor::answer(HWND box, int button, const std::wstring& name)
{
    const HWND found = GetDlgItem(box, button);
    expect(found != nullptr, L"a button " + name);
    clickAt(found, middleOf(found), name);
    waitFor(L"the box is gone", [&] { return !IsWindow(box); });
}

void Visitor::waitForEnd()
{
    waitForEndIn(list_);
}

void Visitor::waitForEndIn(HWND part)
{
    waitFor(L"the window has the keyboard", [&] {
        return !visibleWindow(CommandDialog::className) && IsWindowEnabled(main_) &&
               GetForegroundWindow() == main_ && focusIn(main_) == part;
    });
}

void Visitor::picture(HWND window, const wchar_t* name)
{
    const std::wstring file = std::wstring(name) + L".png";
    print("   ", L"picture " + file);
    savePicture(window, folder_ + L"\\" + file);
}

} // namespace korvane::host
