// A user of the activity dialog in a real container.
#pragma once

#include "tests/support/Container.h"
#include "tests/support/Questions.h"

#include <commctrl.h>

namespace korvane::test
{

/// What a user does with the activity dialog, and sees of it.
class ActivityUser
{
public:
    HWND picker(int index) const { return container.control(DATETIMEPICK_CLASSW, index); }
    HWND types() const { return container.control(L"ComboBox"); }
    HWND textBox() const { return container.control(L"Edit", 0); }
    HWND tree() const { return container.control(WC_TREEVIEWW); }
    HWND repeat() const { return container.button(L"&Repeat activity"); }
    HWND option(const wchar_t* caption) const { return container.button(caption); }
    HWND intervalBox() const { return container.control(L"Edit", 1); }
    HWND countBox() const { return container.control(L"Edit", 2); }
    HWND arrows(int index) const { return container.control(UPDOWN_CLASSW, index); }
    HWND ok() const { return container.button(L"OK"); }
    HWND deletion() const { return container.button(L"De&lete"); }
    HWND label(const wchar_t* caption) const;
    /// The field of the chosen type's colour.
    HWND swatch() const;

    static bool isChecked(HWND button) { return SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED; }
    static void setTime(HWND picker, DATE value);
    static DATE timeOf(HWND picker);

    /// Replaces the text of a box by typing.
    void retype(HWND box, const wchar_t* text);

    /// A node by its relation to another one, as the platform names them.
    HTREEITEM next(WPARAM relation, HTREEITEM from = nullptr) const;
    /// The tree as text, one line per node: "[x] Drivers" and, indented, the resources.
    std::vector<std::wstring> treeLines() const;
    HTREEITEM node(const wchar_t* text, const wchar_t* group = nullptr) const;
    std::wstring nodeText(HTREEITEM item) const;
    bool nodeChecked(HTREEITEM item) const;
    /// Where the text of a node is; empty for a node that is scrolled or folded away.
    RECT nodePlace(HTREEITEM item) const;
    /// Checks or unchecks a node as the user does: selects it and presses the space bar, or clicks its box.
    void toggleByKey(HTREEITEM item);
    void toggleByMouse(HTREEITEM item);
    /// The same without the user's doing, as assistive technology does. The messages that follow are not waited for.
    void setChecked(HTREEITEM item, bool checked) const;

    Questions questions;
    Container container;
};

} // namespace korvane::test
