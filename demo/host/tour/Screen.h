// The eyes of the tour: what stands on the screen, looked at from outside of the windows' thread.
#pragma once

#include "framework/com/Failure.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane::host
{

/// A failure of the tour itself, with its reason.
Failure tourFailure(const std::wstring& reason);

/// Looks until something is the case. Throws when it does not come about in a time that is more than enough.
void waitFor(const std::wstring& what, const std::function<bool()>& isTheCase);

/// Asks a window of another thread, which may be busy but not for ever. Throws when it does not answer.
LRESULT ask(HWND window, UINT message, WPARAM first = 0, LPARAM second = 0);

/// The visible top-level window of this process with a class, and with a title if one is given; null without
/// one.
HWND visibleWindow(const wchar_t* className, const wchar_t* title = nullptr);

bool isOfClass(HWND window, const wchar_t* className);

/// The visible children of a class, at any depth.
std::vector<HWND> visibleChildren(HWND parent, const wchar_t* className);
/// The visible child of a class with a text; null without one.
HWND visibleChild(HWND parent, const wchar_t* className, const std::wstring& text);

std::wstring textOf(HWND window);
std::vector<std::wstring> itemsOf(HWND listBox);
std::wstring itemOf(HWND listView, int row, int column);

/// The place of an item in a menu; -1 where there is none.
int itemThatEndsWith(HMENU menu, const std::wstring& text);

/// What has the keyboard in the thread of a window.
HWND focusIn(HWND window);
/// Whether a menu is open in the thread of a window.
bool isInMenu(HWND window);

// Where something is, in pixels of the screen.
POINT middleOf(const RECT& place);
POINT middleOf(HWND window);
POINT middleOf(HWND window, const RECT& part);
RECT placeOfItem(HWND listBox, const std::wstring& item);
RECT placeOfRow(HWND listView, int row);

} // namespace korvane::host
