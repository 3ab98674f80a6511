// What tells a user of the messages that he has not read.
#pragma once

#include "framework/com/ComPtr.h"

#include <KorvaneInterfaces.h>

#include <string>
#include <string_view>

namespace korvane::host
{

/// How many there are, in a sentence of the library's.
std::wstring messageNotice(const ComPtr<IResources>& resources, long unread);

/// A text as a title shows it: the mark of an access key is for captions.
std::wstring withoutAccessKey(std::wstring_view text);

/// The title of a window in which somebody works. The notice stands in it where there is something to read.
std::wstring titleFor(const std::wstring& login, long unread, const std::wstring& notice);

} // namespace korvane::host
