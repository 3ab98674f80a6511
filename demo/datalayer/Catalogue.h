// The data layer as a module: what it registers besides its classes.
#pragma once

#include "framework/com/Registration.h"

namespace korvane::store
{

extern const LibraryRegistration libraryRegistration;

} // namespace korvane::store
