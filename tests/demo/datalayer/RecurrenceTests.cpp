#include "tests/demo/datalayer/ActivityTest.h"

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Recurrences : public ActivityTest
{
protected:
    long event = desk->add(meeting());
};

} // namespace

TEST_F(Recurrences, BeginWithDefaults)
{
    for (long kind = 1; kind <= 5; ++kind)
    {
        const auto rule = korvane::fetch(desk->root, &IRoot::NewRecurrence, kind);
        EXPECT_EQ(kind, korvane::fetch(rule, &IRecurrence::get_Kind));
        EXPECT_EQ(0, korvane::fetch(rule, &IRecurrence::get_Interval));
        EXPECT_EQ(10, korvane::fetch(rule, &IRecurrence::get_Count));
        EXPECT_EQ(0, korvane::fetch(rule, &IRecurrence::get_Anchor));
    }
}

TEST_F(Recurrences, HaveNoOtherKinds)
{
    for (const long kind : {0L, 6L, -1L})
    {
        auto* rule = reinterpret_cast<IRecurrence*>(0xdeadbeef);
        EXPECT_ERROR(call(desk->root, &IRoot::NewRecurrence, kind, &rule), Code::unknownRecurrence, L"Root",
                     std::to_wstring(kind));
        EXPECT_EQ(nullptr, rule);
    }
}

TEST_F(Recurrences, AreStoredWithAllTheirValues)
{
    EXPECT_EQ(std::nullopt, desk->repetition(event));
    for (const Repetition& repetition :
         {Repetition{1, 0, 1}, Repetition{5, 3, 2147483647, -7}, Repetition{3, 1, 12, 4711}})
    {
        desk->repeat(event, repetition);
        EXPECT_EQ(repetition, desk->repetition(event));
        EXPECT_EQ(repetition, deskOf(L"").repetition(event));
    }
}

TEST_F(Recurrences, AreTakenAway)
{
    desk->repeat(event, Repetition{2});
    desk->repeat(event, std::nullopt);
    EXPECT_EQ(std::nullopt, desk->repetition(event));
    EXPECT_EQ(Lines{L"0 2026-03-02 09:00"}, desk->starts());
    desk->repeat(event, std::nullopt);
    EXPECT_EQ(meeting(), desk->fetch(event));
}

TEST_F(Recurrences, MayBeStoredTwice)
{
    desk->repeat(event, Repetition{2, 1, 3});
    const std::wstring once = content();
    desk->repeat(event, Repetition{2, 1, 3});
    EXPECT_EQ(once, content());
}

TEST_F(Recurrences, OutliveTheRoot)
{
    desk->repeat(event, Repetition{4});
    const auto held = korvane::fetch(desk->events, &IEvents::GetRecurrence, event);
    desk.reset();
    EXPECT_EQ(4, korvane::fetch(held, &IRecurrence::get_Kind));
}

TEST_F(Recurrences, RefuseImpossibleValuesWhenTheyAreStored)
{
    const long linked = *desk->create(desk->add(meeting()));
    const auto refused = [&](const Repetition& repetition, Code code) {
        EXPECT_REFUSED(desk->repeat(event, repetition), code, L"Events");
        EXPECT_REFUSED(desk->repeatLinked(linked, repetition), code, L"EventLinks");
    };
    refused({1, -1}, Code::intervalTooSmall);
    refused({1, 0, 0}, Code::countTooSmall);
    refused({1, 0, -5}, Code::countTooSmall);
}

TEST_F(Recurrences, MakeTheOccurrencesOfAnActivity)
{
    desk->repeat(event, Repetition{2, 1, 3});
    EXPECT_EQ((Lines{L"1 2026-03-02 09:00", L"2 2026-03-16 09:00", L"3 2026-03-30 09:00"}), desk->starts());
    EXPECT_EQ(meeting(at(2026, 3, 30, 9)), desk->fetch(event, 3));
    EXPECT_EQ(meeting(), desk->fetch(event, 1));
    EXPECT_ERROR(desk->fetch(event, 4), Code::unknownOccurrence, L"Events", L"4");
}

TEST_F(Recurrences, HaveNoOccurrenceWhereThereIsNoSuchDay)
{
    desk->update(event, 0, meeting(at(2026, 1, 31)));
    desk->repeat(event, Repetition{3, 0, 3});
    EXPECT_EQ((Lines{L"1 2026-01-31", L"3 2026-03-31"}), desk->starts());
    EXPECT_FALSE(desk->has(event, 2));
    EXPECT_REFUSED(desk->update(event, 2, meeting()), Code::unknownOccurrence, L"Events", L"2");
}

TEST_F(Recurrences, MoveWithTheActivity)
{
    desk->repeat(event, Repetition{1, 0, 2});
    desk->update(event, 0, meeting(at(2026, 4, 30, 14)));
    EXPECT_EQ((Lines{L"1 2026-04-30 14:00", L"2 2026-05-01 14:00"}), desk->starts());
}
