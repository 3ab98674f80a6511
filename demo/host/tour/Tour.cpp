#include "demo/host/tour/Tour.h"

#include "demo/host/tour/Picture.h"
#include "demo/host/tour/Report.h"
#include "demo/host/tour/Screen.h"
#include "framework/com/Boundary.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

constexpr const char* step1 = "   ";
constexpr const char* step2 = "     ";

constexpr const wchar_t* menuClass = L"#32768";
constexpr const wchar_t* messageBoxClass = L"#32770";

constexpr long newFlags = 3; // what the command gives to every new group

void expect(bool isTheCase, const std::wstring& what)
{
    if (!isTheCase)
        throw tourFailure(L"expected: " + what);
}

std::wstring quoted(const std::wstring& text)
{
    return L"\"" + text + L"\"";
}

/// A new row stands last, under a number that was not there before.
std::vector<GroupRow> withNew(std::vector<GroupRow> rows, const std::vector<GroupRow>& now,
                              const wchar_t* name)
{
    const long id = now.empty() ? 0 : now.back().id;
    expect(std::none_of(rows.begin(), rows.end(), [&](const GroupRow& row) { return row.id >= id; }),
           L"a new number for the new group");
    rows.push_back({id, name, newFlags});
    return rows;
}

GroupRow& rowOf(std::vector<GroupRow>& rows, const wchar_t* name)
{
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const GroupRow& row) { return row.name == name; });
    expect(found != rows.end(), L"a group " + quoted(name) + L" in the database");
    return *found;
}

} // namespace

Tour::Tour(MainWindow& window, std::wstring folder)
    : window_(window), main_(window.handle()), list_(window.content().handle()), folder_(std::move(folder)),
      user_([this] { waitUntilTaken(); }), thread_([this] { succeeded_ = go(); })
{
}

bool Tour::succeeded()
{
    if (thread_.joinable())
        thread_.join();
    return succeeded_;
}

bool Tour::go()
{
    static constexpr Step steps[] = {
        {L"New group: the menu by keyboard, the name typed, OK by Enter", &Tour::addByKeyboard},
        {L"New group: the menu's key, OK by its button", &Tour::addByShortcut},
        {L"New group: all by mouse but the name", &Tour::addByMouse},
        {L"Rename: chosen in the list by mouse, the name edited, OK by mouse", &Tour::rename},
        {L"An error leaves the dialog open: a name that is taken, then a better one",
         &Tour::addWithNameThatIsTaken},
        {L"Cancel by Esc writes nothing", &Tour::cancel},
        {L"Tab, Shift+Tab and access keys go about in the dialog", &Tour::walkByKeyboard},
        {L"Delete: chosen in the list, confirmed by a double click", &Tour::remove},
        {L"Exit by the menu", &Tour::leave},
    };

    int number = 0;
    for (const Step& step : steps)
        if (!take(step, ++number))
        {
            attempt([&] { savePicture(GetDesktopWindow(), folder_ + L"\\failed.png"); });
            print("", L"The tour ends here: later steps build on this one.");
            window_.invoke([] { PostQuitMessage(EXIT_FAILURE); });
            return false;
        }
    print("", L"All " + std::to_wstring(number) + L" steps passed. The pictures are in " + folder_ + L".");
    return true;
}

bool Tour::take(const Step& step, int number)
{
    print("", std::to_wstring(number) + L". " + step.title);
    trace();
    trace_.clear();
    const auto failure = attempt([&] { (this->*step.run)(); });
    attempt([&] { trace(); });
    print(step1, L"data layer:");
    printLines(step2, trace_);
    print(step1, L"in the database:");
    attempt([&] {
        for (const GroupRow& row : rows())
            print(step2, std::to_wstring(row.id) + L"  " + row.name + L"  (flags " +
                             std::to_wstring(row.flags) + L")");
    });
    if (failure)
        print(step1, L"FAIL: " + std::wstring(failure->description().view()));
    else
        print(step1, L"PASS");
    print("", L"");
    return !failure;
}

// --- the steps

