// The words that the steps of all chapters are written in.
#pragma once

#include "demo/host/tour/Screen.h"
#include "demo/host/tour/Step.h"

#include <algorithm>

namespace korvane::host
{

using Text = const wchar_t*;

inline constexpr Text errorTitle = L"Error"; // of the host's error box

// What the visitor does.
/// Keys by their names, such as "Ctrl+N", so many times.
inline constexpr Word press{[](Visitor& visitor, Text keys, int times = 1) {
    for (; times > 0; --times)
        visitor.press(keys);
}};
inline constexpr Word hold{&Visitor::hold};
inline constexpr Word release{&Visitor::release};
inline constexpr Word click{&Visitor::click};
inline constexpr Word drop{&Visitor::drop};
/// Chooses an item in a menu of the window, by mouse.
inline constexpr Word choose{&Visitor::choose};
/// Clicks a button of a message box, and waits until the box is gone.
inline constexpr Word answer{&Visitor::answer};
inline constexpr Word writes{&Visitor::type};
/// Types into the part that has the keyboard, which then shows it behind what it had.
inline constexpr Word enter{[](Visitor& visitor, Field field, Text typed, Text before = L"") {
    visitor.type(typed);
    visitor.waitForText(field, before + std::wstring(typed));
}};
/// Puts a text in the place of what a field has.
inline constexpr Word fill{[](Visitor& visitor, Field field, Text text) {
    visitor.click(field);
    visitor.press(L"End");
    for (auto left = textOf(visitor.find(field)).size(); left > 0; --left)
        visitor.press(L"Backspace");
    visitor.type(text);
    visitor.waitForText(field, text);
}};
/// Chooses in a box by typing what the item begins with.
inline constexpr Word chooseIn{[](Visitor& visitor, Field box, Text item) {
    visitor.click(box);
    visitor.press(L"Esc"); // its list is open
    for (int tries = 0; tries == 0 || (textOf(visitor.find(box)) != item && tries <= 10); ++tries)
        visitor.type(std::wstring(1, *item)); // several may begin alike
    visitor.waitForText(box, item);
}};
/// Goes on with Tab until a field has the keyboard.
inline constexpr Word tabTo{[](Visitor& visitor, Field field) {
    const HWND wanted = visitor.find(field);
    for (int presses = 0; focusIn(visitor.dialog()) != wanted; ++presses)
    {
        expect(presses < 30, std::wstring(L"a tab order that leads to ") + field.name);
        visitor.press(L"Tab");
    }
}};
inline constexpr Word clickItem{[](Visitor& visitor, Field list, Text text) {
    const HWND listBox = visitor.find(list);
    visitor.clickAt(listBox, middleOf(listBox, placeOfItem(listBox, text)),
                    quoted(text) + L" in the dialog's list");
}};
inline constexpr Word doubleClickItem{[](Visitor& visitor, Field list, Text text) {
    const HWND listBox = visitor.find(list);
    // Elsewhere on the item: a click before must not count as the first one of the two.
    RECT firstHalf = placeOfItem(listBox, text);
    firstHalf.right = (firstHalf.left + firstHalf.right) / 2;
    visitor.doubleClickAt(listBox, middleOf(listBox, firstHalf), quoted(text));
}};
/// Calls a command by the access keys of its menu and of its entry there.
inline constexpr Word chooseByKeys{[](Visitor& visitor, Text menu, Text item) {
    visitor.press(menu);
    visitor.waitForMenu();
    visitor.press(item);
}};
/// Goes on with another account, by the menu.
inline constexpr Word logInAs{[](Visitor& visitor, const std::wstring& login) {
    chooseByKeys(L"Alt+F", L"L")(visitor);
    const HMENU accounts = accountMenu(GetMenu(visitor.mainWindow()));
    int index = -1;
    waitFor(L"the menu has an account " + login, [&] {
        index = itemThatEndsWith(accounts, L" " + login);
        return index >= 0;
    });
    visitor.press(std::to_wstring(index + 1));
    waitFor(L"the title tells who works here",
            [&] { return textOf(visitor.mainWindow()).starts_with(L"Korvane - " + login); });
}};
/// Closes the window by its menu.
inline constexpr Word leave{[](Visitor& visitor) {
    chooseByKeys(L"Alt+F", L"X")(visitor);
    waitFor(L"the window is gone", [&] { return !IsWindow(visitor.mainWindow()); });
}};

// What he then sees.
inline constexpr Word startsUp{[](Visitor& visitor) {
    waitFor(L"the window is there", [&] { return IsWindowVisible(visitor.mainWindow()) != FALSE; });
}};
inline constexpr Word menuOpens{&Visitor::waitForMenu};
inline constexpr Word opens{&Visitor::waitForDialog};
inline constexpr Word opensBox{&Visitor::waitForBox};
inline constexpr Word boxIsGone{&Visitor::waitForBoxToGo};
inline constexpr Word shows{&Visitor::waitForText};
/// The window's title, with the notice of what there is to read.
inline constexpr Word hasTitle{[](Visitor& visitor, const std::wstring& title) {
    waitFor(L"the window's title is " + quoted(title), [&] { return textOf(visitor.mainWindow()) == title; });
}};
/// The error box begins like this, and the dialog waits for it. It is read, and goes.
inline constexpr Word tellsError{[](Visitor& visitor, const std::wstring& text, Text pictureName,
                                    Text title = errorTitle) {
    visitor.waitForBox(title);
    const auto told = visibleChildren(visitor.front(), L"Static");
    expect(std::any_of(told.begin(), told.end(), [&](HWND part) { return textOf(part).starts_with(text); }),
           quoted(text) + L" in the error box");
    expect(!IsWindowEnabled(visitor.dialog()), L"a dialog that waits for the error box");
    visitor.picture(visitor.front(), pictureName);
    visitor.press(L"Enter");
    visitor.waitForBoxToGo(title);
    visitor.waitForDialog(textOf(visitor.dialog()).c_str());
}};
inline constexpr Word offers{[](Visitor& visitor, Field list, const std::vector<std::wstring>& items) {
    const HWND listBox = visitor.find(list);
    waitFor(std::to_wstring(items.size()) + L" items are to choose from", [&] {
        std::vector<std::wstring> found;
        visitor.window().invoke([&] { found = itemsOf(listBox); }); // in one go: the list may be filled anew
        return found == items;
    });
}};
inline constexpr Word hasKeyboard{
    [](Visitor& visitor, Field field) { visitor.waitForFocus(visitor.find(field), field.name); }};
/// A picture of what is in front: the message box, the dialog or the window.
inline constexpr Word picture{[](Visitor& visitor, Text name) { visitor.picture(visitor.front(), name); }};
inline constexpr Word pictureOfWindow{
    [](Visitor& visitor, Text name) { visitor.picture(visitor.mainWindow(), name); }};
/// No dialog any more, and a part of the window takes input again.
inline constexpr Word endsInList{[](Visitor& visitor) { visitor.waitForEnd(visitor.list()); }};
inline constexpr Word endsInSchedule{[](Visitor& visitor) { visitor.waitForEnd(visitor.schedule()); }};
/// Anything else.
inline constexpr Word sees{
    [](Visitor& visitor, Text what, const auto& isTheCase) { expect(isTheCase(visitor), what); }};

// What the data layer was asked for in this step.
inline constexpr Word calls{[](Visitor& visitor, const std::wstring& line) {
    expect(visitor.hasCalled(line), L"a call " + line + L" in the data layer");
}};
inline constexpr Word callsNot{[](Visitor& visitor, const std::wstring& line) {
    expect(!visitor.hasCalled(line), L"no call " + line + L" in the data layer");
}};

} // namespace korvane::host
