// The captions of a dialog: whether all of each can be read, and where its access key leads.
#pragma once

#include "framework/com/Platform.h"

#include <string>
#include <vector>

namespace korvane::host
{

/// The windows that stand on a dialog's, as they show, in tab order.
std::vector<HWND> partsOf(HWND dialog);

/// Whether a window says its text itself: a box shows what was entered, and a button with a picture the picture.
bool isCaption(HWND part);

/// Whether a window is a check box or an option button.
bool isCheckable(HWND part);

/// What cannot be read on a dialog: captions that are cut off or covered, and what reaches beyond the dialog. To be
/// called on the dialog's thread.
std::vector<std::wstring> unreadableOn(HWND dialog);

/// The access key of a caption, as a capital; 0 without one.
wchar_t accessKeyOf(const std::wstring& caption);

} // namespace korvane::host
