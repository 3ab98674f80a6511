#include "framework/com/LateBound.h"
#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Schedules : public ActivityTest
{
protected:
    long add(DATE t0, DATE t1, long name = anna) const { return desk->add({name, 1, t0, t1, L""}); }

    /// The ids of the activities on 2 March 2026.
    std::vector<long> on2March() const
    {
        std::vector<long> result;
        for (const std::wstring& line : desk->schedule(at(2026, 3, 2), at(2026, 3, 3)))
            result.push_back(std::stol(line));
        return result;
    }
};

} // namespace

TEST_F(Schedules, AreTheActivitiesThemselves)
{
    const auto schedule = desk->events.as<ISchedule>();
    ASSERT_TRUE(schedule);
    EXPECT_EQ(desk->events.as<IUnknown>().get(), schedule.as<IUnknown>().get());
}

TEST_F(Schedules, AreEmptyWhereNothingIsBooked)
{
    EXPECT_EQ(Lines{}, desk->schedule(at(2026, 3, 2), at(2026, 3, 3)));
}

TEST_F(Schedules, HoldEverythingThatIsAnnounced)
{
    const Booking booking{van, 2, at(2026, 3, 2, 9), at(2026, 3, 3, 17, 30), L"Trade fair"};
    desk->add(booking);
    EXPECT_EQ(Lines{L"1, 0, 5, 2, 2026-03-02 09:00, 2026-03-03 17:30, Trade fair"},
              desk->schedule(at(2026, 3, 1), at(2026, 3, 5)));
}

TEST_F(Schedules, HoldWhatTouchesTheTime)
{
    add(at(2026, 3, 1, 22), at(2026, 3, 2)); // ends when the time begins
    const long into = add(at(2026, 3, 1, 22), at(2026, 3, 2, 6));
    const long around = add(at(2025, 12, 24), at(2026, 4, 1));
    const long at0 = add(at(2026, 3, 2), at(2026, 3, 2)); // takes no time
    const long within = add(at(2026, 3, 2, 9), at(2026, 3, 2, 10));
    const long out = add(at(2026, 3, 2, 23, 59), at(2026, 3, 3, 1));
    add(at(2026, 3, 3), at(2026, 3, 3, 1)); // begins when the time ends
    EXPECT_EQ((std::vector{around, into, at0, within, out}), on2March());
}

TEST_F(Schedules, AreInTheOrderOfTheStartAndThenOfTheIds)
{
    const long noon = add(at(2026, 3, 2, 12), at(2026, 3, 2, 13));
    const long morning = add(at(2026, 3, 2, 8), at(2026, 3, 2, 18));
    const long series = add(at(2026, 2, 1, 12), at(2026, 2, 1, 13));
    const long noonToo = add(at(2026, 3, 2, 12), at(2026, 3, 2, 13));
    desk->repeat(series, Repetition{1, 0, 50});
    EXPECT_EQ((std::vector{morning, noon, series, noonToo}), on2March());
}

TEST_F(Schedules, HoldTheOccurrencesThatTouchTheTime)
{
    const long event = add(at(2020, 1, 1, 22), at(2020, 1, 2, 6));
    desk->repeat(event, Repetition{1, 0, 100000});
    EXPECT_EQ((Lines{L"2251 2026-02-28 22:00", L"2252 2026-03-01 22:00", L"2253 2026-03-02 22:00"}),
              desk->starts(at(2026, 3, 1), at(2026, 3, 3)));
}

TEST_F(Schedules, HoldOccurrencesThatOverlapEachOther)
{
    const long event = add(at(2026, 3, 1), at(2026, 3, 4));
    desk->repeat(event, Repetition{1, 0, 10});
    EXPECT_EQ((Lines{L"3 2026-03-03", L"4 2026-03-04", L"5 2026-03-05"}),
              desk->starts(at(2026, 3, 5), at(2026, 3, 5, 12)));
}

