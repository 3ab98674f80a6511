// A dialog that is opened again and again leaves nothing behind.
#include "tests/classes/Cases.h"
#include "tests/support/LeakCycles.h"
#include "tests/support/Soak.h"

#include <gmock/gmock.h>

namespace korvane::test
{

namespace
{

/// Enough to tell one lost heap block in one of the ways of using a dialog from what the platform keeps.
constexpr int roundsOfCase = 60;

class LeakTests : public testing::TestWithParam<DialogCase>, public DialogOnCase
{
protected:
    LeakTests() : DialogOnCase(GetParam()) { end(); }

    /// One dialog with data of its own, confirmed or cancelled.
    void use(bool confirmed)
    {
        DialogOnCase dialog(tested);
        dialog.fillIn();
        CONTROLINFO info{};
        info.cb = sizeof info;
        call(dialog.container.dialog.as<IOleControl>(), &IOleControl::GetControlInfo, &info);
        if (confirmed || tested.runsByItself())
            dialog.confirm();
        else
            dialog.container.press(VK_ESCAPE);
        const bool cancelled = !confirmed && !tested.runsByItself();
        ASSERT_EQ(dialog.container.done, cancelled ? std::vector{true} : tested.doneAfterOk());
        ASSERT_THAT(dialog.container.errors, testing::IsEmpty());
        dialog.end();
    }
};

} // namespace

TEST_P(LeakTests, OpenedAgainAndAgainItLeavesNothingBehind)
{
    renew();
    show();
    std::vector<std::wstring> controls;
    for (const HWND window : windowsOn(container.dialogWindow()))
        controls.push_back(classOf(window));
    end();
    expectNothingLeftBehind(roundsOfCase * soak(), controls, [this](int round) { use(round % 2 == 0); });
}

INSTANTIATE_TEST_SUITE_P(EveryDialog, LeakTests, testing::ValuesIn(dialogCases()),
                         [](const auto& tested) { return tested.param.name; });

} // namespace korvane::test
