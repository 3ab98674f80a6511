#include "demo/host/LanguageMenu.h"

#include "demo/host/CommandMenu.h"
#include "framework/com/Call.h"
#include "tests/support/Library.h"
#include "tests/support/TemporaryFolder.h"

#include <KorvaneDlg.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace korvane::host
{

namespace
{

class LanguageMenuTest : public testing::Test
{
public:
    LanguageMenuTest() = default;
    LanguageMenuTest(const LanguageMenuTest&) = delete;
    LanguageMenuTest& operator=(const LanguageMenuTest&) = delete;
    ~LanguageMenuTest() override { DestroyMenu(menu); }

protected:
    /// The items, the marked one with a star.
    std::wstring items(const std::wstring& current)
    {
        languages.fill(menu, folder.wstring(), current);
        std::wstring found;
        for (int at = 0; at < GetMenuItemCount(menu); ++at)
        {
            wchar_t text[128];
            GetMenuStringW(menu, static_cast<UINT>(at), text, ARRAYSIZE(text), MF_BYPOSITION);
            const UINT state = GetMenuState(menu, static_cast<UINT>(at), MF_BYPOSITION);
            found += (found.empty() ? L"" : L", ") + std::wstring(text) + (state & MF_CHECKED ? L"*" : L"");
        }
        return found;
    }

    korvane::test::TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path();
    HMENU menu = CreatePopupMenu();
    LanguageMenu languages;
};

TEST_F(LanguageMenuTest, HasEnglishAndEachFileOfTheFolder)
{
    for (const wchar_t* name : {L"Svenska.txt", L"Dansk.txt", L"Readme.md"})
        std::ofstream(folder / name) << "\n";
    EXPECT_EQ(items(L""), L"English*, Dansk, Svenska");
    std::filesystem::remove(folder / L"Svenska.txt");
    EXPECT_EQ(items(L"Dansk"), L"English, Dansk*");
}

TEST_F(LanguageMenuTest, HasEnglishAloneWithoutAFolder)
{
    std::filesystem::remove_all(folder);
    EXPECT_EQ(items(L""), L"English*");
}

TEST_F(LanguageMenuTest, KnowsTheLanguagesOfItsItems)
{
    std::ofstream(folder / L"Dansk.txt") << "\n";
    EXPECT_EQ(languages.languageOf(menuFirstLanguage), nullptr);
    items(L"");
    ASSERT_NE(languages.languageOf(menuFirstLanguage), nullptr);
    EXPECT_EQ(*languages.languageOf(menuFirstLanguage), L"");
    EXPECT_EQ(*languages.languageOf(menuFirstLanguage + 1), L"Dansk");
    EXPECT_EQ(languages.languageOf(menuFirstLanguage + 2), nullptr);
    EXPECT_EQ(languages.languageOf(menuFirstLanguage - 1), nullptr);
}

/// What the items of a menu say, their keys left out.
std::wstring captionsOf(HMENU bar, int column)
{
    std::wstring captions;
    for (int at = 0; at < GetMenuItemCount(GetSubMenu(bar, column)); ++at)
    {
        wchar_t text[128]{};
        GetMenuStringW(GetSubMenu(bar, column), static_cast<UINT>(at), text, ARRAYSIZE(text), MF_BYPOSITION);
        const std::wstring whole(text);
        captions += whole.substr(0, whole.find(L'\t')) + L'|';
    }
    return captions;
}

TEST(LanguageOfTheMenuBar, IsThatOfTheResourcesWhereTheyHaveTheText)
{
    const auto library = korvane::test::create<IResources>(__uuidof(::Resources));
    const HMENU english = createMenuBar(resourcesIn(L"", library));
    const HMENU danish = createMenuBar(resourcesIn(L"Dansk", library));
    const int view = GetMenuItemCount(danish) - 1;
    EXPECT_EQ(captionsOf(english, 0), L"&Log in as||E&xit|");
    EXPECT_EQ(captionsOf(danish, 0), L"&Log in as||&Afslut|");
    EXPECT_EQ(captionsOf(english, view), L"Zoom &in|Zoom &out|Go to &today|Groups or &schedule|&Language|");
    EXPECT_EQ(captionsOf(danish, view),
              L"Zoom &ind|Zoom &ud|&G\u00E5 til i dag|Groups or &schedule|&Language|");
    EXPECT_NE(languageMenu(danish), nullptr);
    EXPECT_EQ(GetSubMenu(GetSubMenu(danish, view), 4), languageMenu(danish));
    DestroyMenu(english);
    DestroyMenu(danish);
}

} // namespace

} // namespace korvane::host
