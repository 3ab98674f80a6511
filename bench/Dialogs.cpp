// A whole dialog, from creation to end, against a bare dialog of the platform's.
//
// The library's side is what a host does with the group dialog in its fullest layout and a data layer without
// groups: create the control by its ProgID, place it on a site, activate it in the window, give it its command,
// read Ready, close it. The platform's side makes the same windows from a dialog template in memory, which is
// taken from the library's dialog as it stands: the same classes, styles, texts, places and order, in the same
// font, on the same visible window, in the same activation context and therefore with the same common controls;
// it is then destroyed. Nothing is painted on either side, but for the row that says so.
#include "bench/Benchmarks.h"
#include "bench/Library.h"
#include "bench/MemoryData.h"
#include "tests/support/Messages.h"
#include "tests/support/ModuleControls.h"

#include <cstdint>
#include <string>

namespace korvane::bench
{

namespace
{

constexpr const char* group = "A dialog, from creation to end";

// Of the container.
constexpr const wchar_t* fontFace = L"MS Shell Dlg";
constexpr int fontPoints = 8;

std::wstring textOf(HWND window)
{
    wchar_t text[256];
    return {text, static_cast<std::size_t>(GetWindowTextW(window, text, 256))};
}

DWORD extendedStyleOf(HWND window)
{
    return static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
}

std::wstring classNameOf(HWND window)
{
    wchar_t name[64];
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, 64))};
}

/// The style that a window was made with. The platform takes the scroll bar off a list that needs none.
DWORD designedStyleOf(HWND window)
{
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    return classNameOf(window) == L"ListBox" ? style | WS_VSCROLL : style;
}

/// The windows on a window, in their order.
std::vector<HWND> childrenOf(HWND window)
{
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    return children;
}

INT_PTR CALLBACK ignore(HWND, UINT, WPARAM, LPARAM) noexcept
{
    return FALSE;
}

/// A dialog template in memory.
class Template
{
public:
    /// Of a dialog that stands on its parent.
    explicit Template(HWND dialog)
    {
        const auto controls = childrenOf(dialog);
        DLGTEMPLATE head{};
        head.style = designedStyleOf(dialog) | DS_SETFONT | DS_CONTROL;
        head.dwExtendedStyle = extendedStyleOf(dialog);
        head.cdit = static_cast<WORD>(controls.size());
        setPlace(head, dialog);
        append(head);
        append(WORD{0}); // no menu
        append(WORD{0}); // the class of dialogs
        append(textOf(dialog));
        append(static_cast<WORD>(fontPoints));
        append(std::wstring(fontFace));
        for (const HWND control : controls)
            add(control);
    }

    HWND create(HWND parent) const
    {
        return CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                          reinterpret_cast<const DLGTEMPLATE*>(words_.data()), parent,
                                          &ignore, 0);
    }

private:
    void add(HWND control)
    {
        if (words_.size() % 2 != 0) // items stand on double words
            words_.push_back(0);
        DLGITEMTEMPLATE item{};
        item.style = designedStyleOf(control);
        item.dwExtendedStyle = extendedStyleOf(control) & ~static_cast<DWORD>(WS_EX_NOPARENTNOTIFY);
        item.id = static_cast<WORD>(GetDlgCtrlID(control));
        setPlace(item, control);
        append(item);
        append(classNameOf(control));
        append(textOf(control));
        append(WORD{0}); // no creation data
    }

    template <class Part> void setPlace(Part& part, HWND window)
    {
        RECT place{};
        GetWindowRect(window, &place);
        MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
        const SIZE unit = dialogUnit();
        part.x = static_cast<short>(MulDiv(place.left, 4, unit.cx));
        part.y = static_cast<short>(MulDiv(place.top, 8, unit.cy));
        part.cx = static_cast<short>(MulDiv(place.right - place.left, 4, unit.cx));
        part.cy = static_cast<short>(MulDiv(place.bottom - place.top, 8, unit.cy));
    }

    /// The average character in pixels, as the platform itself tells it for the font.
    static SIZE dialogUnit()
    {
        Template empty;
        DLGTEMPLATE head{};
        head.style = WS_POPUP | DS_SETFONT;
        empty.append(head);
        empty.append(WORD{0});
        empty.append(WORD{0});
        empty.append(std::wstring());
        empty.append(static_cast<WORD>(fontPoints));
        empty.append(std::wstring(fontFace));
        const HWND dialog = empty.create(nullptr);
        RECT unit{0, 0, 4, 8};
        const BOOL mapped = MapDialogRect(dialog, &unit);
        DestroyWindow(dialog);
        demand(mapped, "the platform does not tell its dialog units");
        return {unit.right, unit.bottom};
    }

    Template() = default;

    template <class Part> void append(const Part& part)
    {
        const auto* words = reinterpret_cast<const WORD*>(&part);
        constexpr std::size_t count = sizeof(Part) / 2;
        words_.insert(words_.end(), words, words + count);
    }

    void append(const std::wstring& text)
    {
        words_.insert(words_.end(), text.begin(), text.end());
        words_.push_back(0);
    }

    std::vector<std::uint16_t> words_;
};

bool equivalent(HWND ours, HWND theirs)
{
    return classNameOf(ours) == classNameOf(theirs) && designedStyleOf(ours) == designedStyleOf(theirs) &&
           textOf(ours) == textOf(theirs) && IsWindowVisible(ours) == IsWindowVisible(theirs);
}

/// The bare dialog has what the library's dialog has, window by window.
void demandEquivalence(HWND ours, HWND theirs)
{
    const auto first = childrenOf(ours);
    const auto second = childrenOf(theirs);
    demand(first.size() > 4 && first.size() == second.size(), "the bare dialog has not as many controls");
    for (std::size_t index = 0; index < first.size(); ++index)
        demand(equivalent(first[index], second[index]), "a control of the bare dialog is of another kind");
}

void paint(HWND dialog)
{
    RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

} // namespace

void measureDialogs(Report& report, const Effort& effort)
{
    test::Container container;
    MemoryData data;
    const auto command = commandFor(data);

    open(container, dialogProgId, command.get());
    const Template bare = [&] {
        const test::ModuleControls controls(libraryPath());
        Template made(container.dialogWindow());
        const HWND dialog = made.create(container.window());
        demandEquivalence(container.dialogWindow(), dialog);
        DestroyWindow(dialog);
        return made;
    }();
    container.close();

    const auto ofLibrary = [&](bool painted) {
        return [&, painted] {
            test::pumpMessages();
            return perRun(1, [&] {
                open(container, dialogProgId, command.get());
                if (painted)
                    paint(container.dialogWindow());
                container.close();
            });
        };
    };
    const auto ofPlatform = [&](bool painted) {
        return [&, painted] {
            test::pumpMessages();
            const test::ModuleControls controls(libraryPath());
            return perRun(1, [&] {
                const HWND dialog = bare.create(container.window());
                demand(dialog != nullptr, "the bare dialog is not made");
                if (painted)
                    paint(dialog);
                DestroyWindow(dialog);
            });
        };
    };

    const char* platform = "CreateDialogIndirectParam, DestroyWindow";
    report.add(group, "group dialog", platform,
               compare(effort.samples(101), ofLibrary(false), ofPlatform(false)), 1.2);
    report.add(group, "group dialog, painted once", platform,
               compare(effort.samples(101), ofLibrary(true), ofPlatform(true)));
}

} // namespace korvane::bench