void Tour::addByKeyboard()
{
    waitFor(L"the window is there", [&] { return IsWindowVisible(main_) != FALSE; });
    clickAt(list_, middleOf(list_), L"the empty part of the list");
    waitForEnd();
    const auto before = rows();

    press({VK_MENU, 'G'}, L"Alt+G");
    waitFor(L"the menu is open", [&] { return isInMenu(main_) && visibleWindow(menuClass); });
    press({'N'}, L"N");
    const HWND open = dialog();
    const HWND name = control(open, L"Edit");
    waitForFocus(name, L"the name");
    type(L"Staff");
    waitForText(name, L"Staff");
    picture(open, L"new");
    press({VK_RETURN}, L"Enter");
    waitForEnd();

    expectRows(withNew(before, rows(), L"Staff"));
    expectTrace(L"Groups.Add \"Staff\", 3", true);
}

void Tour::addByShortcut()
{
    const auto before = rows();
    press({VK_CONTROL, 'N'}, L"Ctrl+N");
    const HWND open = dialog();
    type(L"Night shift");
    waitForText(control(open, L"Edit"), L"Night shift");
    clickButton(open, L"OK");
    waitForEnd();
    expectRows(withNew(before, rows(), L"Night shift"));
}

void Tour::addByMouse()
{
    const auto before = rows();
    chooseInMenu(0, L"New...");
    const HWND open = dialog();
    const HWND name = control(open, L"Edit");
    clickAt(name, middleOf(name), L"the name");
    type(L"Training");
    waitForText(name, L"Training");
    clickButton(open, L"OK");
    waitForEnd();
    expectRows(withNew(before, rows(), L"Training"));
    picture(main_, L"main");
}

void Tour::rename()
{
    auto expected = rows();
    selectRow(L"Training");
    chooseInMenu(1, L"Rename...");
    const HWND open = dialog();
    const HWND name = control(open, L"Edit");
    const HWND list = control(open, L"ListBox");
    waitForText(name, L"Training");
    const std::vector<std::wstring> offered{L"Staff", L"Night shift", L"Training"};
    expect(itemsOf(list) == offered, L"the three new groups in the dialog, and no built-in one");

    clickAt(list, middleOf(list, placeOfItem(list, L"Night shift")), L"\"Night shift\" in the dialog's list");
    waitForText(name, L"Night shift");
    picture(open, L"rename");
    clickAt(name, middleOf(name), L"the name");
    waitForFocus(name, L"the name");
    press({VK_END}, L"End");
    for (int letter = 0; letter < 5; ++letter)
        press({VK_BACK}, L"Backspace");
    type(L"watch");
    waitForText(name, L"Night watch");
    clickButton(open, L"OK");
    waitForEnd();

    rowOf(expected, L"Night shift").name = L"Night watch";
    expectRows(expected);
}

void Tour::addWithNameThatIsTaken()
{
    const auto before = rows();
    press({VK_CONTROL, 'N'}, L"Ctrl+N");
    const HWND open = dialog();
    const HWND name = control(open, L"Edit");
    type(L"Staff");
    waitForText(name, L"Staff");
    press({VK_RETURN}, L"Enter");

    HWND box = nullptr;
    waitFor(L"there is an error box",
            [&] { return (box = visibleWindow(messageBoxClass, L"Error")) != nullptr; });
    const auto texts = visibleChildren(box, L"Static");
    expect(std::any_of(texts.begin(), texts.end(),
                       [](HWND text) {
                           return textOf(text) == L"There is a group named \"Staff\" already.\n\n"
                                                  L"Source: KorvaneData.Groups\nNumber: 0x8004232B";
                       }),
           L"the data layer's text, source and number in the error box");
    expect(!IsWindowEnabled(open), L"a dialog that waits for the error box");
    picture(box, L"error");
    press({VK_RETURN}, L"Enter, in the error box");
    waitFor(L"the error box is gone", [&] { return !IsWindow(box); });

    expect(dialog() == open, L"the same dialog, open still");
    waitForFocus(name, L"the name");
    expect(textOf(name) == L"Staff", L"the name as it was typed");
    expect(rows() == before, L"the database as it was");
    press({VK_END}, L"End");
    type(L" (part-time)");
    waitForText(name, L"Staff (part-time)");
    clickButton(open, L"OK");
    waitForEnd();
    expectRows(withNew(before, rows(), L"Staff (part-time)"));
}

