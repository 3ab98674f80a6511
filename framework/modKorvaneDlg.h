// What every command and every dialog shares: the library's errors, its keys and its current resources.
#pragma once

#include "framework/com/Bstr.h"
#include "framework/com/ComPtr.h"
#include "framework/com/Failure.h"

#include <KorvaneInterfaces.h>

#include <string_view>

namespace korvane
{

/// Raises one of the library's own errors: number = code + 0x80040000. An empty source is the application's
/// title; an empty description is the text of the string table with the id `code`. Returns for the one code
/// whose number is 0. Throws DISP_E_OVERFLOW for a code below -262144.
void RaiseAppError(long code, std::wstring_view source = {}, std::wstring_view description = {});

/// The key of an id in collections and trees: its decimal digits and "~".
Bstr MakeKey(long id);

/// The id of a key, whatever its last character is. Throws E_INVALIDARG for an empty key and
/// DISP_E_TYPEMISMATCH for one that is no number.
long KeyToID(std::wstring_view key);

/// The texts and pictures of all dialogs of the calling thread; empty until a host or a dialog has set them.
ComPtr<IResources> CurrentResources();
void setCurrentResources(const ComPtr<IResources>& resources);

/// As CurrentResources, but made of the library's own resources when a host has set none.
ComPtr<IResources> requireResources();

/// A text of the current resources.
Bstr resourceText(long id);

/// A bitmap of the current resources for a dialog of this resolution: the library's own have larger ones for larger
/// screens, a host's are as they are.
ComPtr<IPictureDisp> resourceBitmap(long id, int dpi);

/// An icon of the current resources as the caller's own, in pixels; null when it is missing.
HICON resourceIcon(long id, int size);

/// What keeps the library loaded, without the resources that only the library itself still holds.
long liveObjects() noexcept;

} // namespace korvane
