#include "framework/com/Call.h"
#include "tests/support/Library.h"
#include "tests/support/RecordingData.h"

#include <KorvaneDlg.h>

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

class ShowMessageTests : public testing::Test
{
protected:
    ShowMessageTests()
    {
        call(command, &IAppCommand::put_Operand, Bstr(L"Root").get(),
             Variant(data.root.as<IDispatch>()).get());
    }

    bool execute(long operation)
    {
        call(command, &IAppCommand::put_Operation, operation);
        return fetch(command, &IAppCommand::Execute);
    }

    RecordingData data;
    ComPtr<IShowMessage> command = create<IShowMessage>(__uuidof(::ShowMessage));
};

TEST_F(ShowMessageTests, DeletesTheMessage)
{
    data.messages = {{3, 7, L"Ben", 46000, L"555 0100", L"Hansen", L"Tyres"},
                     {4, 7, L"Ben", 46001, L"555 0101", L"Jensen", L"Oil"}};
    call(command, &IShowMessage::put_MsgID, 3L);
    EXPECT_FALSE(execute(2));
    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Messages()", "Messages.Remove(3)"));
    ASSERT_EQ(data.messages.size(), 1U);
    EXPECT_EQ(data.messages.front().id, 4);
}

TEST_F(ShowMessageTests, DoesNothingForAnyOtherOperation)
{
    call(command, &IShowMessage::put_MsgID, 3L);
    for (const long operation : {1L, 3L, 0L, -2L})
    {
        EXPECT_FALSE(execute(operation));
        EXPECT_THAT(data.takeCalls(), ElementsAre("Root.Messages()"));
    }
}

TEST_F(ShowMessageTests, PrepareIsTrueAndChangesNothing)
{
    call(command, &IAppCommand::put_Operand, Bstr(L"Contact").get(), Variant(Bstr(L"Hansen")).get());
    for (const long operation : {1L, 2L, 3L})
    {
        call(command, &IAppCommand::put_Operation, operation);
        EXPECT_TRUE(fetch(command, &IAppCommand::Prepare));
    }
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_EQ(fetch(command, &IShowMessage::get_Contact), L"Hansen");
}

TEST_F(ShowMessageTests, TheMessageIsAPropertyAndNoOperand)
{
    call(command, &IAppCommand::put_Operand, Bstr(L"MsgID").get(), Variant(3L).get());
    EXPECT_EQ(fetch(command, &IShowMessage::get_MsgID), 0);
    call(command, &IShowMessage::put_MsgID, 3L);
    EXPECT_EQ(fetch(command, &IShowMessage::get_MsgID), 3);
    EXPECT_TRUE(fetch(command, &IAppCommand::get_Operand, Bstr(L"MsgID").get()).isEmpty());
}

} // namespace korvane::test
