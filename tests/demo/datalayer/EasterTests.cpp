#include "demo/datalayer/Easter.h"

#include <gtest/gtest.h>

using namespace korvane::store;
using namespace std::chrono;

namespace
{

struct Date
{
    int year;
    unsigned month;
    unsigned day;
};

constexpr Date known[] = {
    {1990, 4, 15}, {1991, 3, 31}, {1992, 4, 19}, {1993, 4, 11}, {1994, 4, 3},  {1995, 4, 16}, {1996, 4, 7},
    {1997, 3, 30}, {1998, 4, 12}, {1999, 4, 4},  {2000, 4, 23}, {2001, 4, 15}, {2002, 3, 31}, {2003, 4, 20},
    {2004, 4, 11}, {2005, 3, 27}, {2006, 4, 16}, {2007, 4, 8},  {2008, 3, 23}, {2009, 4, 12}, {2010, 4, 4},
    {2011, 4, 24}, {2012, 4, 8},  {2013, 3, 31}, {2014, 4, 20}, {2015, 4, 5},  {2016, 3, 27}, {2017, 4, 16},
    {2018, 4, 1},  {2019, 4, 21}, {2020, 4, 12}, {2021, 4, 4},  {2022, 4, 17}, {2023, 4, 9},  {2024, 3, 31},
    {2025, 4, 20}, {2026, 4, 5},  {2027, 3, 28}, {2028, 4, 16}, {2029, 4, 1},  {2030, 4, 21},
};

// The earliest and the latest dates that there are, and years in which the moon's age is corrected.
constexpr Date rare[] = {
    {1818, 3, 22}, {2285, 3, 22}, {1886, 4, 25}, {1943, 4, 25}, {2038, 4, 25},
    {1954, 4, 18}, {1981, 4, 19}, {2049, 4, 18}, {2076, 4, 19}, {1583, 4, 10},
};

void expectEaster(const Date& date)
{
    EXPECT_EQ((year_month_day(year(date.year), month(date.month), day(date.day))),
              year_month_day(easterSunday(year(date.year))))
        << date.year;
}

} // namespace

TEST(Easter, IsOnTheKnownSundays)
{
    for (const Date& date : known)
        expectEaster(date);
}

TEST(Easter, IsOnTheRareDatesToo)
{
    for (const Date& date : rare)
        expectEaster(date);
}

TEST(Easter, IsASundayFrom22MarchTo25AprilInEveryYear)
{
    for (int number = 1583; number <= 9999; ++number)
    {
        const sys_days easter = easterSunday(year(number));
        ASSERT_EQ(Sunday, weekday(easter)) << number;
        ASSERT_GE(easter, sys_days(year(number) / March / 22));
        ASSERT_LE(easter, sys_days(year(number) / April / 25));
    }
}
