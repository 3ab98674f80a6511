#include "framework/com/Variant.h"
#include "tests/support/Container.h"
#include "tests/support/RecordingData.h"

#include <gmock/gmock.h>

namespace korvane::test
{

using testing::ElementsAre;

class ctlEditGroupsTests : public testing::Test
{
protected:
    bool show(long operation)
    {
        call(command, &IAppCommand::put_Operation, operation);
        call(command, &IAppCommand::put_Operand, Bstr(L"Root").get(), Variant(data.root.as<IDispatch>()).get());
        return container.show(__uuidof(::ctlEditGroups), command.get());
    }

    RecordingData data;
    Container container;
    ComPtr<IAppCommand> command = create<IAppCommand>(__uuidof(::EditGroups));
};

TEST_F(ctlEditGroupsTests, ANewGroupIsTypedAndAdded)
{
    ASSERT_TRUE(show(1));
    container.site->activateUi();
    container.type(L"Vans");
    container.press(VK_RETURN);

    EXPECT_THAT(data.takeCalls(), ElementsAre("Root.OpenScope(0, \"ctlEditGroups.Prepare\")", "Scope.Close(0, 0)",
                                              "Root.Groups()", "Groups.Add(\"Vans\", 3)"));
    EXPECT_THAT(container.done, ElementsAre(false));
}

} // namespace korvane::test
