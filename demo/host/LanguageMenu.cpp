#include "demo/host/LanguageMenu.h"

#include "demo/host/CommandMenu.h"
#include "demo/host/Language.h"

#include <algorithm>
#include <filesystem>

namespace korvane::host
{

namespace
{

constexpr const wchar_t* extension = L".txt";
constexpr std::size_t mostLanguages = 100;

std::vector<std::wstring> languagesIn(const std::wstring& folder)
{
    std::vector<std::wstring> names;
    std::error_code none; // without the folder, there are no languages
    for (const auto& file : std::filesystem::directory_iterator(folder, none))
        if (file.path().extension() == extension && names.size() < mostLanguages)
            names.push_back(file.path().stem().wstring());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

ComPtr<IResources> resourcesIn(const std::wstring& language, const ComPtr<IResources>& library)
{
    if (language.empty())
        return library;
    const std::wstring file = languageFolder() + L"\\" + language + extension;
    return ComPtr<IResources>(make<Language>(readTextFile(file), library).get());
}

void LanguageMenu::fill(HMENU menu, const std::wstring& folder, const std::wstring& current)
{
    languages_ = languagesIn(folder);
    languages_.insert(languages_.begin(), std::wstring());
    while (DeleteMenu(menu, 0, MF_BYPOSITION))
    {
    }
    for (std::size_t index = 0; index < languages_.size(); ++index)
    {
        const std::wstring& name = languages_[index];
        const auto id = static_cast<UINT>(menuFirstLanguage + index);
        AppendMenuW(menu, MF_STRING, id, name.empty() ? L"English" : name.c_str());
        if (name == current)
            CheckMenuItem(menu, id, MF_CHECKED);
    }
}

const std::wstring* LanguageMenu::languageOf(int id) const noexcept
{
    const int index = id - menuFirstLanguage;
    return index >= 0 && index < static_cast<int>(languages_.size())
               ? &languages_[static_cast<std::size_t>(index)]
               : nullptr;
}

} // namespace korvane::host
