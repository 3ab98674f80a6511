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

TEST_F(EditGroupsTests, DialogClassIsTheGroupDialog)
{
    Bstr progId;
    call(command, &IAppCommand::get_DialogClass, progId.put());
    EXPECT_EQ(progId, L"KorvaneDlg.ctlEditGroups");
}

TEST_F(EditGroupsTests, IsGrantedBeforeAnyOperandIsSet)
{
    const auto fresh = create<IAppCommand>(__uuidof(::EditGroups));
    VARIANT_BOOL granted = VARIANT_FALSE;
    call(fresh, &IAppCommand::get_Granted, &granted);
    EXPECT_EQ(granted, VARIANT_TRUE);
}

TEST_F(EditGroupsTests, OperationIsStoredUnchecked)
{
    call(command, &IAppCommand::put_Operation, -17L);
    long operation = 0;
    call(command, &IAppCommand::get_Operation, &operation);
    EXPECT_EQ(operation, -17);
}

TEST_F(EditGroupsTests, OperandsAreReadAsTheyWereSet)
{
    let(L"GroupID", Variant(5L));
    let(L"GroupName", Variant(Bstr(L"Vans")));

    EXPECT_EQ(get(L"GroupID").type(), VT_I4);
    EXPECT_EQ(get(L"GroupID").get().lVal, 5);
    EXPECT_EQ(get(L"GroupName").type(), VT_BSTR);
    EXPECT_EQ(toText(get(L"GroupName").get()), L"Vans");
    EXPECT_EQ(get(L"Root").type(), VT_DISPATCH);
    EXPECT_EQ(toObject(get(L"Root").get()).as<IRoot>().get(), data.root.get());
}

TEST_F(EditGroupsTests, OperandNamesAreExact)
{
    let(L"GroupID", Variant(5L));
    for (const wchar_t* name : {L"groupid", L"GROUPID", L"GroupID ", L"", L"GroupFlags", L"Operation"})
    {
        let(name, Variant(99L));
        EXPECT_TRUE(get(name).isEmpty()) << quoted(name);
    }
    EXPECT_EQ(get(L"GroupID").get().lVal, 5);
}

