// The library as a module: what it registers besides its classes.
#pragma once

#include "framework/com/Registration.h"

namespace korvane
{

extern const LibraryRegistration libraryRegistration;

} // namespace korvane
