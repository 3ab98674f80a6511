#include "demo/datalayer/Occurrences.h"
#include "tests/demo/datalayer/ActivityTest.h"

#include <climits>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

Activity startingAt(DATE t0, double length = 1.0 / 24)
{
    return {2, 1, {t0}, {t0 + length}, L"Budget"};
}

/// The starts of the first numbers, "-" for those without an occurrence.
Lines starts(DATE first, const Rule& rule)
{
    Lines result;
    for (long number = 1; number <= rule.count; ++number)
    {
        const auto occurrence = occurrenceOf(startingAt(first), rule, number);
        result.push_back(occurrence ? written(occurrence->t0.days) : L"-");
    }
    return result;
}

constexpr DATE endOfTime = 2958466;

} // namespace

TEST(Occurrences, FollowDays)
{
    EXPECT_EQ((Lines{L"2026-02-27 09:30", L"2026-02-28 09:30", L"2026-03-01 09:30"}),
              starts(at(2026, 2, 27, 9, 30), {Rule::day, 0, 3}));
    EXPECT_EQ((Lines{L"2026-12-30", L"2027-01-02", L"2027-01-05"}),
              starts(at(2026, 12, 30), {Rule::day, 2, 3}));
}

TEST(Occurrences, FollowWeeks)
{
    EXPECT_EQ((Lines{L"2026-03-02 08:00", L"2026-03-09 08:00", L"2026-03-16 08:00"}),
              starts(at(2026, 3, 2, 8), {Rule::week, 0, 3}));
    EXPECT_EQ((Lines{L"2026-12-21", L"2027-01-04", L"2027-01-18"}),
              starts(at(2026, 12, 21), {Rule::week, 1, 3}));
}

TEST(Occurrences, FollowMonths)
{
    EXPECT_EQ((Lines{L"2026-11-15 23:45", L"2026-12-15 23:45", L"2027-01-15 23:45"}),
              starts(at(2026, 11, 15, 23, 45), {Rule::month, 0, 3}));
    EXPECT_EQ((Lines{L"2026-11-15", L"2027-02-15", L"2027-05-15"}),
              starts(at(2026, 11, 15), {Rule::month, 2, 3}));
}

TEST(Occurrences, LeaveMonthsOutThatLackTheDayAndKeepTheirNumbers)
{
    EXPECT_EQ(
        (Lines{L"2026-01-31", L"-", L"2026-03-31", L"-", L"2026-05-31", L"-", L"2026-07-31", L"2026-08-31"}),
        starts(at(2026, 1, 31), {Rule::month, 0, 8}));
    EXPECT_EQ((Lines{L"2027-12-30", L"2028-01-30", L"-", L"2028-03-30"}),
              starts(at(2027, 12, 30), {Rule::month, 0, 4}));
    EXPECT_EQ((Lines{L"2027-12-29", L"2028-01-29", L"2028-02-29", L"2028-03-29"}),
              starts(at(2027, 12, 29), {Rule::month, 0, 4}));
    EXPECT_EQ((Lines{L"2026-08-31", L"2026-10-31", L"2026-12-31", L"-"}),
              starts(at(2026, 8, 31), {Rule::month, 1, 4}));
}

TEST(Occurrences, FollowYears)
{
    EXPECT_EQ((Lines{L"2026-03-02", L"2027-03-02", L"2028-03-02"}),
              starts(at(2026, 3, 2), {Rule::year, 0, 3}));
    EXPECT_EQ((Lines{L"2026-03-02", L"2036-03-02"}), starts(at(2026, 3, 2), {Rule::year, 9, 2}));
}

TEST(Occurrences, LeaveYearsOutThatLack29February)
{
    EXPECT_EQ((Lines{L"2024-02-29", L"-", L"-", L"-", L"2028-02-29"}),
              starts(at(2024, 2, 29), {Rule::year, 0, 5}));
    EXPECT_EQ((Lines{L"2096-02-29", L"-", L"2104-02-29"}), starts(at(2096, 2, 29), {Rule::year, 3, 3}));
}

TEST(Occurrences, FollowEasterAtTheFirstOnesDistance)
{
    // Good Friday, Easter Monday, Ascension Day.
    EXPECT_EQ((Lines{L"2024-03-29", L"2025-04-18", L"2026-04-03"}),
              starts(at(2024, 3, 29), {Rule::easter, 0, 3}));
    EXPECT_EQ((Lines{L"2026-04-06 10:00", L"2028-04-17 10:00"}),
              starts(at(2026, 4, 6, 10), {Rule::easter, 1, 2}));
    EXPECT_EQ((Lines{L"2024-05-09", L"2025-05-29", L"2026-05-14"}),
              starts(at(2024, 5, 9), {Rule::easter, 0, 3}));
}

TEST(Occurrences, FollowEasterAcrossTheTurnOfTheYear)
{
    // 1 January 2029 is 90 days before Easter, and so is 22 December before 22 March.
    EXPECT_EQ((Lines{L"2029-01-01", L"2030-01-21"}), starts(at(2029, 1, 1), {Rule::easter, 0, 2}));
    const auto occurrence = occurrenceOf(startingAt(at(2029, 1, 1)), {Rule::easter, 0, 300}, 2285 - 2029 + 1);
    ASSERT_TRUE(occurrence);
    EXPECT_EQ(L"2284-12-22", written(occurrence->t0.days));
    const auto numbers = numbersBetween(startingAt(at(2029, 1, 1)), {Rule::easter, 0, 300},
                                        {at(2284, 12, 20)}, {at(2284, 12, 24)});
    EXPECT_LE(numbers.first, 257);
    EXPECT_GE(numbers.last, 257);
}