TEST_F(EditGroupsTests, AValueThatCannotBeConvertedLeavesTheOperandAsItWas)
{
    let(L"GroupID", Variant(5L));
    const Bstr name(L"GroupID");
    EXPECT_EQ(command->put_Operand(name.get(), Variant(Bstr(L"five")).get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(command->put_Operand(name.get(), Variant(Bstr(L"99999999999")).get()), DISP_E_OVERFLOW);
    EXPECT_EQ(command->put_Operand(Bstr(L"Root").get(), Variant(7L).get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(command->put_Operand(Bstr(L"Root").get(), Variant(command.as<IDispatch>()).get()),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(get(L"GroupID").get().lVal, 5);
    EXPECT_EQ(toObject(get(L"Root").get()).as<IRoot>().get(), data.root.get());
}

TEST_F(EditGroupsTests, ItsOwnPropertiesAreItsOperands)
{
    const auto group = command.as<IEditGroups>();
    call(group, &IEditGroups::put_GroupID, 5L);
    call(group, &IEditGroups::put_GroupName, Bstr(L"Vans").get());
    EXPECT_EQ(get(L"GroupID").get().lVal, 5);
    EXPECT_EQ(toText(get(L"GroupName").get()), L"Vans");

    ComPtr<IRoot> root;
    call(group, &IEditGroups::get_Root, root.put());
    EXPECT_EQ(root.get(), data.root.get());
    call(group, &IEditGroups::putref_Root, nullptr);
    EXPECT_EQ(get(L"Root").type(), VT_DISPATCH);
    EXPECT_EQ(get(L"Root").get().pdispVal, nullptr);
}

TEST_F(EditGroupsTests, CommandIsTheObjectItself)
{
    ComPtr<IAppCommand> itself;
    call(command.as<IEditGroups>(), &IEditGroups::get_Command, itself.put());
    EXPECT_EQ(itself.get(), command.get());
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

TEST_F(EditGroupsTests, ExecuteWithAnUnknownOperationDoesNothing)
{
    for (const long operation : {0L, 4L, -1L})
        EXPECT_FALSE(execute(operation));
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(EditGroupsTests, UndoAndRedoReturnFalseAndChangeNothing)
{
    prepare(1);
    execute(1);
    data.takeCalls();
    VARIANT_BOOL result = VARIANT_TRUE;
    call(command, &IAppCommand::Undo, &result);
    EXPECT_EQ(result, VARIANT_FALSE);
    result = VARIANT_TRUE;
    call(command, &IAppCommand::Redo, &result);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_THAT(data.takeCalls(), IsEmpty());
}

TEST_F(EditGroupsTests, WithoutRootPrepareAndExecuteFailWithAnError)
{
    const auto fresh = create<IAppCommand>(__uuidof(::EditGroups));
    call(fresh, &IAppCommand::put_Operation, 3L);
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(fresh->Prepare(&result), E_POINTER);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_EQ(fresh->Execute(&result), E_POINTER);
}

/// One data-layer call of the command, and how it is reached.
struct CommandCall
{
    const char* call;
    long operation;
    bool byPrepare;
    std::vector<std::string> upToTheFailure;
};

class EditGroupsFailureTests : public EditGroupsTests, public testing::WithParamInterface<CommandCall>
{
};

TEST_P(EditGroupsFailureTests, AFailingDataLayerCallReachesTheCallerUnchanged)
{
    const CommandCall& failing = GetParam();
    let(L"GroupID", Variant(4L));
    let(L"GroupName", Variant(Bstr(L"Vans")));
    call(command, &IAppCommand::put_Operation, failing.operation);
    data.fail(failing.call, locked);

    VARIANT_BOOL result = VARIANT_TRUE;
    const HRESULT outcome = failing.byPrepare ? command->Prepare(&result) : command->Execute(&result);

    EXPECT_EQ(errorOf(outcome), locked);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_EQ(data.takeCalls(), failing.upToTheFailure); // and nothing after it
    EXPECT_EQ(get(L"GroupID").get().lVal, 4);
    EXPECT_EQ(toText(get(L"GroupName").get()), L"Vans");
}

INSTANTIATE_TEST_SUITE_P(
    EachCall, EditGroupsFailureTests,
    testing::Values(CommandCall{"Root.Groups", 3, true, {"Root.Groups()"}},
                    CommandCall{"Groups.Fetch", 3, true, {"Root.Groups()", "Groups.Fetch(4)"}},
                    CommandCall{"Root.Groups", 1, false, {"Root.Groups()"}},
                    CommandCall{"Groups.Add", 1, false, {"Root.Groups()", "Groups.Add(\"Vans\", 3)"}},
                    CommandCall{"Root.Groups", 2, false, {"Root.Groups()"}},
                    CommandCall{"Groups.Remove", 2, false, {"Root.Groups()", "Groups.Remove(4)"}},
                    CommandCall{"Root.Groups", 3, false, {"Root.Groups()"}},
                    CommandCall{
                        "Groups.Update", 3, false, {"Root.Groups()", "Groups.Update(4, \"Vans\", 0)"}}));

TEST_F(EditGroupsTests, SucceedsOnceTheCauseOfAFailureIsGone)
{
    prepare(1);
    let(L"GroupName", Variant(Bstr(L"Vans")));
    data.fail("Groups.Add", {E_FAIL, L"KorvaneData.Groups", L"The database is locked."});
    VARIANT_BOOL result = VARIANT_TRUE;
    call(command, &IAppCommand::put_Operation, 1L);
    EXPECT_EQ(command->Execute(&result), E_FAIL);
    SetErrorInfo(0, nullptr);

    EXPECT_FALSE(execute(1));
    EXPECT_EQ(get(L"GroupID").get().lVal, 100);
}

} // namespace korvane::test
