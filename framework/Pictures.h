// Pictures among the module's resources.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Platform.h"

namespace korvane
{

/// A picture by its name or number in the resources; empty when it is missing or cannot be made.
/// @param kind IMAGE_BITMAP, IMAGE_ICON or IMAGE_CURSOR.
ComPtr<IPictureDisp> loadPicture(const wchar_t* name, UINT kind);
ComPtr<IPictureDisp> loadPicture(long id, UINT kind);

/// A bitmap in the one of its sizes, for 96, 144 and 192 pixels per inch, that suits a resolution.
ComPtr<IPictureDisp> loadBitmap(long id, int dpi);

} // namespace korvane
