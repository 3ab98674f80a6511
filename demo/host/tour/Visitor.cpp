#include "demo/host/tour/Visitor.h"

#include "demo/host/Orders.h"
#include "demo/host/tour/Picture.h"
#include "demo/host/tour/Screen.h"
#include "framework/com/Boundary.h"

#include <utility>

namespace korvane::host
{

namespace
{

constexpr const wchar_t* menuClass = L"#32768";
constexpr const wchar_t* messageBoxClass = L"#32770";

/// The place of an item in a menu.
int indexOf(HMENU menu, const std::wstring& text)
{
    for (int index = 0; index < GetMenuItemCount(menu); ++index)
    {
        wchar_t item[128];
        GetMenuStringW(menu, static_cast<UINT>(index), item, ARRAYSIZE(item), MF_BYPOSITION);
        if (std::wstring(item).starts_with(text))
            return index;
    }
    throw tourFailure(L"there is no " + text + L" in the menu");
}

std::wstring textBefore(HWND control)
{
    const HWND label = GetWindow(control, GW_HWNDPREV);
    return label ? textOf(label) : std::wstring();
}

/// A box with a list of its own has an edit box within.
bool isPartOfBox(HWND control)
{
    return isOfClass(GetParent(control), L"ComboBox");
}

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

Visitor::Visitor(MainWindow& window, std::wstring folder, Report& report)
    : window_(window), main_(window.handle()), list_(window.content().handle()),
      schedule_(window.schedule().handle()), folder_(std::move(folder)), report_(report),
      user_([this] { waitUntilTaken(); }, [this] { waitUntilAtRest(); })
{
    window_.onOrder = [this](const Order& order) { orders_ += shown(order) + L"\n"; };
}

HWND Visitor::front() const noexcept
{
    const HWND active = GetForegroundWindow();
    return IsWindow(active) ? active : main_;
}

HWND Visitor::find(const Field& field) const
{
    auto found = visibleChildren(dialog_, field.className);
    std::erase_if(found, [&](HWND child) {
        const auto style = static_cast<DWORD>(GetWindowLongW(child, GWL_STYLE));
        return (style & field.style) != field.style || (field.caption && textOf(child) != field.caption) ||
               (field.label && textBefore(child) != field.label) || isPartOfBox(child);
    });
    expect(found.size() == 1, std::wstring(L"one control: ") + field.name);
    return found.front();
}

// --- what the user does

void Visitor::press(const std::wstring& keys)
{
    report_.detail(L"press " + keys);
    user_.press(keys);
}

void Visitor::hold(const std::wstring& key)
{
    report_.detail(L"hold " + key);
    user_.hold(key);
}

void Visitor::release(const std::wstring& key)
{
    report_.detail(L"release " + key);
    user_.release(key);
}

void Visitor::type(const std::wstring& text)
{
    report_.detail(L"type " + quoted(text));
    user_.type(text);
}

void Visitor::click(const Field& field)
{
    const HWND control = find(field);
    clickAt(control, middleOf(control), field.name);
}

void Visitor::clickAt(HWND window, POINT place, const std::wstring& what)
{
    report_.detail(L"click on " + what);
    pointAt(window, place, what);
    user_.click(place);
}

void Visitor::doubleClickAt(HWND window, POINT place, const std::wstring& what)
{
    report_.detail(L"double click on " + what);
    pointAt(window, place, what);
    user_.doubleClick(place);
}

void Visitor::rightClickAt(HWND window, POINT place, const std::wstring& what)
{
    report_.detail(L"right click on " + what);
    pointAt(window, place, what);
    user_.rightClick(place);
}

void Visitor::pointAt(HWND window, POINT place, const std::wstring& what)
{
    user_.moveTo(place);
    waitFor(L"nothing is in front of " + what, [&] {
        const HWND front = WindowFromPoint(place);
        return front == window || IsChild(window, front);
    });
}

void Visitor::dragTo(HWND window, POINT from, POINT to, const std::wstring& what)
{
    report_.detail(L"drag " + what);
    pointAt(window, from, what);
    user_.pressButton(from);
    user_.moveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
    user_.moveTo(to);
    dragged_ = to;
}

/// Where the hand is, not the pointer: a display that has much to do shows for a while where the pointer was before.
void Visitor::drop()
{
    report_.detail(L"drop it");
    user_.releaseButton(dragged_);
}

void Visitor::choose(const wchar_t* menu, const wchar_t* item)
{
    const HMENU bar = GetMenu(main_);
    const int column = indexOf(bar, menu);
    RECT place{};
    expect(GetMenuItemRect(main_, bar, static_cast<UINT>(column), &place) != FALSE, L"a menu bar");
    clickAt(main_, middleOf(place), std::wstring(L"the menu ") + menu);
    waitForMenu();
    const HMENU opened = GetSubMenu(bar, column);
    expect(GetMenuItemRect(nullptr, opened, static_cast<UINT>(indexOf(opened, item)), &place) != FALSE,
           std::wstring(L"a place of ") + item);
    clickAt(visibleWindow(menuClass), middleOf(place), item);
}

void Visitor::answer(const wchar_t* box, int button, const std::wstring& name)
{
    waitForBox(box);
    const HWND found = GetDlgItem(front(), button);
    expect(found != nullptr, L"a button " + name);
    clickAt(found, middleOf(found), name);
    waitForBoxToGo(box);
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

void Visitor::waitForDialog(const wchar_t* title)
{
    waitFor(L"a dialog is open and has the keyboard", [&] {
        dialog_ = visibleWindow(CommandDialog::className);
        return dialog_ && GetForegroundWindow() == dialog_ && IsChild(dialog_, focusIn(main_));
    });
    expect(!IsWindowEnabled(main_), L"a window that waits for the dialog");
    expect(textOf(dialog_) == title, L"the title " + quoted(title));
}

void Visitor::waitForBox(const wchar_t* title)
{
    waitFor(std::wstring(L"there is a box ") + title, [&] {
        const HWND box = visibleWindow(messageBoxClass, title);
        return box && GetForegroundWindow() == box;
    });
}

void Visitor::waitForBoxToGo(const wchar_t* title)
{
    waitFor(L"the box is gone", [&] { return !visibleWindow(messageBoxClass, title); });
}

void Visitor::waitForText(const Field& field, const std::wstring& text)
{
    std::wstring seen;
    const auto failure = attempt([&] {
        waitFor(field.name + (L" is " + quoted(text)), [&] { return (seen = textOf(find(field))) == text; });
    });
    if (failure)
        throw tourFailure(std::wstring(failure->description().view()) + L"; seen last: " + quoted(seen));
}

void Visitor::waitForFocus(HWND control, const std::wstring& what)
{
    waitFor(L"the keyboard is with " + what, [&] { return focusIn(main_) == control; });
}

void Visitor::waitForEnd(HWND part)
{
    waitFor(L"the window has the keyboard", [&] {
        return !visibleWindow(CommandDialog::className) && IsWindowEnabled(main_) &&
               GetForegroundWindow() == main_ && focusIn(main_) == part;
    });
}

void Visitor::picture(HWND window, const wchar_t* name)
{
    const std::wstring file = std::wstring(name) + L".png";
    report_.detail(L"picture " + file);
    savePicture(window, folder_ + L"\\" + file);
}

// --- what stands in the database, and what was asked for

void Visitor::beginStep()
{
    trace();
    trace_.clear();
    groupsBefore_ = groups();
    bookedBefore_ = bookings().all();
}

std::vector<GroupRow> Visitor::groups() const
{
    return readGroups(window_.database().path());
}

const std::wstring& Visitor::trace()
{
    if (IsWindow(main_))
        window_.invoke([this] { trace_ += window_.database().takeTrace(); });
    return trace_;
}

std::wstring Visitor::takeOrders()
{
    std::wstring orders;
    if (IsWindow(main_))
        window_.invoke([&] { orders = std::exchange(orders_, {}); });
    return orders;
}

} // namespace korvane::host
