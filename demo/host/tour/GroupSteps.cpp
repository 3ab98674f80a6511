#include "demo/host/tour/GroupSteps.h"

#include "demo/host/tour/Screen.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

constexpr int menuGroups = 1;
constexpr int itemNew = 0;
constexpr int itemRename = 1;

constexpr long newFlags = 3; // what the command gives to every new group

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

void addByKeyboard(Visitor& visitor)
{
    waitFor(L"the window is there", [&] { return IsWindowVisible(visitor.mainWindow()) != FALSE; });
    visitor.clickAt(visitor.list(), middleOf(visitor.list()), L"the empty part of the list");
    visitor.waitForEnd();
    const auto before = visitor.rows();

    visitor.press({VK_MENU, 'G'}, L"Alt+G");
    visitor.waitForMenu();
    visitor.press({'N'}, L"N");
    const HWND open = visitor.dialog(L"Group");
    const HWND name = visitor.control(open, L"Edit");
    visitor.waitForFocus(name, L"the name");
    visitor.type(L"Staff");
    visitor.waitForText(name, L"Staff", L"the name");
    visitor.picture(open, L"new");
    visitor.press({VK_RETURN}, L"Enter");
    visitor.waitForEnd();

    visitor.expectRows(withNew(before, visitor.rows(), L"Staff"));
    visitor.expectCall(L"Groups.Add \"Staff\", 3");
}

void addByShortcut(Visitor& visitor)
{
    const auto before = visitor.rows();
    visitor.press({VK_CONTROL, 'N'}, L"Ctrl+N");
    const HWND open = visitor.dialog(L"Group");
    visitor.type(L"Night shift");
    visitor.waitForText(visitor.control(open, L"Edit"), L"Night shift", L"the name");
    visitor.clickButton(open, L"OK");
    visitor.waitForEnd();
    visitor.expectRows(withNew(before, visitor.rows(), L"Night shift"));
}

void addByMouse(Visitor& visitor)
{
    const auto before = visitor.rows();
    visitor.chooseInMenu(menuGroups, itemNew, L"New...");
    const HWND open = visitor.dialog(L"Group");
    const HWND name = visitor.control(open, L"Edit");
    visitor.clickAt(name, middleOf(name), L"the name");
    visitor.type(L"Training");
    visitor.waitForText(name, L"Training", L"the name");
    visitor.clickButton(open, L"OK");
    visitor.waitForEnd();
    visitor.expectRows(withNew(before, visitor.rows(), L"Training"));
    visitor.picture(visitor.mainWindow(), L"main");
}

void rename(Visitor& visitor)
{
    auto expected = visitor.rows();
    visitor.selectRow(L"Training");
    visitor.chooseInMenu(menuGroups, itemRename, L"Rename...");
    const HWND open = visitor.dialog(L"Group");
    const HWND name = visitor.control(open, L"Edit");
    const HWND list = visitor.control(open, L"ListBox");
    visitor.waitForText(name, L"Training", L"the name");
    const std::vector<std::wstring> offered{L"Staff", L"Night shift", L"Training"};
    expect(itemsOf(list) == offered, L"the three new groups in the dialog, and no built-in one");

    visitor.clickAt(list, middleOf(list, placeOfItem(list, L"Night shift")),
                    L"\"Night shift\" in the dialog's list");
    visitor.waitForText(name, L"Night shift", L"the name");
    visitor.picture(open, L"rename");
    visitor.clickAt(name, middleOf(name), L"the name");
    visitor.waitForFocus(name, L"the name");
    visitor.press({VK_END}, L"End");
    for (int letter = 0; letter < 5; ++letter)
        visitor.press({VK_BACK}, L"Backspace");
    visitor.type(L"watch");
    visitor.waitForText(name, L"Night watch", L"the name");
    visitor.clickButton(open, L"OK");
    visitor.waitForEnd();

    rowOf(expected, L"Night shift").name = L"Night watch";
    visitor.expectRows(expected);
}

void addWithNameThatIsTaken(Visitor& visitor)
{
    const auto before = visitor.rows();
    visitor.press({VK_CONTROL, 'N'}, L"Ctrl+N");
    const HWND open = visitor.dialog(L"Group");
    const HWND name = visitor.control(open, L"Edit");
    visitor.type(L"Staff");
    visitor.waitForText(name, L"Staff", L"the name");
    visitor.press({VK_RETURN}, L"Enter");

    const HWND box = visitor.errorBox();
    const auto texts = visibleChildren(box, L"Static");
    expect(std::any_of(texts.begin(), texts.end(),
                       [](HWND text) {
                           return textOf(text) == L"There is a group named \"Staff\" already.\n\n"
                                                  L"Source: KorvaneData.Groups\nNumber: 0x8004232B";
                       }),
           L"the data layer's text, source and number in the error box");
    expect(!IsWindowEnabled(open), L"a dialog that waits for the error box");
    visitor.picture(box, L"error");
    visitor.press({VK_RETURN}, L"Enter, in the error box");
    waitFor(L"the error box is gone", [&] { return !IsWindow(box); });

    expect(visitor.dialog(L"Group") == open, L"the same dialog, open still");
    visitor.waitForFocus(name, L"the name");
    expect(textOf(name) == L"Staff", L"the name as it was typed");
    expect(visitor.rows() == before, L"the database as it was");
    visitor.press({VK_END}, L"End");
    visitor.type(L" (part-time)");
    visitor.waitForText(name, L"Staff (part-time)", L"the name");
    visitor.clickButton(open, L"OK");
    visitor.waitForEnd();
    visitor.expectRows(withNew(before, visitor.rows(), L"Staff (part-time)"));
}

