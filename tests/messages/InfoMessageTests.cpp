#include "tests/messages/InfoTable.h"
#include "tests/support/CommandTest.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

using Row = InfoTexts::value_type;

/// An array of another shape.
Variant array(VARTYPE element, std::initializer_list<SAFEARRAYBOUND> bounds)
{
    std::vector<SAFEARRAYBOUND> all(bounds);
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(VT_ARRAY | element);
    value.parray = SafeArrayCreate(element, static_cast<UINT>(all.size()), all.data());
    return Variant::adopt(value);
}

} // namespace

class InfoMessageTests : public CommandTest
{
protected:
    static constexpr long anna = 7;

    InfoMessageTests() : CommandTest(__uuidof(::InfoMessage))
    {
        let(L"NameID", Variant(anna));
        data.info = {{anna, L"Home", L"555 0102", 1}, {anna, L"Mobile", L"555 0101", 0}, {8, L"Fax", L"1"}};
    }

    /// What Execute answers for rows, and the calls that it made.
    HRESULT store(const Variant& rows)
    {
        data.takeCalls();
        call(info, &IInfoMessage::put_Info, rows.get());
        call(command, &IAppCommand::put_Operation, 3L);
        VARIANT_BOOL result = VARIANT_TRUE;
        const HRESULT outcome = command->Execute(&result);
        EXPECT_EQ(result, VARIANT_FALSE);
        return errorOf(outcome).number;
    }

    std::vector<Row> rows() const { return rowsIn(fetch(info, &IInfoMessage::get_Info)); }

    ComPtr<IInfoMessage> info = command.as<IInfoMessage>();
};

TEST_F(InfoMessageTests, PrepareForAMessageReadsNoRows)
{
    EXPECT_TRUE(prepare(1));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Names()"));
    EXPECT_TRUE(data.hasSubscribers(EventsOf::names));
    EXPECT_TRUE(fetch(info, &IInfoMessage::get_Info).isEmpty());
}

TEST_F(InfoMessageTests, PrepareForAnyOtherOperationReadsTheRowsInTheirOrder)
{
    for (const long operation : {3L, 0L, 2L, -1L})
    {
        EXPECT_TRUE(prepare(operation));
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Names()", "Root.Names()", "Names.LoadInfo(7)"));
        EXPECT_THAT(rows(), ElementsAre(Row(L"Mobile", L"555 0101"), Row(L"Home", L"555 0102")));
    }
}

TEST_F(InfoMessageTests, TheRowsAreAnArrayOfTextsWithLabelsFirst)
{
    prepare(3);
    const Variant read = fetch(info, &IInfoMessage::get_Info);
    ASSERT_EQ(read.type(), VT_ARRAY | VT_BSTR);
    SAFEARRAY* const array = read.get().parray;
    ASSERT_EQ(SafeArrayGetDim(array), 2U);
    for (const auto& [dimension, last] : {std::pair(1U, 1L), std::pair(2U, 1L)})
    {
        LONG lower = -1;
        LONG upper = -1;
        EXPECT_EQ(SafeArrayGetLBound(array, dimension, &lower), S_OK);
        EXPECT_EQ(SafeArrayGetUBound(array, dimension, &upper), S_OK);
        EXPECT_EQ(lower, 0);
        EXPECT_EQ(upper, last);
    }
    LONG place[] = {1, 0};
    Bstr value;
    EXPECT_EQ(SafeArrayGetElement(array, place, value.put()), S_OK);
    EXPECT_EQ(value, L"555 0101");
}

TEST_F(InfoMessageTests, RowsThatSomebodyElseAsksForAreNotItsOwn)
{
    prepare(3);
    ComPtr<INames> names = fetch(data.root, &IRoot::get_Names);
    fetch(names, &INames::LoadInfo, 8L);
    EXPECT_EQ(store(infoOf({})), S_OK);
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Messages()", "Root.Names()", "Names.SetInfo(7, \"Mobile\", -1, \"\")",
                            "Names.SetInfo(7, \"Home\", -1, \"\")"));
}