TEST_F(Schedules, HoldAnEditedOccurrenceWhereItIsNow)
{
    const long event = add(at(2026, 3, 2, 9), at(2026, 3, 2, 10));
    desk->repeat(event, Repetition{2, 0, 3});
    desk->update(event, 2, {anna, 1, at(2027, 5, 1), at(2027, 5, 2), L""});
    EXPECT_EQ(Lines{}, desk->starts(at(2026, 3, 9), at(2026, 3, 10)));
    EXPECT_EQ(Lines{L"2 2027-05-01"}, desk->starts(at(2027, 5, 1), at(2027, 5, 2)));
    desk->update(event, 2, {anna, 1, at(2025, 5, 1), at(2025, 5, 2), L""}); // before the series begins
    EXPECT_EQ(Lines{L"2 2025-05-01"}, desk->starts(at(2025, 1, 1), at(2026, 1, 1)));
}

TEST_F(Schedules, ReachAsFarAsNumbersDo)
{
    const long event = add(at(2026, 3, 2, 9), at(2026, 3, 2, 10));
    desk->repeat(event, Repetition{4, 2147483647, 2147483647});
    EXPECT_EQ(1u, desk->schedule(-1e300, 1e300).size());
    EXPECT_EQ(Lines{}, desk->schedule(1e300, -1e300));
    EXPECT_EQ(Lines{}, desk->schedule(at(2026, 3, 2, 9), at(2026, 3, 2, 9)));
}

TEST_F(Schedules, AreReadFromThousandsOfActivities)
{
    sql("WITH RECURSIVE n (i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n LIMIT 5000)"
        " INSERT INTO events (name_id, type_id, t0, t1, text, kind, interval, count, anchor)"
        "  SELECT 2, 1, 40000 + i, 40000.5 + i, '', iif(i % 10, NULL, 1), iif(i % 10, NULL, 0),"
        "         iif(i % 10, NULL, 2147483647), NULL FROM n");
    // One activity of its own, and an occurrence of each of the 451 series that have begun.
    EXPECT_EQ(1u + 451u, desk->schedule(44501, 44502).size());
}

TEST_F(Schedules, AnswerLateBoundCalls)
{
    const long event = add(at(2026, 3, 2, 9), at(2026, 3, 2, 10));
    const Listener::Subscription listener(desk->events, DIID_IEventsEvents);
    invoke(desk->events.as<IDispatch>(), L"Load",
           {Variant(OleDate{at(2026, 3, 2)}), Variant(OleDate{at(2026, 3, 3)})});
    EXPECT_EQ((Lines{L"OnClear", L"OnAdd 1, 0, 2, 1, 2026-03-02 09:00, 2026-03-02 10:00, "}),
              listener->events());
    EXPECT_TRUE(desk->has(event));
}

TEST_F(Schedules, NeedNobodyWhoListens)
{
    add(at(2026, 3, 2, 9), at(2026, 3, 2, 10));
    EXPECT_EQ(S_OK, desk->events.as<ISchedule>()->Load(at(2026, 3, 2), at(2026, 3, 3)));
}

TEST_F(Schedules, AllowWritesWhileTheyAreAnnounced)
{
    const long event = add(at(2026, 3, 2, 9), at(2026, 3, 2, 10));
    const Listener::Subscription listener(desk->events, DIID_IEventsEvents);
    bool removed = false;
    listener->onEvent = [&] {
        if (!std::exchange(removed, true))
            desk->remove(event);
    };
    call(desk->events.as<ISchedule>(), &ISchedule::Load, at(2026, 3, 2), at(2026, 3, 3));
    // What was being announced, with the clearing that the write announces in between.
    EXPECT_EQ((Lines{L"OnClear", L"OnClear", L"OnAdd 1, 0, 2, 1, 2026-03-02 09:00, 2026-03-02 10:00, "}),
              listener->events());
}
