// The repetition panel before a rule that cannot be read or written.
#include "tests/activities/ActivityDialog.h"

namespace korvane::test
{

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

const ErrorInfo refused{static_cast<HRESULT>(0x80041236), L"KorvaneData.Recurrence", L"Not with this rule."};

constexpr const char* readings[] = {"Recurrence.get_Kind", "Recurrence.get_Count", "Recurrence.get_Interval"};

} // namespace

class RecurrenceFailureTests : public RecurrencePanel
{
protected:
    void SetUp() override
    {
        RecurrencePanel::SetUp();
        data.recordRules = true;
    }

    void showsTheWeeklyRule() const
    {
        EXPECT_TRUE(isChecked(repeat()));
        EXPECT_TRUE(isChecked(option(L"By &Week")));
        EXPECT_FALSE(isChecked(option(L"By &Month")));
        EXPECT_TRUE(container.visible(label(L" . week  ")));
        EXPECT_EQ(Container::text(intervalBox()), L"4");
        EXPECT_EQ(Container::text(countBox()), L"7");
    }

    /// Changes both numbers of a rule that refuses them.
    void comesBack(const std::function<void()>& changeCount, const std::function<void()>& changeInterval)
    {
        showedWith({2, 3, 7, 0});
        data.fail("Recurrence.put_Count", refused);
        changeCount();
        EXPECT_THAT(container.errors, ElementsAre(refused));
        showsTheWeeklyRule();
        data.fail("Recurrence.put_Interval", refused);
        changeInterval();
        EXPECT_THAT(container.errors, ElementsAre(refused, refused));
        showsTheWeeklyRule();
        EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 3/7/0)");
    }
};

TEST_F(RecurrenceFailureTests, ANumberThatTheArrowsCannotWriteComesBack)
{
    comesBack([this] { clickArrow(1, true); }, [this] { clickArrow(0, true); });
}

TEST_F(RecurrenceFailureTests, ANumberThatCannotBeWrittenAsTypedComesBack)
{
    comesBack([this] { retype(countBox(), L"8"); }, [this] { retype(intervalBox(), L"5"); });
}

TEST_F(RecurrenceFailureTests, TheNumberThatWasRefusedIsWrittenAtTheNextAttempt)
{
    showedWith({2, 3, 7, 0});
    data.fail("Recurrence.put_Count", refused);
    retype(countBox(), L"8");
    retype(countBox(), L"8");
    data.fail("Recurrence.put_Interval", refused);
    clickArrow(0, true);
    clickArrow(0, true);
    EXPECT_EQ(container.errors.size(), 2U);
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 4/8/0)");
}

TEST_F(RecurrenceFailureTests, ABoxThatIsLeftKeepsItsNumberWhereTheRuleCannotBeRead)
{
    showedWith({2, 3, 7, 0});
    SetFocus(countBox());
    data.fail("Recurrence.get_Count", refused);
    SetFocus(ok());
    EXPECT_THAT(container.errors, ElementsAre(refused));
    SetFocus(intervalBox());
    data.fail("Recurrence.get_Interval", refused);
    SetFocus(ok());
    EXPECT_THAT(container.errors, ElementsAre(refused, refused));
    showsTheWeeklyRule();
    EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 3/7/0)");
}

TEST_F(RecurrenceFailureTests, AChangeOfKindThatCannotReadARuleKeepsTheFormerOne)
{
    for (const char* reading : readings)
    {
        SCOPED_TRACE(reading);
        showedWith({2, 3, 7, 0});
        data.fail(reading, refused);
        Container::click(option(L"By &Month"));
        EXPECT_THAT(container.errors, ElementsAre(refused));
        showsTheWeeklyRule();
        EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, week 3/7/0)");
        closeAndForget();
    }
}

TEST_F(RecurrenceFailureTests, AFirstRuleThatCannotBeReadIsNone)
{
    for (const char* reading : {"Recurrence.get_Count", "Recurrence.get_Interval"})
    {
        SCOPED_TRACE(reading);
        showed(3);
        data.fail(reading, refused);
        Container::click(repeat());
        EXPECT_THAT(container.errors, ElementsAre(refused));
        EXPECT_FALSE(isChecked(repeat()));
        EXPECT_FALSE(container.visible(option(L"By &Day")));
        EXPECT_EQ(container.resizes, 0);
        EXPECT_EQ(storedRule(), "Events.SetRecurrence(50, none)");
        closeAndForget();
    }
}

TEST_F(RecurrenceFailureTests, AStoredRuleThatCannotBeReadOrCopiedIsAFailureOfReady)
{
    data.events[0].rule = Rule{2, 3, 7, 0};
    // The command makes a copy of its own, which the panel reads.
    const std::pair<const char*, int> failures[] = {
        {"Recurrence.get_Kind", 0},     {"Recurrence.get_Count", 0},    {"Recurrence.put_Count", 0},
        {"Recurrence.get_Interval", 0}, {"Recurrence.put_Interval", 0}, {"Recurrence.get_Anchor", 0},
        {"Recurrence.put_Anchor", 0},   {"Recurrence.get_Kind", 1},     {"Recurrence.get_Count", 1},
        {"Recurrence.get_Interval", 1}};
    for (const auto& [failing, passed] : failures)
    {
        SCOPED_TRACE(failing);
        SCOPED_TRACE(passed);
        data.failAfter(failing, passed, refused);
        EXPECT_EQ(failureOfShowing(3), refused);
        EXPECT_EQ(data.openScopes, 0);
        EXPECT_THAT(container.errors, IsEmpty());

        EXPECT_TRUE(container.ready());
        showsTheWeeklyRule();
        container.close();
    }
}

} // namespace korvane::test