TEST_F(InfoMessageTests, StoringRemovesEveryRowThatWasReadAndWritesAllWithTheirPositions)
{
    prepare(3);
    EXPECT_EQ(store(infoOf({{L"Home", L"555 0102"}, {L"Car", L"a\r\nb"}, {L"", L""}})), S_OK);
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Messages()", "Root.Names()", "Names.SetInfo(7, \"Mobile\", -1, \"\")",
                            "Names.SetInfo(7, \"Home\", -1, \"\")",
                            "Names.SetInfo(7, \"Home\", 0, \"555 0102\")",
                            "Names.SetInfo(7, \"Car\", 1, \"a\r\nb\")", "Names.SetInfo(7, \"\", 2, \"\")"));
}

TEST_F(InfoMessageTests, AnEmptyListIssuesOnlyRemovals)
{
    prepare(3);
    EXPECT_EQ(store(infoOf({})), S_OK);
    EXPECT_EQ(data.takeCalls().size(), 4U);
    EXPECT_THAT(data.info, testing::SizeIs(1)); // that of the other resource
}

TEST_F(InfoMessageTests, WithoutHavingReadAnythingItRemovesNothing)
{
    EXPECT_EQ(store(infoOf({{L"Car", L"1"}})), S_OK);
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Messages()", "Root.Names()", "Names.SetInfo(7, \"Car\", 0, \"1\")"));
}

TEST_F(InfoMessageTests, RowsOfVariantsAreConvertedAndCountedFromAnywhere)
{
    const Variant rows = array(VT_VARIANT, {{2, 1}, {1, 5}});
    LONG place[] = {1, 5};
    SafeArrayPutElement(rows.get().parray, place, const_cast<VARIANT*>(&Variant(Bstr(L"Room")).get()));
    place[0] = 2;
    SafeArrayPutElement(rows.get().parray, place, const_cast<VARIANT*>(&Variant(17L).get()));
    EXPECT_EQ(store(rows), S_OK);
    EXPECT_THAT(data.takeCalls(), testing::Contains("Names.SetInfo(7, \"Room\", 0, \"17\")"));
}

TEST_F(InfoMessageTests, WhatIsNoTableIsThePlatformsArrayErrorAndNothingIsRemoved)
{
    const std::pair<Variant, HRESULT> refused[] = {
        {Variant(), DISP_E_TYPEMISMATCH},
        {Variant(Bstr(L"rows")), DISP_E_TYPEMISMATCH},
        {array(VT_I4, {{2, 0}, {1, 0}}), DISP_E_TYPEMISMATCH},
        {array(VT_BSTR, {{2, 0}}), DISP_E_BADINDEX},
        {array(VT_BSTR, {{2, 0}, {1, 0}, {1, 0}}), DISP_E_BADINDEX},
        {array(VT_BSTR, {{1, 0}, {1, 0}}), DISP_E_BADINDEX},
    };
    prepare(3);
    for (const auto& [rows, error] : refused)
    {
        EXPECT_EQ(store(rows), error);
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Messages()", "Root.Names()"));
    }
    EXPECT_THAT(data.info, testing::SizeIs(3));
}

TEST_F(InfoMessageTests, WhatAFailureHasLeftBehindIsRemovedAtTheNextAttempt)
{
    prepare(3);
    data.failAfter("Names.SetInfo", 3, locked); // two are removed, one is written
    EXPECT_EQ(store(infoOf({{L"Car", L"1"}, {L"Boat", L"2"}})), locked.number);
    EXPECT_EQ(store(infoOf({{L"Van", L"1"}})), S_OK);
    EXPECT_THAT(data.takeCalls(),
                ElementsAre("Root.Messages()", "Root.Names()", "Names.SetInfo(7, \"Car\", -1, \"\")",
                            "Names.SetInfo(7, \"Boat\", -1, \"\")", "Names.SetInfo(7, \"Van\", 0, \"1\")"));
    EXPECT_THAT(data.info, testing::SizeIs(2));
}

