#include "framework/com/Call.h"
#include "framework/com/Variant.h"
#include "tests/support/Library.h"
#include "tests/support/RecordingData.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

class EditGroupsTests : public testing::Test
{
protected:
    void let(const wchar_t* name, const Variant& value)
    {
        call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
    }

    Variant get(const wchar_t* name)
    {
        Variant value;
        call(command, &IAppCommand::get_Operand, Bstr(name).get(), value.put());
        return value;
    }

    bool prepare(long operation)
    {
        call(command, &IAppCommand::put_Operation, operation);
        VARIANT_BOOL result = VARIANT_TRUE;
        call(command, &IAppCommand::Prepare, &result);
        return result != VARIANT_FALSE;
    }

    bool execute(long operation)
    {
        call(command, &IAppCommand::put_Operation, operation);
        VARIANT_BOOL result = VARIANT_TRUE;
        call(command, &IAppCommand::Execute, &result);
        return result != VARIANT_FALSE;
    }

    void SetUp() override
    {
        data.groups = {{4, L"Drivers", 7}, {5, L"Rooms", 1}};
        let(L"Root", Variant(data.root.as<IDispatch>()));
    }

    RecordingData data;
    ComPtr<IAppCommand> command = create<IAppCommand>(__uuidof(::EditGroups));
};

TEST_F(EditGroupsTests, TheRootIsAPropertyToo)
{
    const auto group = command.as<IEditGroups>();
    ComPtr<IRoot> root;
    call(group, &IEditGroups::get_Root, root.put());
    EXPECT_EQ(root.get(), data.root.get());
    call(group, &IEditGroups::putref_Root, nullptr);
    EXPECT_EQ(get(L"Root").type(), VT_DISPATCH);
    EXPECT_EQ(get(L"Root").get().pdispVal, nullptr);
}

TEST_F(EditGroupsTests, PrepareForAdditionStartsANewGroupWhateverWasSet)
{
    let(L"GroupID", Variant(4L));
    let(L"GroupName", Variant(Bstr(L"Vans")));

    EXPECT_FALSE(prepare(1));

    EXPECT_EQ(get(L"GroupID").get().lVal, 0);
    EXPECT_EQ(toText(get(L"GroupName").get()), L"");
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(EditGroupsTests, PrepareForAnyOtherOperationFetchesTheGroup)
{
    for (const long operation : {0L, 2L, 3L, 4L, -1L})
    {
        let(L"GroupID", Variant(4L));
        EXPECT_FALSE(prepare(operation));
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Fetch(4)"));
        EXPECT_EQ(toText(get(L"GroupName").get()), L"Drivers");
        EXPECT_EQ(get(L"GroupID").get().lVal, 4);
    }
}

TEST_F(EditGroupsTests, AdditionPassesTheLiteral3AndTakesTheNewId)
{
    prepare(1);
    let(L"GroupName", Variant(Bstr(L"Vans")));

    EXPECT_FALSE(execute(1));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Add(\"Vans\", 3)"));
    EXPECT_EQ(get(L"GroupID").get().lVal, 100);
}

TEST_F(EditGroupsTests, ChangeHandsTheFetchedFlagsBack)
{
    let(L"GroupID", Variant(4L));
    prepare(3);
    data.takeCalls();
    let(L"GroupName", Variant(Bstr(L"Lorry drivers")));

    EXPECT_FALSE(execute(3));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Update(4, \"Lorry drivers\", 7)"));
    EXPECT_EQ(get(L"GroupID").get().lVal, 4);
}

TEST_F(EditGroupsTests, ChangeTakesTheIdThatTheDataLayerReturns)
{
    let(L"GroupID", Variant(4L));
    prepare(3);
    data.nextUpdatedGroup = 17;
    execute(3);
    EXPECT_THAT(data.takeCalls(), testing::Contains("Groups.Update(4, \"Drivers\", 7)"));
    EXPECT_EQ(get(L"GroupID").get().lVal, 17);
}

TEST_F(EditGroupsTests, ChangeOfANewGroupPassesFlags1)
{
    prepare(1);
    let(L"GroupID", Variant(5L));
    let(L"GroupName", Variant(Bstr(L"Vans")));
    execute(3);
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Update(5, \"Vans\", 1)"));
}

TEST_F(EditGroupsTests, DeletionTakesWhatTheDataLayerReturns)
{
    let(L"GroupID", Variant(4L));

    EXPECT_FALSE(execute(2));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Remove(4)"));
    EXPECT_EQ(get(L"GroupID").get().lVal, 0);
}

} // namespace korvane::test
