#include "tests/resources/StringTableExpectations.h"

#include "framework/com/Variant.h"
#include "tests/support/Library.h"

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

VARIANT reference(VARTYPE type, void* value)
{
    VARIANT result;
    VariantInit(&result);
    result.vt = static_cast<VARTYPE>(type | VT_BYREF);
    result.byref = value;
    return result;
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
    VARIANT number;
    VariantInit(&number);
    number.vt = VT_I2;
    number.iVal = 21000;
    EXPECT_EQ(text(number), L"Group");
    number.vt = VT_R8;
    number.dblVal = 21000.0;
    EXPECT_EQ(text(number), L"Group");
    number.vt = VT_EMPTY;
    EXPECT_EQ(text(number), L"1033"); // Empty is the number 0
}

TEST_F(StringTableTests, TheOwnMemberFollowsReferences)
{
    long number = 21000;
    EXPECT_EQ(text(reference(VT_I4, &number)), L"Group");
    SHORT small = 21000;
    EXPECT_EQ(text(reference(VT_I2, &small)), L"Group");
    VARIANT variant = Variant(21000L).get();
    EXPECT_EQ(text(reference(VT_VARIANT, &variant)), L"Group");
    Bstr digits(L"21000");
    EXPECT_EQ(text(reference(VT_BSTR, digits.inOut())), L"Group");
}

TEST_F(StringTableTests, WhatIsNoNumberGivesAnEmptyText)
{
    EXPECT_EQ(text(Variant(Bstr(L"Group")).get()), L"");
    EXPECT_EQ(text(Variant(Bstr(L"")).get()), L"");
    EXPECT_EQ(text(Variant(ComPtr<IDispatch>()).get()), L"");
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_NULL;
    EXPECT_EQ(text(value), L"");
    value.vt = VT_ERROR;
    value.scode = DISP_E_PARAMNOTFOUND;
    EXPECT_EQ(text(value), L"");
    value.vt = VT_R8;
    value.dblVal = 1e300;
    EXPECT_EQ(text(value), L"");
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
    const auto dispatch = resources.as<IDispatch>();
    wchar_t name[] = L"GetString";
    LPOLESTR names[] = {name};
    DISPID id = DISPID_UNKNOWN;
    ASSERT_EQ(dispatch->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
    VARIANT argument =
        Variant(Bstr(L"Group")).detach(); // a number would be asked for by the interface's member
    DISPPARAMS arguments{&argument, nullptr, 1, 0};
    Variant result;
    EXPECT_EQ(dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, result.put(),
                               nullptr, nullptr),
              S_OK);
    EXPECT_EQ(result.type(), VT_BSTR);
    EXPECT_EQ(toText(result.get()), L"");
    VariantClear(&argument);
}

} // namespace korvane::test
