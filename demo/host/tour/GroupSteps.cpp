#include "demo/host/tour/GroupSteps.h"

#include "demo/host/tour/GroupSights.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

constexpr long newFlags = 3; // what the command gives to every new group

// The page.
constexpr const wchar_t* dialogTitle = L"Group";
constexpr const wchar_t* groupsMenu = L"&Groups";
constexpr Field name{L"the name", L"Edit"};
constexpr Field list{L"the list", L"ListBox"};

/// In the database there are these groups, and the window's list shows them.
void expectGroups(Visitor& visitor, const std::vector<GroupRow>& expected)
{
    expect(visitor.groups() == expected, L"other rows in the database");
    waitFor(L"the window's list shows what is in the database", [&] {
        const auto shownAt = [&](std::size_t row, int column) {
            return itemOf(visitor.list(), static_cast<int>(row), column);
        };
        for (std::size_t row = 0; row < expected.size(); ++row)
            if (shownAt(row, 0) != expected[row].name || shownAt(row, 1) != std::to_wstring(expected[row].id))
                return false;
        return shownAt(expected.size(), 0).empty();
    });
}

// What a step makes of the groups that were there before.
constexpr Word changesNothing{[](Visitor& visitor) { expectGroups(visitor, visitor.groupsBefore()); }};
/// A new row stands last, under a number that was not there before.
constexpr Word adds{[](Visitor& visitor, Text text) {
    auto expected = visitor.groupsBefore();
    const auto now = visitor.groups();
    const long id = now.empty() ? 0 : now.back().id;
    expect(std::none_of(expected.begin(), expected.end(), [&](const GroupRow& row) { return row.id >= id; }),
           L"a new number for the new group");
    expected.push_back({id, text, newFlags});
    expectGroups(visitor, expected);
}};
constexpr Word renames{[](Visitor& visitor, Text from, Text to) {
    auto expected = visitor.groupsBefore();
    rowOf(expected, from).name = to;
    expectGroups(visitor, expected);
}};
constexpr Word removes{[](Visitor& visitor, Text text) {
    auto expected = visitor.groupsBefore();
    const GroupRow removed = rowOf(expected, text);
    std::erase(expected, removed);
    expectGroups(visitor, expected);
    calls(L"Groups.Remove " + std::to_wstring(removed.id))(visitor);
}};

constexpr Word clickEmptyPartOfList{[](Visitor& visitor) {
    visitor.clickAt(visitor.list(), middleOf(visitor.list()), L"the empty part of the list");
}};
constexpr Word showsFirstItem{
    [](Visitor& visitor) { visitor.waitForText(name, itemsOf(visitor.find(list)).front()); }};
constexpr Word showsLastItem{
    [](Visitor& visitor) { visitor.waitForText(name, itemsOf(visitor.find(list)).back()); }};

/// The dialog is open still, with what was typed, and nothing is written.
constexpr Word goesOn{[](Visitor& visitor, Text typed) {
    const HWND open = visitor.dialog();
    visitor.waitForDialog(dialogTitle);
    expect(visitor.dialog() == open, L"the same dialog, open still");
    visitor.waitForFocus(visitor.find(name), name.name);
    expect(textOf(visitor.find(name)) == typed, L"the name as it was typed");
    expect(visitor.groups() == visitor.groupsBefore(), L"the database as it was");
}};

std::vector<std::wstring> shownRows(const Visitor& visitor)
{
    std::vector<std::wstring> texts;
    for (const GroupRow& row : visitor.groups())
        texts.push_back(shown(row));
    return texts;
}

} // namespace

Chapter groupChapter()
{
    const std::vector<std::wstring> newGroups{L"Staff", L"Night shift", L"Training"};
    const Deed hasNoName = sees(L"no name to edit", [](Visitor& visitor) {
        return visibleChildren(visitor.dialog(), name.className).empty();
    });
    // clang-format off
    return {L"Groups", {
        {L"New group: the menu by keyboard, the name typed, OK by Enter",
         {startsUp(), clickEmptyPartOfList(), endsInList(),
          press(L"Alt+G"), menuOpens(), press(L"N"), opens(dialogTitle), hasKeyboard(name), enter(name, L"Staff"),
          picture(L"new"), press(L"Enter"), endsInList(), adds(L"Staff"), calls(L"Groups.Add \"Staff\", 3")}},
        {L"New group: the menu's key, OK by its button",
         {press(L"Ctrl+N"), opens(dialogTitle), enter(name, L"Night shift"), click(okButton), endsInList(),
          adds(L"Night shift")}},
        {L"New group: all by mouse but the name",
         {choose(groupsMenu, L"&New..."), opens(dialogTitle), click(name), enter(name, L"Training"), click(okButton),
          endsInList(), adds(L"Training"), picture(L"main")}},
        {L"Rename: chosen in the list by mouse, the name edited, OK by mouse",
         {selects(L"Training"), choose(groupsMenu, L"&Rename..."), opens(dialogTitle), shows(name, L"Training"),
          offers(list, newGroups), clickItem(list, L"Night shift"), shows(name, L"Night shift"), picture(L"rename"),
          click(name), hasKeyboard(name), press(L"End"), press(L"Backspace", 5),
          enter(name, L"watch", L"Night "), click(okButton), endsInList(), renames(L"Night shift", L"Night watch")}},
        {L"An error leaves the dialog open: a name that is taken, then a better one",
         {press(L"Ctrl+N"), opens(dialogTitle), enter(name, L"Staff"), press(L"Enter"),
          tellsError(L"There is a group named \"Staff\" already.\n\n"
                     L"Source: KorvaneData.Groups\nNumber: 0x8004232B", L"error"), goesOn(L"Staff"),
          press(L"End"), enter(name, L" (part-time)", L"Staff"), click(okButton), endsInList(),
          adds(L"Staff (part-time)")}},
        {L"Cancel by Esc writes nothing",
         {press(L"Ctrl+N"), opens(dialogTitle), enter(name, L"Nobody"), press(L"Esc"), endsInList(),
          selects(L"Training"), press(L"F2"), opens(dialogTitle), shows(name, L"Training"), click(name),
          press(L"End"), enter(name, L" course", L"Training"), press(L"Esc"), endsInList(),
          changesNothing(), callsNot(L"Groups.Add"), callsNot(L"Groups.Update")}},
        {L"Tab, Shift+Tab and access keys go about in the dialog",
         {selects(L"Staff"), press(L"F2"), opens(dialogTitle), hasKeyboard(name),
          press(L"Tab"), hasKeyboard(list), press(L"Tab"), hasKeyboard(okButton),
          press(L"Tab"), hasKeyboard(cancelButton), press(L"Tab"), hasKeyboard(name),
          press(L"Shift+Tab"), hasKeyboard(cancelButton), press(L"Alt+M"), hasKeyboard(name),
          press(L"Alt+E"), hasKeyboard(list), press(L"Home"), showsFirstItem(), press(L"End"), showsLastItem(),
          press(L"Esc"), endsInList(), changesNothing()}},
        {L"Delete: chosen in the list, confirmed by a double click",
         {selects(L"Training"), press(L"Del"), opens(dialogTitle), hasNoName, clickItem(list, L"Staff (part-time)"),
          hasKeyboard(list), picture(L"delete"), doubleClickItem(list, L"Staff (part-time)"), endsInList(),
          removes(L"Staff (part-time)")}},
        {L"Exit by the menu", {leave()}},
    }, &shownRows};
    // clang-format on
}

} // namespace korvane::host