void cancel(Visitor& visitor)
{
    const auto before = visitor.rows();
    visitor.press({VK_CONTROL, 'N'}, L"Ctrl+N");
    HWND open = visitor.dialog(L"Group");
    visitor.type(L"Nobody");
    visitor.waitForText(visitor.control(open, L"Edit"), L"Nobody", L"the name");
    visitor.press({VK_ESCAPE}, L"Esc");
    visitor.waitForEnd();

    visitor.selectRow(L"Training");
    visitor.press({VK_F2}, L"F2");
    open = visitor.dialog(L"Group");
    const HWND name = visitor.control(open, L"Edit");
    visitor.waitForText(name, L"Training", L"the name");
    visitor.clickAt(name, middleOf(name), L"the name");
    visitor.press({VK_END}, L"End");
    visitor.type(L" course");
    visitor.waitForText(name, L"Training course", L"the name");
    visitor.press({VK_ESCAPE}, L"Esc");
    visitor.waitForEnd();

    visitor.expectRows(before);
    visitor.expectNoCall(L"Groups.Add");
    visitor.expectNoCall(L"Groups.Update");
}

void walkByKeyboard(Visitor& visitor)
{
    const auto before = visitor.rows();
    visitor.selectRow(L"Staff");
    visitor.press({VK_F2}, L"F2");
    const HWND open = visitor.dialog(L"Group");
    const HWND name = visitor.control(open, L"Edit");
    const HWND list = visitor.control(open, L"ListBox");
    const HWND ok = visibleChild(open, L"Button", L"OK");
    const HWND cancelButton = visibleChild(open, L"Button", L"Cancel");

    visitor.waitForFocus(name, L"the name, to begin with");
    visitor.press({VK_TAB}, L"Tab");
    visitor.waitForFocus(list, L"the list");
    visitor.press({VK_TAB}, L"Tab");
    visitor.waitForFocus(ok, L"OK");
    visitor.press({VK_TAB}, L"Tab");
    visitor.waitForFocus(cancelButton, L"Cancel");
    visitor.press({VK_TAB}, L"Tab");
    visitor.waitForFocus(name, L"the name again");
    visitor.press({VK_SHIFT, VK_TAB}, L"Shift+Tab");
    visitor.waitForFocus(cancelButton, L"Cancel");
    visitor.press({VK_MENU, 'M'}, L"Alt+M");
    visitor.waitForFocus(name, L"the name");
    visitor.press({VK_MENU, 'E'}, L"Alt+E");
    visitor.waitForFocus(list, L"the list");
    visitor.press({VK_HOME}, L"Home");
    visitor.waitForText(name, itemsOf(list).front(), L"the name");
    visitor.press({VK_END}, L"End");
    visitor.waitForText(name, itemsOf(list).back(), L"the name");
    visitor.press({VK_ESCAPE}, L"Esc");
    visitor.waitForEnd();
    visitor.expectRows(before);
}

void remove(Visitor& visitor)
{
    auto expected = visitor.rows();
    visitor.selectRow(L"Training");
    visitor.press({VK_DELETE}, L"Del");
    const HWND open = visitor.dialog(L"Group");
    const HWND list = visitor.control(open, L"ListBox");
    expect(visibleChildren(open, L"Edit").empty(), L"no name to edit");
    const RECT item = placeOfItem(list, L"Staff (part-time)");
    visitor.clickAt(list, middleOf(list, item), L"\"Staff (part-time)\" in the dialog's list");
    visitor.waitForFocus(list, L"the list");
    visitor.picture(open, L"delete");
    // Elsewhere on the item: the click before must not count as the first one of the two.
    RECT firstHalf = item;
    firstHalf.right = (item.left + item.right) / 2;
    visitor.doubleClickAt(list, middleOf(list, firstHalf), L"\"Staff (part-time)\"");
    visitor.waitForEnd();

    const GroupRow removed = rowOf(expected, L"Staff (part-time)");
    std::erase(expected, removed);
    visitor.expectRows(expected);
    visitor.expectCall(L"Groups.Remove " + std::to_wstring(removed.id));
}

std::vector<std::wstring> shownRows(Visitor& visitor)
{
    std::vector<std::wstring> texts;
    for (const GroupRow& row : visitor.rows())
        texts.push_back(shown(row));
    return texts;
}

} // namespace

Chapter groupChapter() noexcept
{
    static constexpr Step steps[] = {
        {L"New group: the menu by keyboard, the name typed, OK by Enter", &addByKeyboard},
        {L"New group: the menu's key, OK by its button", &addByShortcut},
        {L"New group: all by mouse but the name", &addByMouse},
        {L"Rename: chosen in the list by mouse, the name edited, OK by mouse", &rename},
        {L"An error leaves the dialog open: a name that is taken, then a better one",
         &addWithNameThatIsTaken},
        {L"Cancel by Esc writes nothing", &cancel},
        {L"Tab, Shift+Tab and access keys go about in the dialog", &walkByKeyboard},
        {L"Delete: chosen in the list, confirmed by a double click", &remove},
        {L"Exit by the menu", [](Visitor& visitor) { visitor.leave(); }},
    };
    return {L"Groups", steps, &shownRows};
}

} // namespace korvane::host
