#include "demo/host/tour/Visitor.h"

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
    : window_(window), main_(window.handle()), list_(window.content().handle()), folder_(std::move(folder)),
      user_([this] { waitUntilTaken(); })
{
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

void Visitor::waitForText(HWND edit, const std::wstring& text)
{
    if (const auto failure = attempt([&] { waitFor(L"", [&] { return textOf(edit) == text; }); }))
        throw tourFailure(L"the name is " + quoted(textOf(edit)) + L", not " + quoted(text));
}

void Visitor::waitForFocus(HWND control, const std::wstring& what)
{
    waitFor(L"the keyboard is with " + what, [&] { return focusIn(main_) == control; });
}

HWND Visitor::errorBox()
{
    HWND box = nullptr;
    waitFor(L"there is an error box",
            [&] { return (box = visibleWindow(messageBoxClass, L"Error")) != nullptr; });
    return box;
}

void Visitor::waitForEnd()
{
    waitFor(L"the window has the keyboard", [&] {
        return !visibleWindow(CommandDialog::className) && IsWindowEnabled(main_) &&
               GetForegroundWindow() == main_ && focusIn(main_) == list_;
    });
}

void Visitor::picture(HWND window, const wchar_t* name)
{
    const std::wstring file = std::wstring(name) + L".png";
    print("   ", L"picture " + file);
    savePicture(window, folder_ + L"\\" + file);
}

// --- what then stands in the database and in the window

std::vector<GroupRow> Visitor::rows() const
{
    return readGroups(window_.database().path());
}

void Visitor::expectRows(const std::vector<GroupRow>& expected)
{
    expect(rows() == expected, L"other rows in the database");
    waitFor(L"the window's list shows what is in the database", [&] {
        for (std::size_t row = 0; row < expected.size(); ++row)
            if (itemOf(list_, static_cast<int>(row), 0) != expected[row].name ||
                itemOf(list_, static_cast<int>(row), 1) != std::to_wstring(expected[row].id))
                return false;
        return itemOf(list_, static_cast<int>(expected.size()), 0).empty();
    });
}

void Visitor::expectCall(const std::wstring& line)
{
    expect(trace().find(line) != std::wstring::npos, L"a call " + line + L" in the data layer");
}

void Visitor::expectNoCall(const std::wstring& line)
{
    expect(trace().find(line) == std::wstring::npos, L"no call " + line + L" in the data layer");
}

void Visitor::clearTrace()
{
    trace();
    trace_.clear();
}

const std::wstring& Visitor::trace()
{
    if (IsWindow(main_))
        window_.invoke([this] { trace_ += window_.database().takeTrace(); });
    return trace_;
}

} // namespace korvane::host
