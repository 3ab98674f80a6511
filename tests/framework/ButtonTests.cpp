// Clicks on a button, as many as the user makes.
#include "tests/framework/ControlDialog.h"

namespace korvane::test
{

namespace
{

struct ButtonLayout
{
    explicit ButtonLayout(DialogWindow& dialog)
        : cmdNext{dialog, {.name = L"cmdNext", .place = {120, 120, 1500, 345}, .text = L"&Next"}},
          cmdDelete{dialog, {.name = L"cmdDelete", .place = {120, 600, 1500, 345}, .text = L"&Delete"}}
    {
        cmdNext.onClick = [this] { ++clicks; };
        cmdDelete.onClick = [this] { ++clicks; };
        cmdDelete.ignoreSecondClick();
    }

    int clicks = 0;
    Button cmdNext;
    Button cmdDelete;
};

class ButtonTests : public ControlTest<ButtonLayout>
{
protected:
    int clicksOf(const Button& button, bool twice) const
    {
        layout().clicks = 0;
        Container::clickAt(button.window(), 5, 5, twice);
        return layout().clicks;
    }
};

} // namespace

TEST_F(ButtonTests, EachOfTwoQuickClicksCounts)
{
    EXPECT_EQ(clicksOf(layout().cmdNext, false), 1);
    EXPECT_EQ(clicksOf(layout().cmdNext, true), 2);
}

TEST_F(ButtonTests, ASecondClickThatWouldDoHarmIsPassedOver)
{
    EXPECT_EQ(clicksOf(layout().cmdDelete, true), 1);
    EXPECT_EQ(clicksOf(layout().cmdDelete, false), 1);
}

TEST_F(ButtonTests, OkAndCancelTakeTheFirstOfTwoQuickClicks)
{
    int taken = 0;
    dialog->onTake = [&] {
        ++taken;
        throw Failure(E_FAIL); // the dialog stays
    };
    Container::clickAt(dialog->fraCommands.cmdOk.window(), 5, 5, true);
    EXPECT_EQ(taken, 1);
    container.site->onDone = [](bool) { throw Failure(E_FAIL); };
    container.errors.clear();
    Container::clickAt(dialog->fraCommands.cmdCancel.window(), 5, 5, true);
    EXPECT_EQ(container.errors.size(), 1U);
}

} // namespace korvane::test
