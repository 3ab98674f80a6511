#include "demo/host/Language.h"

#include "demo/host/tour/Captions.h"
#include "framework/com/Boundary.h"
#include "tests/support/Library.h"

#include <KorvaneDlg.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cwctype>
#include <filesystem>

namespace korvane::host
{

namespace
{

using testing::IsEmpty;

ComPtr<IResources> library()
{
    return korvane::test::create<IResources>(__uuidof(::Resources));
}

std::wstring textOf(const ComPtr<IResources>& resources, long id)
{
    return std::wstring(fetch(resources, &IResources::GetString, id).view());
}

/// The library's own table. Its ids are numbers of 16 bits.
Texts ownTexts()
{
    const auto resources = library();
    Texts texts;
    for (long id = 0; id <= 0xffff; ++id)
        if (std::wstring text = textOf(resources, id); !text.empty())
            texts.emplace(id, std::move(text));
    return texts;
}

/// What the host completes, where a line ends, and what stands in quotation marks.
std::wstring markedIn(const std::wstring& text)
{
    std::wstring marks;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (text[at] == L'#' && at + 1 < text.size() && std::iswdigit(text[at + 1]))
            marks += text.substr(at, 2);
        else if (text[at] == L'#' || text[at] == L'\n' || text[at] == L'"')
            marks += text[at];
    std::sort(marks.begin(), marks.end());
    return marks;
}

std::wstring blanksAround(const std::wstring& text)
{
    const auto first = text.find_first_not_of(L' ');
    return text.substr(0, first) + L'|' + text.substr(text.find_last_not_of(L' ') + 1);
}

std::vector<std::wstring> languages()
{
    std::vector<std::wstring> files;
    for (const auto& file : std::filesystem::directory_iterator(languageFolder()))
        if (file.is_regular_file())
            files.push_back(file.path().wstring());
    return files;
}

std::wstring errorIn(std::string_view lines)
{
    const auto failure = attempt([&] { readTexts(lines, L"Test.txt"); });
    return failure ? std::wstring(failure->description().view()) : L"";
}

class EachLanguage : public testing::TestWithParam<std::wstring>
{
protected:
    const Texts own = ownTexts();
    const Texts texts = readTextFile(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Files, EachLanguage, testing::ValuesIn(languages()), [](const auto& tested) {
    return std::filesystem::path(tested.param).stem().string();
});

} // namespace

TEST_P(EachLanguage, HasEveryTextOfTheLibraryAndNoOther)
{
    ASSERT_GT(own.size(), 200U);
    for (const auto& [id, text] : own)
        EXPECT_TRUE(texts.contains(id)) << id << " is missing: " << text;
    for (const auto& [id, text] : texts)
        EXPECT_TRUE(own.contains(id)) << id << " is not the library's: " << text;
}

TEST_P(EachLanguage, IsNotTheLibrarysOwn)
{
    EXPECT_NE(texts.at(0), own.at(0));
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [](const auto& each) {
        return std::any_of(each.second.begin(), each.second.end(),
                           [](wchar_t letter) { return letter > 127; });
    }));
}

TEST_P(EachLanguage, KeepsWhatIsCompletedAndTheBlanksAround)
{
    for (const auto& [id, text] : own)
    {
        EXPECT_EQ(markedIn(texts.at(id)), markedIn(text)) << id;
        EXPECT_EQ(blanksAround(texts.at(id)), blanksAround(text)) << id;
    }
}

TEST_P(EachLanguage, HasAnAccessKeyWhereTheLibraryHasOne)
{
    for (const auto& [id, text] : own)
    {
        const std::wstring& translated = texts.at(id);
        EXPECT_EQ(std::count(translated.begin(), translated.end(), L'&'),
                  std::count(text.begin(), text.end(), L'&'))
            << id;
        if (const wchar_t key = accessKeyOf(translated))
        {
            EXPECT_TRUE(IsCharAlphaNumericW(key)) << id;
        }
    }
}

/// The texts of a dialog are of one area. What the library tells apart there is told apart in the language too.
TEST_P(EachLanguage, SharesNoAccessKeyInADialogThatTheLibraryDoesNotShare)
{
    constexpr long area = 500;
    for (const auto& [one, text] : own)
        for (const auto& [other, otherText] : own)
        {
            if (other <= one || other / area != one / area)
                continue;
            const wchar_t key = accessKeyOf(text);
            if (key != 0 && accessKeyOf(otherText) != 0 && key != accessKeyOf(otherText))
            {
                EXPECT_NE(accessKeyOf(texts.at(one)), accessKeyOf(texts.at(other))) << one << ", " << other;
            }
        }
}