void Tour::cancel()
{
    const auto before = rows();
    press({VK_CONTROL, 'N'}, L"Ctrl+N");
    HWND open = dialog();
    type(L"Nobody");
    waitForText(control(open, L"Edit"), L"Nobody");
    press({VK_ESCAPE}, L"Esc");
    waitForEnd();

    selectRow(L"Training");
    press({VK_F2}, L"F2");
    open = dialog();
    const HWND name = control(open, L"Edit");
    waitForText(name, L"Training");
    clickAt(name, middleOf(name), L"the name");
    press({VK_END}, L"End");
    type(L" course");
    waitForText(name, L"Training course");
    press({VK_ESCAPE}, L"Esc");
    waitForEnd();

    expectRows(before);
    expectTrace(L"Groups.Add", false);
    expectTrace(L"Groups.Update", false);
}

void Tour::walkByKeyboard()
{
    const auto before = rows();
    selectRow(L"Staff");
    press({VK_F2}, L"F2");
    const HWND open = dialog();
    const HWND name = control(open, L"Edit");
    const HWND list = control(open, L"ListBox");
    const HWND ok = visibleChild(open, L"Button", L"OK");
    const HWND cancelButton = visibleChild(open, L"Button", L"Cancel");

    waitForFocus(name, L"the name, to begin with");
    press({VK_TAB}, L"Tab");
    waitForFocus(list, L"the list");
    press({VK_TAB}, L"Tab");
    waitForFocus(ok, L"OK");
    press({VK_TAB}, L"Tab");
    waitForFocus(cancelButton, L"Cancel");
    press({VK_TAB}, L"Tab");
    waitForFocus(name, L"the name again");
    press({VK_SHIFT, VK_TAB}, L"Shift+Tab");
    waitForFocus(cancelButton, L"Cancel");
    press({VK_MENU, 'M'}, L"Alt+M");
    waitForFocus(name, L"the name");
    press({VK_MENU, 'E'}, L"Alt+E");
    waitForFocus(list, L"the list");
    press({VK_HOME}, L"Home");
    waitForText(name, itemsOf(list).front());
    press({VK_END}, L"End");
    waitForText(name, itemsOf(list).back());
    press({VK_ESCAPE}, L"Esc");
    waitForEnd();
    expectRows(before);
}

void Tour::remove()
{
    auto expected = rows();
    selectRow(L"Training");
    press({VK_DELETE}, L"Del");
    const HWND open = dialog();
    const HWND list = control(open, L"ListBox");
    expect(visibleChildren(open, L"Edit").empty(), L"no name to edit");
    const RECT item = placeOfItem(list, L"Staff (part-time)");
    clickAt(list, middleOf(list, item), L"\"Staff (part-time)\" in the dialog's list");
    waitForFocus(list, L"the list");
    picture(open, L"delete");
    // Elsewhere on the item: the click before must not count as the first one of the two.
    RECT firstHalf = item;
    firstHalf.right = (item.left + item.right) / 2;
    doubleClickAt(list, middleOf(list, firstHalf), L"\"Staff (part-time)\"");
    waitForEnd();

    const GroupRow removed = rowOf(expected, L"Staff (part-time)");
    std::erase(expected, removed);
    expectRows(expected);
    expectTrace(L"Groups.Remove " + std::to_wstring(removed.id), true);
}

void Tour::leave()
{
    press({VK_MENU, 'F'}, L"Alt+F");
    waitFor(L"the menu is open", [&] { return isInMenu(main_) && visibleWindow(menuClass); });
    press({'X'}, L"X");
    waitFor(L"the window is gone", [&] { return !IsWindow(main_); });
}

// --- what the user does

void Tour::press(std::initializer_list<WORD> keys, const std::wstring& keyNames)
{
    print(step1, L"press " + keyNames);
    user_.press(keys);
}

void Tour::type(const std::wstring& text)
{
    print(step1, L"type " + quoted(text));
    user_.type(text);
}

void Tour::clickAt(HWND window, POINT place, const std::wstring& what)
{
    print(step1, L"click on " + what);
    pointAt(window, place, what);
    user_.click(place);
}

