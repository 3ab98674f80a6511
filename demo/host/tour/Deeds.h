// The words that the steps of all chapters are written in.
#pragma once

#include "demo/host/tour/Screen.h"
#include "demo/host/tour/Step.h"

namespace korvane::host
{

using Text = const wchar_t*;

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
/// Types into the part that has the keyboard, which then shows it behind what it had.
inline constexpr Word enter{[](Visitor& visitor, Field field, Text typed, Text before = L"") {
    visitor.type(typed);
    visitor.waitForText(field, before + std::wstring(typed));
}};
/// Closes the window by its menu.
inline constexpr Word leave{[](Visitor& visitor) {
    visitor.press(L"Alt+F");
    visitor.waitForMenu();
    visitor.press(L"X");
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
