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
        ComPtr<IRecurrence> rule;
        call(desk->root, &IRoot::NewRecurrence, kind, rule.put());
        long value = -1;
        EXPECT_EQ(S_OK, rule->get_Kind(&value));
        EXPECT_EQ(kind, value);
        EXPECT_EQ(S_OK, rule->get_Interval(&value));
        EXPECT_EQ(0, value);
        EXPECT_EQ(S_OK, rule->get_Count(&value));
        EXPECT_EQ(10, value);
        EXPECT_EQ(S_OK, rule->get_Anchor(&value));
        EXPECT_EQ(0, value);
    }
}

TEST_F(Recurrences, HaveNoOtherKinds)
{
    for (const long kind : {0L, 6L, -1L})
    {
        auto* rule = reinterpret_cast<IRecurrence*>(0xdeadbeef);
        EXPECT_ERROR(call(desk->root, &IRoot::NewRecurrence, kind, &rule), Code::unknownRecurrence,
                     L"KorvaneData.Root",
                     L"There is no kind of recurrence with the number " + std::to_wstring(kind) + L".");
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
    ComPtr<IRecurrence> held;
    call(desk->events, &IEvents::GetRecurrence, event, held.put());
    desk.reset();
    long kind = 0;
    EXPECT_EQ(S_OK, held->get_Kind(&kind));
    EXPECT_EQ(4, kind);
}

TEST_F(Recurrences, RefuseImpossibleValuesWhenTheyAreStored)
{
    const long linked = *desk->create(desk->add(meeting()));
    const auto refused = [&](const Repetition& repetition, Code code, const wchar_t* message) {
        EXPECT_REFUSED(desk->repeat(event, repetition), code, L"Events", message);
        EXPECT_REFUSED(desk->repeatLinked(linked, repetition), code, L"EventLinks", message);
    };
    refused({1, -1}, Code::intervalTooSmall, L"The interval of a recurrence must not be less than 0.");
    refused({1, 0, 0}, Code::countTooSmall, L"A recurrence needs at least one occurrence.");
    refused({1, 0, -5}, Code::countTooSmall, L"A recurrence needs at least one occurrence.");
}

TEST_F(Recurrences, RefuseMissingPlacesForResults)
{
    const auto rule = desk->rule(Repetition{1});
    EXPECT_EQ(E_POINTER, rule->get_Kind(nullptr));
    EXPECT_EQ(E_POINTER, rule->get_Interval(nullptr));
    EXPECT_EQ(E_POINTER, rule->get_Count(nullptr));
    EXPECT_EQ(E_POINTER, rule->get_Anchor(nullptr));
    EXPECT_EQ(E_POINTER, desk->root->NewRecurrence(1, nullptr));
}

TEST_F(Recurrences, MakeTheOccurrencesOfAnActivity)
{
    desk->repeat(event, Repetition{2, 1, 3});
    EXPECT_EQ((Lines{L"1 2026-03-02 09:00", L"2 2026-03-16 09:00", L"3 2026-03-30 09:00"}), desk->starts());
    EXPECT_EQ(meeting(at(2026, 3, 30, 9)), desk->fetch(event, 3));
    EXPECT_EQ(meeting(), desk->fetch(event, 1));
    EXPECT_ERROR(desk->fetch(event, 4), Code::unknownOccurrence, L"KorvaneData.Events",
                 L"The activity has no occurrence 4. Another user may have deleted it.");
}

TEST_F(Recurrences, HaveNoOccurrenceWhereThereIsNoSuchDay)
{
    desk->update(event, 0, meeting(at(2026, 1, 31)));
    desk->repeat(event, Repetition{3, 0, 3});
    EXPECT_EQ((Lines{L"1 2026-01-31", L"3 2026-03-31"}), desk->starts());
    EXPECT_FALSE(desk->has(event, 2));
    EXPECT_REFUSED(desk->update(event, 2, meeting()), Code::unknownOccurrence, L"Events",
                   L"The activity has no occurrence 2. Another user may have deleted it.");
}

TEST_F(Recurrences, MoveWithTheActivity)
{
    desk->repeat(event, Repetition{1, 0, 2});
    desk->update(event, 0, meeting(at(2026, 4, 30, 14)));
    EXPECT_EQ((Lines{L"1 2026-04-30 14:00", L"2 2026-05-01 14:00"}), desk->starts());
}