TEST_F(InfoMessageTests, AFailedRemovalLeavesAllOfThemToTheNextAttempt)
{
    prepare(3);
    data.failAfter("Names.SetInfo", 1, locked);
    EXPECT_EQ(store(infoOf({})), locked.number);
    EXPECT_EQ(store(infoOf({})), S_OK);
    EXPECT_EQ(data.takeCalls().size(), 4U);
}

TEST_F(InfoMessageTests, WhoeverIsCalledMayHaveTheRowsReadAnew)
{
    prepare(3);
    bool once = true;
    data.during = [&](const std::string& call) {
        if (call == "Names.SetInfo" && std::exchange(once, false))
            prepare(3);
    };
    EXPECT_EQ(store(infoOf({{L"Car", L"1"}})), S_OK);
    data.during = nullptr;
    EXPECT_THAT(data.takeCalls(), testing::IsSupersetOf({"Names.SetInfo(7, \"Mobile\", -1, \"\")",
                                                         "Names.SetInfo(7, \"Home\", -1, \"\")",
                                                         "Names.SetInfo(7, \"Car\", 0, \"1\")"}));
}

TEST_F(InfoMessageTests, AMessageIsSentWithThePresentTime)
{
    call(info, &IInfoMessage::put_Contact, Bstr(L"Mrs Jensen").get());
    call(info, &IInfoMessage::put_Tlf, Bstr(L"555 0199").get());
    call(info, &IInfoMessage::put_About, Bstr(L"Wants an offer").get());
    EXPECT_THAT(executed(1),
                ElementsAre("Root.Messages()", "Root.Names()",
                            "Messages.Add(7, now, \"Wants an offer\", \"555 0199\", \"Mrs Jensen\", 1)"));
}

TEST_F(InfoMessageTests, TheKindIsOneMoreThanTheIndexAndAnyOtherIsOne)
{
    for (const auto& [index, kind] :
         {std::pair(0L, 1L), {1L, 2L}, {2L, 3L}, {3L, 4L}, {4L, 1L}, {-1L, 1L}, {0x7FFFFFFFL, 1L}})
    {
        call(info, &IInfoMessage::put_TypeIndex, index);
        execute(1);
        EXPECT_EQ(data.messages.back().kind, kind) << index;
    }
}

TEST_F(InfoMessageTests, AnyOtherOperationDoesNothing)
{
    for (const long operation : {0L, 2L, 4L, -1L})
        EXPECT_THAT(executed(operation), ElementsAre("Root.Messages()", "Root.Names()"));
}

TEST_F(InfoMessageTests, InfoIsGivenBackAsItWasSet)
{
    const Variant given = infoOf({{L"Car", L"1"}});
    Variant reference = given;
    VARIANT toGiven{};
    toGiven.vt = VT_BYREF | VT_VARIANT;
    toGiven.pvarVal = reference.inOut();
    call(info, &IInfoMessage::put_Info, toGiven);
    reference = Variant(); // a copy of its own is kept
    EXPECT_THAT(rows(), ElementsAre(Row(L"Car", L"1")));
    call(info, &IInfoMessage::put_TypeIndex, 2L);
    EXPECT_EQ(fetch(info, &IInfoMessage::get_TypeIndex), 2);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(InfoMessageTests, ManyRowsAreReadAndStored)
{
    data.info.clear();
    for (long row = 0; row < 10'000; ++row)
        data.info.push_back({anna, L"Row " + std::to_wstring(row), L"1", row});
    prepare(3);
    EXPECT_EQ(rows().size(), 10'000U);
    EXPECT_EQ(rows().back().first, L"Row 9999");
}

} // namespace korvane::test
