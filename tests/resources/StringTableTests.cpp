#include "tests/resources/StringTableExpectations.h"

#include "framework/com/LateBound.h"
#include "tests/support/Library.h"
#include "tests/support/Variants.h"

#include <KorvaneDlg.h>
#include <KorvaneInterfaces.h>

#include <gmock/gmock.h>

#include <vector>

namespace korvane::test
{

namespace
{

class StringTableTests : public testing::Test
{
protected:
    std::wstring text(long id)
    {
        Bstr text;
        EXPECT_EQ(resources->GetString(id, text.put()), S_OK);
        return std::wstring(text.view());
    }

    std::wstring text(const VARIANT& id)
    {
        Bstr text;
        EXPECT_EQ(own->GetString(id, text.put()), S_OK);
        return std::wstring(text.view());
    }

    ComPtr<IResources> resources = create<IResources>(__uuidof(::Resources));
    ComPtr<IResourceLibrary> own = resources.as<IResourceLibrary>();
};

BOOL CALLBACK noteLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR languages)
{
    reinterpret_cast<std::vector<WORD>*>(languages)->push_back(language);
    return TRUE;
}

BOOL CALLBACK noteBlock(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR blocks)
{
    reinterpret_cast<std::vector<WORD>*>(blocks)->push_back(LOWORD(reinterpret_cast<ULONG_PTR>(name)));
    return TRUE;
}

std::vector<WORD> blocks()
{
    std::vector<WORD> found;
    EnumResourceNamesW(library(), RT_STRING, &noteBlock, reinterpret_cast<LONG_PTR>(&found));
    return found;
}

} // namespace

TEST_F(StringTableTests, TextsOfTheContractAreExact)
{
    for (const StringTableEntry& expected : kContractStrings)
        EXPECT_EQ(text(expected.id), expected.text) << expected.id;
}

TEST_F(StringTableTests, TextsOfTheLayoutsAreExact)
{
    for (const StringTableEntry& expected : kLayoutStrings)
        EXPECT_EQ(text(expected.id), expected.text) << expected.id;
}

TEST_F(StringTableTests, AMissingIdGivesAnEmptyText)
{
    EXPECT_EQ(text(999999), L"");
    EXPECT_EQ(text(-1), L"");
    EXPECT_EQ(text(99), L"");
    EXPECT_EQ(text(65535), L"");
    EXPECT_EQ(text(0x7fffffffL), L"");
    EXPECT_EQ(text(-0x7fffffffL - 1), L"");
}

// The platform numbers texts with 16 bits: 65536 more is the same text to it.
TEST_F(StringTableTests, AnIdBeyondTheTableDoesNotWrapAround)
{
    ASSERT_EQ(text(21000), L"Group");
    EXPECT_EQ(text(65536 + 21000), L"");
    EXPECT_EQ(text(-65536 + 21000), L"");
    EXPECT_EQ(text(65536), L"");
}

TEST_F(StringTableTests, AnEmptyTextIsNotNull)
{
    BSTR text = nullptr;
    ASSERT_EQ(resources->GetString(999999, &text), S_OK);
    EXPECT_NE(text, nullptr);
    EXPECT_EQ(SysStringLen(text), 0U);
    SysFreeString(text);
}

TEST_F(StringTableTests, TheOwnMemberTakesAnyNumber)
{
    EXPECT_EQ(text(Variant(21000L).get()), L"Group");
    EXPECT_EQ(text(Variant(Bstr(L"21000")).get()), L"Group");
    EXPECT_EQ(text(variant(VT_I2, &VARIANT::iVal, 21000)), L"Group");
    EXPECT_EQ(text(variant(VT_R8, &VARIANT::dblVal, 21000.0)), L"Group");
    EXPECT_EQ(text(variant(VT_EMPTY)), L"1033"); // Empty is the number 0
}

TEST_F(StringTableTests, TheOwnMemberFollowsReferences)
{
    long number = 21000;
    EXPECT_EQ(text(variant(VT_BYREF | VT_I4, &VARIANT::plVal, &number)), L"Group");
    SHORT small = 21000;
    EXPECT_EQ(text(variant(VT_BYREF | VT_I2, &VARIANT::piVal, &small)), L"Group");
    VARIANT inner = Variant(21000L).get();
    EXPECT_EQ(text(variant(VT_BYREF | VT_VARIANT, &VARIANT::pvarVal, &inner)), L"Group");
    Bstr digits(L"21000");
    EXPECT_EQ(text(variant(VT_BYREF | VT_BSTR, &VARIANT::pbstrVal, digits.inOut())), L"Group");
}

TEST_F(StringTableTests, WhatIsNoNumberGivesAnEmptyText)
{
    EXPECT_EQ(text(Variant(Bstr(L"Group")).get()), L"");
    EXPECT_EQ(text(Variant(Bstr(L"")).get()), L"");
    EXPECT_EQ(text(Variant(ComPtr<IDispatch>()).get()), L"");
    EXPECT_EQ(text(variant(VT_NULL)), L"");
    EXPECT_EQ(text(variant(VT_ERROR, &VARIANT::scode, DISP_E_PARAMNOTFOUND)), L"");
    EXPECT_EQ(text(variant(VT_R8, &VARIANT::dblVal, 1e300)), L"");
    EXPECT_EQ(text(Variant(999999L).get()), L"");
    EXPECT_EQ(text(Variant(-1L).get()), L"");
}

TEST_F(StringTableTests, NoErrorInformationIsLeftBehindAMissingText)
{
    text(Variant(Bstr(L"Group")).get());
    text(999999);
    ComPtr<IErrorInfo> information;
    EXPECT_EQ(GetErrorInfo(0, information.put()), S_FALSE);
}

TEST_F(StringTableTests, TheLocaleIsTheNumberOfTextZero)
{
    long locale = 0;
    EXPECT_EQ(resources->get_LocaleID(&locale), S_OK);
    EXPECT_EQ(locale, 1033);
}

TEST_F(StringTableTests, TheTableIsOneBlockTagged1030)
{
    const auto found = blocks();
    ASSERT_THAT(found, testing::Not(testing::IsEmpty()));
    for (const WORD block : found)
    {
        std::vector<WORD> languages;
        EnumResourceLanguagesW(library(), RT_STRING, MAKEINTRESOURCEW(block), &noteLanguage,
                               reinterpret_cast<LONG_PTR>(&languages));
        EXPECT_THAT(languages, testing::ElementsAre(1030)) << block;
    }
}

TEST_F(StringTableTests, TheLastTextIs40125)
{
    long last = 0;
    for (const WORD block : blocks())
        for (long id = (block - 1) * 16; id < block * 16; ++id)
            if (!text(id).empty())
                last = std::max(last, id);
    EXPECT_EQ(last, 40125);
}

TEST_F(StringTableTests, LateBoundTheOwnMemberAnswersToTheName)
{
    // A number would be asked for by the interface's member.
    const Variant result = invoke(resources.as<IDispatch>(), L"GetString", {Variant(Bstr(L"Group"))});
    EXPECT_EQ(result.type(), VT_BSTR);
    EXPECT_EQ(toText(result.get()), L"");
}

} // namespace korvane::test
