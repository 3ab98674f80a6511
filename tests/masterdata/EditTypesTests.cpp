#include "tests/masterdata/CommandFixture.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr long service = 2;

class EditTypesTests : public CommandFixture
{
protected:
    EditTypesTests() : CommandFixture(__uuidof(::EditTypes))
    {
        data.types = {{service, L"Service", 255, 4, 66}, {3, L"Tour", 0, 4}};
        let(L"TypeText", L"Tyres");
        let(L"Color", Variant(9L));
    }
};

} // namespace

TEST_F(EditTypesTests, TheRootIsAPropertyToo)
{
    const auto types = command.as<IEditTypes>();
    EXPECT_EQ(fetch(types, &IEditTypes::get_Root).get(), data.root.get());
    call(types, &IEditTypes::putref_Root, nullptr);
    EXPECT_EQ(get(L"Root").get().pdispVal, nullptr);
}

TEST_F(EditTypesTests, PrepareReadsNothingAndLeavesEveryFieldAsItWasSet)
{
    for (const long operation : {0L, 1L, 2L, 3L, 4L})
    {
        let(L"TypeID", Variant(service));
        EXPECT_TRUE(prepare(operation));
        EXPECT_EQ(number(L"TypeID"), service);
        EXPECT_EQ(number(L"GroupID"), 4);
        EXPECT_EQ(text(L"TypeText"), L"Tyres");
        EXPECT_EQ(number(L"Color"), 9);
    }
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(EditTypesTests, ANewTypeIsAddedToTheGroupAndKeepsItsId)
{
    EXPECT_THAT(executed(1),
                ElementsAre("Root.Types()", "Types.Add(\"Tyres\", 9, 3)", "Types.AddToGroup(100, 4, 0)"));
    EXPECT_EQ(number(L"TypeID"), 100);
    EXPECT_THAT(executed(1), ElementsAre("Root.Types()", "Types.AddToGroup(100, 4, 0)"));
}

TEST_F(EditTypesTests, ATypeThatExistsIsAddedToTheGroupAndNothingElse)
{
    let(L"TypeID", Variant(3L));
    EXPECT_THAT(executed(1), ElementsAre("Root.Types()", "Types.AddToGroup(3, 4, 0)"));
    EXPECT_EQ(number(L"TypeID"), 3);
}

TEST_F(EditTypesTests, ARemovalTakesTheIdThatTheDataLayerReturns)
{
    let(L"TypeID", Variant(service));
    data.nextUpdatedItem = 17;
    EXPECT_THAT(executed(2), ElementsAre("Root.Types()", "Types.RemoveFromGroup(2, 4)"));
    EXPECT_EQ(number(L"TypeID"), 17);
}

TEST_F(EditTypesTests, AChangeTakesTheIdThatTheDataLayerReturns)
{
    let(L"TypeID", Variant(service));
    data.nextUpdatedItem = 17;
    EXPECT_THAT(executed(3), ElementsAre("Root.Types()", "Types.Update(2, \"Tyres\", 9, 0)"));
    EXPECT_EQ(number(L"TypeID"), 17);
}

TEST_F(EditTypesTests, AnyOtherOperationTakesTheCollectionOnly)
{
    for (const long operation : {0L, 4L, -1L})
        EXPECT_THAT(executed(operation), ElementsAre("Root.Types()"));
}

TEST_F(EditTypesTests, ACreationThatFailedHalfWayIsCompletedByTheNextAttempt)
{
    data.fail("Types.AddToGroup", locked);
    EXPECT_THAT(failed(1, locked),
                ElementsAre("Root.Types()", "Types.Add(\"Tyres\", 9, 3)", "Types.AddToGroup(100, 4, 0)"));
    EXPECT_THAT(executed(1), ElementsAre("Root.Types()", "Types.AddToGroup(100, 4, 0)"));
}

TEST_F(EditTypesTests, WhatIsEnteredAfterAHalfMadeCreationIsStoredToo)
{
    data.fail("Types.AddToGroup", locked);
    failed(1, locked);
    let(L"Color", Variant(10L));
    EXPECT_THAT(executed(1), ElementsAre("Root.Types()", "Types.Update(100, \"Tyres\", 10, 3)",
                                         "Types.AddToGroup(100, 4, 0)"));
}

} // namespace korvane::test
