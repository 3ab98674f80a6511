#include "tests/support/CommandTest.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

class EditGroupsTests : public CommandTest
{
protected:
    EditGroupsTests() : CommandTest(__uuidof(::EditGroups))
    {
        data.groups = {{4, L"Drivers", 7}, {5, L"Rooms", 1}};
    }
};

TEST_F(EditGroupsTests, TheRootIsAPropertyToo)
{
    const auto group = command.as<IEditGroups>();
    const auto root = fetch(group, &IEditGroups::get_Root);
    EXPECT_EQ(root.get(), data.root.get());
    call(group, &IEditGroups::putref_Root, nullptr);
    EXPECT_EQ(get(L"Root").type(), VT_DISPATCH);
    EXPECT_EQ(get(L"Root").get().pdispVal, nullptr);
}

TEST_F(EditGroupsTests, PrepareForAdditionStartsANewGroupWhateverWasSet)
{
    let(L"GroupID", 4L);
    let(L"GroupName", L"Vans");

    EXPECT_FALSE(prepare(1));

    EXPECT_EQ(number(L"GroupID"), 0);
    EXPECT_EQ(text(L"GroupName"), L"");
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(EditGroupsTests, PrepareForAnyOtherOperationFetchesTheGroup)
{
    for (const long operation : {0L, 2L, 3L, 4L, -1L})
    {
        let(L"GroupID", 4L);
        EXPECT_FALSE(prepare(operation));
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Fetch(4)"));
        EXPECT_EQ(text(L"GroupName"), L"Drivers");
        EXPECT_EQ(number(L"GroupID"), 4);
    }
}

TEST_F(EditGroupsTests, AdditionPassesTheLiteral3AndTakesTheNewId)
{
    prepare(1);
    let(L"GroupName", L"Vans");

    EXPECT_FALSE(execute(1));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Add(\"Vans\", 3)"));
    EXPECT_EQ(number(L"GroupID"), 100);
}

TEST_F(EditGroupsTests, ChangeHandsTheFetchedFlagsBack)
{
    let(L"GroupID", 4L);
    prepare(3);
    data.takeCalls();
    let(L"GroupName", L"Lorry drivers");

    EXPECT_FALSE(execute(3));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Update(4, \"Lorry drivers\", 7)"));
    EXPECT_EQ(number(L"GroupID"), 4);
}

TEST_F(EditGroupsTests, ChangeTakesTheIdThatTheDataLayerReturns)
{
    let(L"GroupID", 4L);
    prepare(3);
    data.nextUpdatedGroup = 17;
    execute(3);
    EXPECT_THAT(data.takeCalls(), testing::Contains("Groups.Update(4, \"Drivers\", 7)"));
    EXPECT_EQ(number(L"GroupID"), 17);
}

TEST_F(EditGroupsTests, ChangeOfANewGroupPassesFlags1)
{
    prepare(1);
    let(L"GroupID", 5L);
    let(L"GroupName", L"Vans");
    execute(3);
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Update(5, \"Vans\", 1)"));
}

TEST_F(EditGroupsTests, DeletionTakesWhatTheDataLayerReturns)
{
    let(L"GroupID", 4L);

    EXPECT_FALSE(execute(2));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Remove(4)"));
    EXPECT_EQ(number(L"GroupID"), 0);
}

} // namespace korvane::test