TEST(Occurrences, KeepTheTimesAndEverythingElse)
{
    const Activity activity{2, 1, {at(2026, 3, 2, 22)}, {at(2026, 3, 4, 6, 30)}, L"Night shift"};
    const auto third = occurrenceOf(activity, {Rule::week}, 3);
    ASSERT_TRUE(third);
    EXPECT_EQ(at(2026, 3, 16, 22), third->t0.days);
    EXPECT_EQ(at(2026, 3, 18, 6, 30), third->t1.days);
    EXPECT_EQ(2, third->name);
    EXPECT_EQ(1, third->type);
    EXPECT_EQ(L"Night shift", third->text);
}

TEST(Occurrences, AreNumberedFrom1ToTheCount)
{
    const Activity activity = startingAt(at(2026, 3, 2));
    for (const long number : {-1L, 0L, 5L, LONG_MAX})
        EXPECT_FALSE(occurrenceOf(activity, {Rule::day, 0, 4}, number));
    EXPECT_TRUE(occurrenceOf(activity, {Rule::day, 0, 1}, 1));
}

TEST(Occurrences, EndWithTheYear9999)
{
    const Activity activity = startingAt(at(9998, 12, 31, 22));
    for (const long kind : {Rule::day, Rule::week, Rule::month, Rule::year, Rule::easter})
    {
        const Rule rule{kind, LONG_MAX, LONG_MAX};
        EXPECT_TRUE(occurrenceOf(activity, rule, 1));
        EXPECT_FALSE(occurrenceOf(activity, rule, 2));
        EXPECT_FALSE(occurrenceOf(activity, rule, LONG_MAX));
    }
    EXPECT_TRUE(occurrenceOf(activity, {Rule::year}, 2));
    EXPECT_FALSE(occurrenceOf(activity, {Rule::year}, 3));
    EXPECT_TRUE(occurrenceOf(activity, {Rule::day, 0, 1000}, 366));
    EXPECT_FALSE(occurrenceOf(startingAt(at(9998, 12, 31, 22), 0.5), {Rule::day, 0, 1000}, 366));
}

namespace
{

/// Whatever is found by looking at each number is among those that are reckoned.
void expectAllReckoned(const Activity& activity, const Rule& rule, OleDate from, OleDate to)
{
    const Numbers numbers = numbersBetween(activity, rule, from, to);
    ASSERT_GE(numbers.first, 1);
    ASSERT_LE(numbers.last, rule.count);
    for (long number = 1; number <= rule.count; ++number)
    {
        const auto found = occurrenceOf(activity, rule, number);
        if (found && touches(found->t0, found->t1, from, to))
        {
            ASSERT_GE(number, numbers.first);
            ASSERT_LE(number, numbers.last);
        }
    }
}

void expectAllReckoned(const Activity& activity, const Rule& rule)
{
    for (const DATE from : {at(2020, 1, 1), at(2026, 1, 31), at(2026, 3, 29, 12), at(2031, 12, 31)})
        for (const double span : {0.01, 1.0, 31.0, 400.0})
            ASSERT_NO_FATAL_FAILURE(expectAllReckoned(activity, rule, {from}, {from + span}));
}

} // namespace

TEST(Occurrences, BetweenTwoDatesAreFoundByTheirNumbers)
{
    for (const long kind : {Rule::day, Rule::week, Rule::month, Rule::year, Rule::easter})
        for (const long interval : {0L, 1L, 4L})
            for (const double length : {0.0, 0.25, 3.0, 40.0, 800.0})
                for (const DATE first :
                     {at(2024, 2, 29, 9), at(2025, 1, 1), at(2026, 1, 31, 23), at(2026, 12, 31)})
                    ASSERT_NO_FATAL_FAILURE(
                        expectAllReckoned(startingAt(first, length), {kind, interval, 400}));
}

TEST(Occurrences, BetweenTwoDatesAreReckonedAndNotCounted)
{
    const Activity activity = startingAt(at(1900, 1, 1, 9));
    const Numbers days =
        numbersBetween(activity, {Rule::day, 0, LONG_MAX}, {at(2500, 1, 1)}, {at(2500, 1, 2)});
    EXPECT_LE(days.last - days.first, 2);
    const Numbers months =
        numbersBetween(activity, {Rule::month, 0, LONG_MAX}, {at(2500, 1, 1)}, {at(2500, 1, 2)});
    EXPECT_LE(months.last - months.first, 1);
    const Numbers years =
        numbersBetween(activity, {Rule::easter, 0, LONG_MAX}, {at(2500, 1, 1)}, {at(2500, 1, 2)});
    EXPECT_LE(years.last - years.first, 3);
}

TEST(Occurrences, BetweenAnyTwoNumbersAreFoundWithoutEnd)
{
    const Activity activity = startingAt(at(2026, 3, 2));
    const Rule rule{Rule::day, 0, LONG_MAX};
    const Numbers all = numbersBetween(activity, rule, {-1e300}, {1e300});
    EXPECT_EQ(1, all.first);
    EXPECT_LE(all.last, static_cast<long>(endOfTime));
    const Numbers none = numbersBetween(activity, rule, {at(2020, 1, 1)}, {at(2021, 1, 1)});
    EXPECT_LT(none.last, none.first);
}

TEST(Occurrences, TouchATimeThatTheyShareOrBeginIn)
{
    EXPECT_TRUE(touches({1}, {3}, {2}, {4}));
    EXPECT_TRUE(touches({1}, {5}, {2}, {4}));
    EXPECT_TRUE(touches({2}, {2}, {2}, {4}));
    EXPECT_FALSE(touches({1}, {2}, {2}, {4}));
    EXPECT_FALSE(touches({4}, {5}, {2}, {4}));
    EXPECT_FALSE(touches({4}, {4}, {2}, {4}));
    EXPECT_FALSE(touches({2}, {2}, {2}, {2}));
}