TEST_P(EachLanguage, HasTheLabelsOfInformationRows)
{
    const auto labels =
        std::filesystem::path(languageFolder()) / L"labels" / (L"Info" + texts.at(0) + L".txt");
    EXPECT_TRUE(std::filesystem::exists(labels));
}

TEST_P(EachLanguage, GivesItsTextsAndTheLibrarysPictures)
{
    const auto resources = ComPtr<IResources>(make<Language>(texts, library()).get());
    for (const auto& [id, text] : texts)
        EXPECT_EQ(textOf(resources, id), text);
    EXPECT_EQ(std::to_wstring(fetch(resources, &IResources::get_LocaleID)), texts.at(0));
    for (const long id : {21000L, 25500L})
        EXPECT_TRUE(fetch(resources, &IResources::GetIcon, id));
    EXPECT_TRUE(fetch(resources, &IResources::GetBitmap, 21000L));
    EXPECT_TRUE(fetch(resources, &IResources::GetCursor, 25500L));
    EXPECT_FALSE(fetch(resources, &IResources::GetIcon, 99L));
}

TEST(Language, TakesFromTheLibraryWhatItLacks)
{
    const auto resources = ComPtr<IResources>(make<Language>(Texts{{0, L"1030"}}, library()).get());
    EXPECT_EQ(textOf(resources, 21000), L"Group");
    EXPECT_EQ(textOf(resources, 999999), L"");
}

TEST(Language, NeedsTheNumberOfItsLocale)
{
    EXPECT_TRUE(attempt([] { make<Language>(Texts{}, library()); }));
    EXPECT_TRUE(attempt([] { make<Language>(Texts{{0, L"da"}}, library()); }));
}

TEST(LanguageFile, HasAnIdAndATextInEachLine)
{
    EXPECT_EQ(readTexts("1 \"one\"\n22050\t\"Rediger \"\r\n", L""),
              (Texts{{1, L"one"}, {22050, L"Rediger "}}));
    EXPECT_EQ(readTexts("  7\"\"  ", L""), (Texts{{7, L""}}));
}

TEST(LanguageFile, IsUtf8WithOrWithoutItsMark)
{
    const Texts texts{{25040, L"&\u00C5rligt"}};
    EXPECT_EQ(readTexts("25040 \"&\xC3\x85rligt\"", L""), texts);
    EXPECT_EQ(readTexts("\xEF\xBB\xBF"
                        "25040 \"&\xC3\x85rligt\"",
                        L""),
              texts);
}

TEST(LanguageFile, PassesOverCommentsAndEmptyLines)
{
    EXPECT_THAT(readTexts("", L""), IsEmpty());
    EXPECT_EQ(readTexts("; 1 \"no\"\n\n \t\r\n  ; nor this\n2 \"; two\"\n", L""), (Texts{{2, L"; two"}}));
}

TEST(LanguageFile, WritesLineBreaksAndQuotationMarksAsTheStringTableDoes)
{
    EXPECT_EQ(readTexts(R"(1 "a\nb")", L"").at(1), L"a\nb");
    EXPECT_EQ(readTexts(R"(1 """a:"" #")", L"").at(1), L"\"a:\" #");
}

TEST(LanguageFile, NamesTheLineThatIsNone)
{
    for (const char* line :
         {"one", "1", "1 one", "1 \"one", "1 \"", "\"one\"", "-1 \"one\"", "1 \"o\"ne\"", "1 \"o\\ne\\\"",
          "1 \"\\t\"", "1 \"one\" 2", "99999999999 \"one\"", "1; \"one\""})
    {
        EXPECT_EQ(errorIn("0 \"1030\"\n\n" + std::string(line) + "\n2 \"two\""),
                  L"Test.txt, line 3: an id and a text in quotation marks are expected.")
            << line;
    }
    EXPECT_EQ(errorIn("; caf\xE9\n1 \"caf\xE9\""), L"Test.txt, line 2: this is not UTF-8.");
    EXPECT_EQ(errorIn("5 \"a\"\n6 \"b\"\n5 \"a\""), L"Test.txt, line 3: the id 5 comes up twice.");
}

TEST(LanguageFile, ThatIsMissingIsAnError)
{
    const auto failure = attempt([] { readTextFile(L"C:\\no such folder\\Dansk.txt"); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number(), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(failure->description(), L"The file C:\\no such folder\\Dansk.txt cannot be read.");
}

TEST(LanguageFile, InAnotherEncodingIsAnErrorInItsFirstLine)
{
    EXPECT_EQ(errorIn(std::string_view("\xFF\xFE;\0\n\0", 6)), L"Test.txt, line 1: this is not UTF-8.");
}

} // namespace korvane::host
