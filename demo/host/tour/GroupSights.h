// The groups in the window's list, on the screen.
#pragma once

#include "demo/host/tour/Deeds.h"

namespace korvane::host
{

/// The one with a name. Throws where there is none.
GroupRow& rowOf(std::vector<GroupRow>& rows, std::wstring_view name);

/// Clicks a group, and waits until it is selected.
void selectGroup(Visitor& visitor, Text name);

inline constexpr Word selects{&selectGroup};

} // namespace korvane::host
