#include "demo/host/tour/BookingDialog.h"

#include "demo/host/tour/Screen.h"

#include <algorithm>

namespace korvane::host
{

namespace
{

/// The edit boxes of the dialog; the text has several lines, the numbers have one.
std::vector<HWND> edits(HWND dialog, bool multiline)
{
    auto found = visibleChildren(dialog, L"Edit");
    std::erase_if(found, [&](HWND edit) {
        return ((GetWindowLongPtrW(edit, GWL_STYLE) & ES_MULTILINE) != 0) != multiline;
    });
    const auto top = [](HWND edit) {
        RECT place{};
        GetWindowRect(edit, &place);
        return place.top;
    };
    std::sort(found.begin(), found.end(), [&](HWND left, HWND right) { return top(left) < top(right); });
    return found;
}

HTREEITEM neighbour(HWND tree, UINT which, HTREEITEM item)
{
    return reinterpret_cast<HTREEITEM>(ask(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
}

} // namespace

BookingDialog::BookingDialog(Visitor& visitor) : visitor_(visitor), dialog_(visitor.dialog(L"Activity")) {}

HWND BookingDialog::text() const
{
    const auto found = edits(dialog_, true);
    expect(found.size() == 1, L"one box for the description");
    return found.front();
}

HWND BookingDialog::types() const
{
    return visitor_.control(dialog_, L"ComboBox");
}

HWND BookingDialog::tree() const
{
    return visitor_.control(dialog_, WC_TREEVIEWW);
}

void BookingDialog::enterText(const std::wstring& wanted)
{
    visitor_.press({VK_MENU, 'D'}, L"Alt+D");
    visitor_.waitForFocus(text(), L"the description");
    visitor_.press({VK_CONTROL, VK_END}, L"Ctrl+End");
    for (auto left = textOf(text()).size(); left > 0; --left)
        visitor_.press({VK_BACK}, L"Backspace");
    visitor_.type(wanted);
    visitor_.waitForText(text(), wanted, L"the description");
}

void BookingDialog::stopLater(long hours)
{
    visitor_.press({VK_MENU, 'P'}, L"Alt+P");
    const HWND stop = focusIn(dialog_);
    const auto time = [&] {
        SYSTEMTIME shown{};
        ask(stop, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&shown));
        OleDate moment;
        SystemTimeToVariantTime(&shown, &moment.days);
        return moment;
    };
    const OleDate before = time();
    // Which field is marked is seen by what an arrow does.
    for (int field = 0; minutesBetween(before, time()) != 60; ++field)
    {
        expect(field < 8, L"a box for the stop with an hour in it");
        if (field > 0)
            visitor_.press({VK_DOWN}, L"Down");
        visitor_.press({VK_RIGHT}, L"Right");
        visitor_.press({VK_UP}, L"Up");
    }
    for (long left = hours - 1; left > 0; --left)
        visitor_.press({VK_UP}, L"Up");
    expect(minutesBetween(before, time()) == hours * 60, L"a later stop");
}

void BookingDialog::chooseType(const std::wstring& type)
{
    visitor_.press({VK_MENU, 'T'}, L"Alt+T");
    visitor_.waitForFocus(types(), L"the types");
    visitor_.type(type.substr(0, 1));
    // Several types may begin alike.
    for (int tries = 0; textOf(types()) != type && tries < 10; ++tries)
        visitor_.type(type.substr(0, 1));
    visitor_.waitForText(types(), type, L"the type");
}

void BookingDialog::toggle(const std::wstring& resource)
{
    visitor_.press({VK_MENU, 'S'}, L"Alt+S");
    visitor_.waitForFocus(tree(), L"the tree");
    const auto all = nodes();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const Node& node) { return !node.isGroup && node.text == resource; });
    expect(found != all.end(), resource + L" in the tree");
    const auto place = [&] {
        const HTREEITEM current = neighbour(tree(), TVGN_CARET, nullptr);
        return std::find_if(all.begin(), all.end(), [&](const Node& node) { return node.item == current; });
    };
    expect(place() != all.end(), L"a selected resource in the tree");
    while (place() > found)
        visitor_.press({VK_UP}, L"Up");
    while (place() < found)
        visitor_.press({static_cast<WORD>(place()->isGroup ? VK_RIGHT : VK_DOWN)},
                       place()->isGroup ? L"Right" : L"Down");
    visitor_.press({VK_SPACE}, L"Space, on " + resource);
    const bool before = found->isChecked;
    waitFor(L"the check of " + resource + L" has changed", [&] { return isChecked(found->item) != before; });
}

void BookingDialog::repeatWeekly(long count)
{
    visitor_.press({VK_MENU, 'R'}, L"Alt+R");
    HWND week = nullptr;
    waitFor(L"the ways to repeat are there",
            [&] { return (week = visibleChild(dialog_, L"Button", L"By &Week")) != nullptr; });
    visitor_.clickAt(week, middleOf(week), L"By Week");
    waitFor(L"there are boxes for the numbers", [&] { return edits(dialog_, false).size() == 2; });
    const HWND times = edits(dialog_, false).back();
    visitor_.clickAt(times, middleOf(times), L"the number of times");
    visitor_.press({VK_END}, L"End");
    for (auto left = textOf(times).size(); left > 0; --left)
        visitor_.press({VK_BACK}, L"Backspace");
    visitor_.type(std::to_wstring(count));
    visitor_.waitForText(times, std::to_wstring(count), L"the number of times");
}

void BookingDialog::ok()
{
    visitor_.clickButton(dialog_, L"OK");
    visitor_.waitForEndIn(visitor_.schedule());
}

void BookingDialog::cancel()
{
    visitor_.press({VK_ESCAPE}, L"Esc");
    visitor_.waitForEndIn(visitor_.schedule());
}

std::vector<std::wstring> BookingDialog::checked() const
{
    std::vector<std::wstring> texts;
    for (const Node& node : nodes())
        if (node.isChecked && !node.isGroup &&
            std::find(texts.begin(), texts.end(), node.text) == texts.end())
            texts.push_back(node.text);
    return texts;
}

/// From top to bottom, whether they are seen or not.
std::vector<BookingDialog::Node> BookingDialog::nodes() const
{
    const HWND view = tree();
    const auto nodeOf = [&](HTREEITEM item, bool isGroup) {
        wchar_t text[256];
        TVITEMW values{};
        values.mask = TVIF_HANDLE | TVIF_TEXT;
        values.hItem = item;
        values.pszText = text;
        values.cchTextMax = ARRAYSIZE(text);
        ask(view, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&values));
        return Node{item, values.pszText, isChecked(item), isGroup};
    };
    std::vector<Node> all;
    for (HTREEITEM group = neighbour(view, TVGN_ROOT, nullptr); group;
         group = neighbour(view, TVGN_NEXT, group))
    {
        all.push_back(nodeOf(group, true));
        for (HTREEITEM name = neighbour(view, TVGN_CHILD, group); name;
             name = neighbour(view, TVGN_NEXT, name))
            all.push_back(nodeOf(name, false));
    }
    return all;
}

bool BookingDialog::isChecked(HTREEITEM item) const
{
    // The first image of an item's state is the empty box, the second the checked one.
    const auto state =
        static_cast<UINT>(ask(tree(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_STATEIMAGEMASK));
    return (state & TVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
}

} // namespace korvane::host
