// The first half of an editing action: the command, up to where its dialog is shown.
#pragma once

#include "demo/host/CommandTable.h"
#include "framework/com/ComPtr.h"

#include <KorvaneData.h>
#include <KorvaneLib.h>

namespace korvane::host
{

/// Creates a command by its ProgID, gives it its operation and operands, and lets it load its fields. Throws
/// E_ACCESSDENIED when the user may not run it, and whatever the command raises.
/// @param selected id of what is selected in the window; 0 for nothing.
ComPtr<IAppCommand> prepareCommand(const CommandEntry& entry, const ComPtr<IRoot>& root, long selected);

} // namespace korvane::host
