// The file of the installation that names the information rows a resource starts with.
#pragma once

#include "framework/com/Bstr.h"

#include <vector>

namespace korvane
{

/// The labels in the info file, one a line, up to the first empty line. None where there is no such file.
std::vector<Bstr> readInfoFile();

} // namespace korvane
