#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class EditedOccurrences : public ActivityTest
{
protected:
    EditedOccurrences() { desk->repeat(event, Repetition{2, 0, 3}); }

    const Booking moved{van, 2, at(2026, 3, 11, 15), at(2026, 3, 12), L"Moved"};
    long event = desk->add(meeting()); // Mondays: 2, 9 and 16 March
};

} // namespace

TEST_F(EditedOccurrences, HaveTheirOwnValues)
{
    desk->update(event, 2, moved);
    EXPECT_EQ(moved, desk->fetch(event, 2));
    EXPECT_EQ((Lines{L"1, 1, 2, 1, 2026-03-02 09:00, 2026-03-02 10:00, Budget",
                     L"1, 2, 5, 2, 2026-03-11 15:00, 2026-03-12, Moved",
                     L"1, 3, 2, 1, 2026-03-16 09:00, 2026-03-16 10:00, Budget"}),
              desk->schedule(at(2026, 1, 1), at(2027, 1, 1)));
}

TEST_F(EditedOccurrences, LeaveTheSeriesAlone)
{
    desk->update(event, 2, moved);
    EXPECT_EQ(meeting(), desk->fetch(event));
    EXPECT_EQ(meeting(), desk->fetch(event, 1));
    EXPECT_EQ(meeting(at(2026, 3, 16, 9)), desk->fetch(event, 3));
    EXPECT_EQ((Repetition{2, 0, 3}), desk->repetition(event));
}

TEST_F(EditedOccurrences, MayBeTheFirstOne)
{
    desk->update(event, 1, moved);
    EXPECT_EQ(meeting(), desk->fetch(event));
    EXPECT_EQ((Lines{L"2 2026-03-09 09:00", L"1 2026-03-11 15:00", L"3 2026-03-16 09:00"}), desk->starts());
}

TEST_F(EditedOccurrences, AreEditedAgain)
{
    desk->update(event, 2, moved);
    desk->update(event, 2, meeting(at(2026, 3, 10, 9)));
    EXPECT_EQ(meeting(at(2026, 3, 10, 9)), desk->fetch(event, 2));
    EXPECT_EQ(3u, desk->starts().size());
}

TEST_F(EditedOccurrences, AreRemovedByThemselves)
{
    desk->remove(event, 2);
    EXPECT_EQ((Lines{L"1 2026-03-02 09:00", L"3 2026-03-16 09:00"}), desk->starts());
    EXPECT_REFUSED(desk->fetch(event, 2), Code::unknownOccurrence, L"Events", L"2");
    EXPECT_REFUSED(desk->remove(event, 2), Code::unknownOccurrence, L"Events", L"2");
    EXPECT_REFUSED(desk->update(event, 2, moved), Code::unknownOccurrence, L"Events", L"2");
}

TEST_F(EditedOccurrences, AreRemovedAfterTheyWereEdited)
{
    desk->update(event, 2, moved);
    desk->remove(event, 2);
    EXPECT_EQ((Lines{L"1 2026-03-02 09:00", L"3 2026-03-16 09:00"}), desk->starts());
}

TEST_F(EditedOccurrences, StayWhenTheSeriesMoves)
{
    desk->update(event, 2, moved);
    desk->remove(event, 3);
    desk->update(event, 0, meeting(at(2026, 6, 1, 8), bert));
    EXPECT_EQ(moved, desk->fetch(event, 2));
    EXPECT_EQ((Lines{L"2 2026-03-11 15:00", L"1 2026-06-01 08:00"}), desk->starts());
}

TEST_F(EditedOccurrences, StayWhenTheRuleChanges)
{
    desk->update(event, 2, moved);
    desk->remove(event, 3);
    desk->repeat(event, Repetition{1, 0, 4});
    EXPECT_EQ((Lines{L"1 2026-03-02 09:00", L"4 2026-03-05 09:00", L"2 2026-03-11 15:00"}), desk->starts());
}

TEST_F(EditedOccurrences, StayWhereTheSeriesHasNoSuchDayAnyMore)
{
    desk->update(event, 2, moved);
    desk->update(event, 0, meeting(at(2026, 1, 31)));
    desk->repeat(event, Repetition{3, 0, 3});
    EXPECT_EQ(moved, desk->fetch(event, 2));
    EXPECT_EQ((Lines{L"1 2026-01-31", L"2 2026-03-11 15:00", L"3 2026-03-31"}), desk->starts());
}

TEST_F(EditedOccurrences, EndWithTheNumbersOfTheRuleAndComeBackWithThem)
{
    desk->update(event, 2, moved);
    desk->repeat(event, Repetition{2, 0, 1});
    EXPECT_EQ(Lines{L"1 2026-03-02 09:00"}, desk->starts());
    EXPECT_FALSE(desk->has(event, 2));
    desk->repeat(event, Repetition{2, 0, 2});
    EXPECT_EQ((Lines{L"1 2026-03-02 09:00", L"2 2026-03-11 15:00"}), desk->starts());
}

TEST_F(EditedOccurrences, RestWhileThereIsNoRule)
{
    desk->update(event, 2, moved);
    desk->remove(event, 1);
    desk->repeat(event, std::nullopt);
    EXPECT_EQ(Lines{L"0 2026-03-02 09:00"}, desk->starts());
    EXPECT_FALSE(desk->has(event, 2));
    desk->repeat(event, Repetition{2, 0, 2});
    EXPECT_EQ(Lines{L"2 2026-03-11 15:00"}, desk->starts());
}

TEST_F(EditedOccurrences, GoWithTheActivity)
{
    desk->update(event, 2, moved);
    desk->remove(event, 3);
    desk->remove(event);
    EXPECT_EQ(Lines{}, desk->starts());
    EXPECT_EQ(L"0", sqlText("SELECT count(*) FROM exceptions"));
}

TEST_F(EditedOccurrences, AreCheckedAsActivitiesAre)
{
    Booking wrong = moved;
    wrong.t1 = wrong.t0 - 1;
    EXPECT_REFUSED(desk->update(event, 2, wrong), Code::endBeforeBegin, L"Events");
    wrong = moved;
    wrong.name = 4711;
    EXPECT_REFUSED(desk->update(event, 2, wrong), Code::unknownName, L"Events");
    wrong = moved;
    wrong.type = 4711;
    EXPECT_REFUSED(desk->update(event, 2, wrong), Code::unknownType, L"Events");
}
