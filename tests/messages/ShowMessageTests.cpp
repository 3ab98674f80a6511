#include "tests/support/CommandTest.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

class ShowMessageTests : public CommandTest
{
protected:
    ShowMessageTests() : CommandTest(__uuidof(::ShowMessage)) {}

    ComPtr<IShowMessage> message = command.as<IShowMessage>();
};

TEST_F(ShowMessageTests, DeletesTheMessage)
{
    data.messages = {{3, 7, L"Ben", 46000, L"555 0100", L"Hansen", L"Tyres"},
                     {4, 7, L"Ben", 46001, L"555 0101", L"Jensen", L"Oil"}};
    call(message, &IShowMessage::put_MsgID, 3L);
    EXPECT_THAT(executed(2), ElementsAre("Root.Messages()", "Messages.Remove(3)"));
    ASSERT_EQ(data.messages.size(), 1U);
    EXPECT_EQ(data.messages.front().id, 4);
}

TEST_F(ShowMessageTests, DoesNothingForAnyOtherOperation)
{
    call(message, &IShowMessage::put_MsgID, 3L);
    for (const long operation : {1L, 3L, 0L, -2L})
        EXPECT_THAT(executed(operation), ElementsAre("Root.Messages()"));
}

TEST_F(ShowMessageTests, PrepareIsTrueAndChangesNothing)
{
    let(L"Contact", L"Hansen");
    for (const long operation : {1L, 2L, 3L})
        EXPECT_TRUE(prepare(operation));
    EXPECT_THAT(data.takeCalls(), IsEmpty());
    EXPECT_EQ(fetch(message, &IShowMessage::get_Contact), L"Hansen");
}

TEST_F(ShowMessageTests, TheMessageIsAPropertyAndNoOperand)
{
    let(L"MsgID", Variant(3L));
    EXPECT_EQ(fetch(message, &IShowMessage::get_MsgID), 0);
    call(message, &IShowMessage::put_MsgID, 3L);
    EXPECT_EQ(fetch(message, &IShowMessage::get_MsgID), 3);
    EXPECT_TRUE(get(L"MsgID").isEmpty());
}

} // namespace korvane::test
