#include "demo/host/tour/ActivityPage.h"

#include <algorithm>

namespace korvane::host::activityPage
{

namespace
{

struct Node
{
    HTREEITEM item;
    std::wstring text;
    bool isGroup;
};

HTREEITEM neighbour(HWND tree, UINT which, HTREEITEM item = nullptr)
{
    return reinterpret_cast<HTREEITEM>(ask(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
}

bool isChecked(HWND tree, HTREEITEM item)
{
    // The first image of an item's state is the empty box, the second the checked one.
    const auto state =
        static_cast<UINT>(ask(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_STATEIMAGEMASK));
    return (state & TVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
}

std::wstring textOf(HWND tree, HTREEITEM item)
{
    wchar_t text[256];
    TVITEMW values{};
    values.mask = TVIF_HANDLE | TVIF_TEXT;
    values.hItem = item;
    values.pszText = text;
    values.cchTextMax = ARRAYSIZE(text);
    ask(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&values));
    return values.pszText;
}

/// From top to bottom, whether they are seen or not.
std::vector<Node> nodesOf(HWND view)
{
    std::vector<Node> all;
    for (HTREEITEM group = neighbour(view, TVGN_ROOT); group; group = neighbour(view, TVGN_NEXT, group))
    {
        all.push_back({group, textOf(view, group), true});
        for (HTREEITEM name = neighbour(view, TVGN_CHILD, group); name;
             name = neighbour(view, TVGN_NEXT, name))
            all.push_back({name, textOf(view, name), false});
    }
    return all;
}

/// The boxes for numbers, from top to bottom; the box for text has several lines.
std::vector<HWND> numbers(Visitor& visitor)
{
    auto found = visibleChildren(visitor.dialog(), L"Edit");
    std::erase_if(found, [](HWND edit) { return (GetWindowLongW(edit, GWL_STYLE) & ES_MULTILINE) != 0; });
    std::sort(found.begin(), found.end(),
              [](HWND left, HWND right) { return middleOf(left).y < middleOf(right).y; });
    return found;
}

void eraseAll(Visitor& visitor, HWND edit, const wchar_t* keyToEnd)
{
    visitor.press(keyToEnd);
    for (auto left = host::textOf(edit).size(); left > 0; --left)
        visitor.press(L"Backspace");
}

} // namespace

void postponeStop(Visitor& visitor, long hours)
{
    visitor.press(L"Alt+P");
    const HWND stop = focusIn(visitor.dialog());
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
            visitor.press(L"Down");
        visitor.press(L"Right");
        visitor.press(L"Up");
    }
    for (long left = hours - 1; left > 0; --left)
        visitor.press(L"Up");
    expect(minutesBetween(before, time()) == hours * 60, L"a later stop");
}

void enterDescription(Visitor& visitor, Text text)
{
    const HWND box = visitor.find(description);
    visitor.press(L"Alt+D");
    visitor.waitForFocus(box, description.name);
    eraseAll(visitor, box, L"Ctrl+End");
    visitor.type(text);
    visitor.waitForText(description, text);
}

void enterType(Visitor& visitor, Text wanted)
{
    const HWND box = visitor.find(types);
    visitor.press(L"Alt+T");
    visitor.waitForFocus(box, types.name);
    // Several types may begin alike.
    for (int tries = 0; tries == 0 || (host::textOf(box) != wanted && tries <= 10); ++tries)
        visitor.type(std::wstring(1, *wanted));
    visitor.waitForText(types, wanted);
}

void toggleResource(Visitor& visitor, Text resource)
{
    const HWND view = visitor.find(tree);
    visitor.press(L"Alt+S");
    visitor.waitForFocus(view, tree.name);
    const auto all = nodesOf(view);
    const auto wanted = std::find_if(
        all.begin(), all.end(), [&](const Node& node) { return !node.isGroup && node.text == resource; });
    expect(wanted != all.end(), resource + std::wstring(L" in the tree"));
    const auto place = [&] {
        const HTREEITEM current = neighbour(view, TVGN_CARET);
        return std::find_if(all.begin(), all.end(), [&](const Node& node) { return node.item == current; });
    };
    expect(place() != all.end(), L"a selected resource in the tree");
    while (place() > wanted)
        visitor.press(L"Up");
    while (place() < wanted)
        visitor.press(place()->isGroup ? L"Right" : L"Down");
    const bool before = isChecked(view, wanted->item);
    visitor.press(L"Space");
    waitFor(std::wstring(L"the check has changed of ") + resource,
            [&] { return isChecked(view, wanted->item) != before; });
}

void enterWeeks(Visitor& visitor, Text count)
{
    visitor.press(L"Alt+R");
    waitFor(L"the ways to repeat are there",
            [&] { return visibleChild(visitor.dialog(), byWeek.className, byWeek.caption) != nullptr; });
    visitor.click(byWeek);
    waitFor(L"there are boxes for the numbers", [&] { return numbers(visitor).size() == 2; });
    const HWND times = numbers(visitor).back();
    visitor.clickAt(times, middleOf(times), L"the number of times");
    eraseAll(visitor, times, L"End");
    visitor.type(count);
    waitFor(std::wstring(L"the number of times is ") + count, [&] { return host::textOf(times) == count; });
}

void expectChecked(Visitor& visitor, const std::vector<std::wstring>& resources)
{
    const HWND view = visitor.find(tree);
    std::vector<std::wstring> checked;
    for (const Node& node : nodesOf(view))
        if (!node.isGroup && isChecked(view, node.item) &&
            std::find(checked.begin(), checked.end(), node.text) == checked.end())
            checked.push_back(node.text);
    expect(checked == resources, std::to_wstring(resources.size()) + L" checked resources");
}

} // namespace korvane::host::activityPage
