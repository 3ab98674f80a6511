// The languages that the user may choose from: the library's own, and each that lies beside the program.
#pragma once

#include "framework/com/ComPtr.h"

#include <KorvaneInterfaces.h>

#include <string>
#include <vector>

namespace korvane::host
{

/// The resources in a language, which is called as its file is. Without a name, they are the library's own.
ComPtr<IResources> resourcesIn(const std::wstring& language, const ComPtr<IResources>& library);

class LanguageMenu
{
public:
    /// Fills a menu with the languages of a folder, and marks the one that is spoken.
    void fill(HMENU menu, const std::wstring& folder, const std::wstring& current);

    /// The language of an item of that menu, empty for the library's own; null for other items.
    const std::wstring* languageOf(int id) const noexcept;

private:
    std::vector<std::wstring> languages_;
};

} // namespace korvane::host
