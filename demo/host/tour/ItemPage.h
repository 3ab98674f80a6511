// The dialogs in which resources and activity types are edited one after the other, as the tour's visitor fills and
// reads them.
#pragma once

#include "demo/host/tour/Deeds.h"

namespace korvane::host::itemPage
{

inline constexpr Text resourceTitle = L"Resource";
inline constexpr Text typeTitle = L"Activity Types";

inline constexpr Field name{L"the name", L"Edit"};
inline constexpr Field list{L"the list", L"ListBox"};
inline constexpr Field role = labelled(L"the role", L"ComboBox", L"&Role:");
inline constexpr Field login = labelled(L"the login", L"ComboBox", L"&Login:");
inline constexpr Field synchronise{L"Synchronize", L"Button", L"&Synchronize"};
inline constexpr Field moreColors{L"More colors", L"Button", L"More &colors..."};

inline constexpr Text question = L"Edit "; // the box that asks before something entered is lost
inline constexpr Text colorDialog = L"Color";

/// A swatch is told by its colour.
constexpr Field swatch(const wchar_t* color) noexcept
{
    return {L"a swatch", L"Button", color};
}

/// Enters a colour of one's own in the platform's dialog.
void mixColor(Visitor& visitor, COLORREF color, Text pictureName);

inline constexpr Word mixes{&mixColor};
/// OK, after which the dialog is ready for the next one.
inline constexpr Word saves{[](Visitor& visitor) {
    visitor.click(okButton);
    visitor.waitForText(name, L"");
    visitor.waitForDialog(textOf(visitor.dialog()).c_str());
}};

} // namespace korvane::host::itemPage
