// The activity dialog, as the tour's visitor fills and reads it.
#pragma once

#include "demo/host/tour/Deeds.h"

#include <commctrl.h>

namespace korvane::host::activityPage
{

inline constexpr const wchar_t* title = L"Activity";
inline constexpr Field description{L"the description", L"Edit", nullptr, ES_MULTILINE};
inline constexpr Field types{L"the types", L"ComboBox"};
inline constexpr Field tree{L"the tree", WC_TREEVIEWW};
inline constexpr Field byWeek{L"By Week", L"Button", L"By &Week"};
inline constexpr Field deleteButton{L"Delete", L"Button", L"De&lete"};

/// Puts the stop off, with the arrow keys in the hour.
void postponeStop(Visitor& visitor, long hours);
void enterDescription(Visitor& visitor, Text text);
void enterType(Visitor& visitor, Text wanted);
/// Checks or unchecks a resource in the tree, with the keyboard.
void toggleResource(Visitor& visitor, Text resource);
void enterWeeks(Visitor& visitor, Text count);
/// The resources that are checked, each once.
void expectChecked(Visitor& visitor, const std::vector<std::wstring>& resources);

inline constexpr Word stopLater{&postponeStop};
inline constexpr Word describe{&enterDescription};
inline constexpr Word chooseType{&enterType};
inline constexpr Word toggle{&toggleResource};
inline constexpr Word repeatWeekly{&enterWeeks};
inline constexpr Word hasChecked{&expectChecked};

} // namespace korvane::host::activityPage
