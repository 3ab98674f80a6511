// The labels that the information of a resource begins with, in a file of the shared folder.
#pragma once

#include <string>

namespace korvane::host
{

inline constexpr const wchar_t* infoFile = L"Info1033.txt";

/// Makes the file with labels to play with, where there is none yet. Throws the system's failure.
void addInfoFile(const std::wstring& folder);

/// Copies the files of other languages, which are called by the number of their locale, to where there are none yet.
void addInfoFilesOf(const std::wstring& languages, const std::wstring& folder);

} // namespace korvane::host
