// The dialogs of activities, opened and closed again and again, leave nothing behind.
#include "tests/activities/ActivityUser.h"
#include "tests/support/LeakCycles.h"
#include "tests/support/RecordingData.h"

#include "framework/com/Variant.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

constexpr int rounds = 60;
constexpr DATE monday = 46349;

class ActivityLeakTests : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(LeakWatch::seesEveryString()) << "run this with OANOCACHE=1 in the environment";
    }

    static void fill(RecordingData& data)
    {
        data.groups = {{4, L"Drivers", 3}, {5, L"Vans", 3}};
        data.names = {{10, L"Anna", 4}, {11, L"Ben", 4}, {12, L"Carla", 4}, {20, L"Van 1", 5}};
        data.types = {{0, L"Activity", 0x808080}, {7, L"Service", 0x0000FF}};
        data.events = {{50, 10, 7, monday, monday + 1, L"Tour", std::nullopt, Rule{2, 0, 4, 0}}};
        data.newRule = Rule{0, 0, 10, 0};
    }

    static ComPtr<IAppCommand> makeCommand(REFCLSID classId, long operation, const RecordingData& data)
    {
        auto command = create<IAppCommand>(classId);
        call(command, &IAppCommand::put_Operation, operation);
        const auto let = [&](const wchar_t* name, const Variant& value) {
            call(command, &IAppCommand::put_Operand, Bstr(name).get(), value.get());
        };
        let(L"Root", Variant(data.root.as<IDispatch>()));
        let(L"GroupID", Variant(4L));
        let(L"N0", Variant(10L));
        if (operation != 1)
            let(L"EventID", Variant(50L));
        let(L"T0", Variant(OleDate{monday}));
        let(L"T1", Variant(OleDate{monday + 1}));
        return command;
    }

    static void expectReleased(const RecordingData& data)
    {
        ASSERT_EQ(data.openScopes, 0);
        ASSERT_EQ(data.rulesAlive, 0);
        ASSERT_FALSE(data.hasSubscribers());
        IRoot* const root = data.root.get();
        root->AddRef();
        ASSERT_EQ(root->Release(), 1U);
    }
};

} // namespace

TEST_F(ActivityLeakTests, TheActivityDialogLeavesNothingBehind)
{
    // As many labels as the dialog has; of the other controls the platform keeps nothing.
    std::vector<const wchar_t*> controls(12, L"Static");
    for (const wchar_t* other :
         {DATETIMEPICK_CLASSW, L"ComboBox", L"Edit", WC_TREEVIEWW, L"Button", UPDOWN_CLASSW})
        controls.push_back(other);
    expectNothingLeftBehind(rounds, controls, [](int round) {
        RecordingData data;
        fill(data);
        {
            ActivityUser user;
            const auto command = makeCommand(__uuidof(::EditEvents), round % 2 == 0 ? 1 : 3, data);
            if (!user.container.show(__uuidof(::ctlEditEvents), command.get()))
                throw Failure(E_FAIL, L"dialog", L"not ready");
            user.container.site->activateUi();
            user.container.pump();
            user.retype(user.textBox(), L"abc");
            user.toggleByKey(user.node(L"Ben", L"Drivers"));
            Container::click(user.repeat());
            user.container.press(static_cast<WORD>(round % 3 == 0 ? VK_RETURN : VK_ESCAPE));
            ASSERT_THAT(user.container.done, testing::ElementsAre(round % 3 != 0));
            ASSERT_THAT(user.container.errors, testing::IsEmpty());
            user.container.close();
        }
        expectReleased(data);
    });
}

TEST_F(ActivityLeakTests, TheMoveDialogLeavesNothingBehind)
{
    expectNothingLeftBehind(rounds, {L"Static"}, [](int round) {
        RecordingData data;
        fill(data);
        {
            Container container;
            const auto command = makeCommand(__uuidof(::MoveEvents), round % 2 == 0 ? 3 : 4, data);
            if (!container.show(__uuidof(::ctlMoveEvents), command.get()))
                throw Failure(E_FAIL, L"dialog", L"not ready");
            container.site->activateUi();
            container.pump();
            ASSERT_THAT(container.done, testing::ElementsAre(false));
            container.close();
        }
        expectReleased(data);
    });
}

} // namespace korvane::test