void Tour::doubleClickAt(HWND window, POINT place, const std::wstring& what)
{
    print(step1, L"double click on " + what);
    pointAt(window, place, what);
    user_.doubleClick(place);
}

void Tour::pointAt(HWND window, POINT place, const std::wstring& what)
{
    user_.moveTo(place);
    waitFor(L"nothing is in front of " + what, [&] { return WindowFromPoint(place) == window; });
}

void Tour::clickButton(HWND dialog, const wchar_t* caption)
{
    const HWND button = visibleChild(dialog, L"Button", caption);
    expect(button != nullptr, L"a button " + quoted(caption));
    clickAt(button, middleOf(button), caption);
}

/// Opens the menu of the groups, and chooses an item of it.
void Tour::chooseInMenu(int item, const std::wstring& what)
{
    constexpr UINT groups = 1;
    const HMENU bar = GetMenu(main_);
    RECT place{};
    expect(GetMenuItemRect(main_, bar, groups, &place) != FALSE, L"a menu bar");
    clickAt(main_, {(place.left + place.right) / 2, (place.top + place.bottom) / 2}, L"the menu Groups");
    HWND menu = nullptr;
    waitFor(L"the menu is open", [&] { return (menu = visibleWindow(menuClass)) != nullptr; });
    expect(GetMenuItemRect(nullptr, GetSubMenu(bar, groups), static_cast<UINT>(item), &place) != FALSE,
           L"an item " + what);
    clickAt(menu, {(place.left + place.right) / 2, (place.top + place.bottom) / 2}, what);
}

void Tour::selectRow(const std::wstring& name)
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

void Tour::waitUntilTaken()
{
    waitFor(L"the input is taken", [&] {
        bool waiting = false;
        window_.invoke([&] { waiting = (HIWORD(GetQueueStatus(QS_INPUT)) & QS_INPUT) != 0; });
        return !waiting;
    });
}

/// The open dialog, once it takes the keyboard.
HWND Tour::dialog()
{
    HWND found = nullptr;
    waitFor(L"a dialog is open and has the keyboard", [&] {
        found = visibleWindow(CommandDialog::className);
        return found && GetForegroundWindow() == found && IsChild(found, focusIn(main_));
    });
    expect(!IsWindowEnabled(main_), L"a window that waits for the dialog");
    expect(textOf(found) == L"Group", L"the title \"Group\"");
    return found;
}

HWND Tour::control(HWND dialog, const wchar_t* className)
{
    const auto found = visibleChildren(dialog, className);
    expect(found.size() == 1, std::wstring(L"one control of the class ") + className);
    return found.front();
}

void Tour::waitForText(HWND edit, const std::wstring& text)
{
    if (const auto failure = attempt([&] { waitFor(L"", [&] { return textOf(edit) == text; }); }))
        throw tourFailure(L"the name is " + quoted(textOf(edit)) + L", not " + quoted(text));
}

void Tour::waitForFocus(HWND control, const std::wstring& what)
{
    waitFor(L"the keyboard is with " + what, [&] { return focusIn(main_) == control; });
}

/// No dialog any more, and the window takes input again.
void Tour::waitForEnd()
{
    waitFor(L"the window has the keyboard", [&] {
        return !visibleWindow(CommandDialog::className) && IsWindowEnabled(main_) &&
               GetForegroundWindow() == main_ && focusIn(main_) == list_;
    });
}

void Tour::picture(HWND window, const wchar_t* name)
{
    const std::wstring file = std::wstring(name) + L".png";
    print(step1, L"picture " + file);
    savePicture(window, folder_ + L"\\" + file);
}

// --- what then stands in the database and in the window

std::vector<GroupRow> Tour::rows() const
{
    return readGroups(window_.database().path());
}

void Tour::expectRows(const std::vector<GroupRow>& expected)
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

void Tour::expectTrace(const std::wstring& line, bool there)
{
    expect((trace().find(line) != std::wstring::npos) == there,
           (there ? L"a call " : L"no call ") + line + L" in the data layer");
}

/// The data layer's trace of the step so far.
std::wstring Tour::trace()
{
    if (IsWindow(main_))
        window_.invoke([this] { trace_ += window_.database().takeTrace(); });
    return trace_;
}

} // namespace korvane::host
