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

TEST_F(EditGroupsTests, PrepareForChangeFetchesTheGroup)
{
    let(L"GroupID", Variant(4L));

    EXPECT_FALSE(prepare(3));

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Groups()", "Groups.Fetch(4)"));
    EXPECT_EQ(toText(get(L"GroupName").get()), L"Drivers");
}

} // namespace korvane::test
