#include "tests/demo/datalayer/ActivityTest.h"

#include <limits>

using namespace korvane;
using namespace korvane::store;
using namespace korvane::store::test;

namespace
{

class Activities : public ActivityTest
{
};

} // namespace

TEST_F(Activities, AreAddedAndFetched)
{
    const Booking booking{van, 2, at(2026, 3, 2, 9), at(2026, 3, 4, 17, 30), L"Trade fair"};
    const long event = desk->add(booking);
    EXPECT_GT(event, 0);
    EXPECT_EQ(booking, desk->fetch(event));
    EXPECT_EQ(booking, deskOf(L"employee").fetch(event));
}

TEST_F(Activities, KeepTheirTimesToTheSecond)
{
    const double second = 1.0 / 24 / 60 / 60;
    const Booking booking{anna, 0, at(2026, 3, 2, 9) + second, at(2026, 3, 2, 9) + 2 * second, L""};
    EXPECT_EQ(booking, desk->fetch(desk->add(booking)));
}

TEST_F(Activities, NeedNoTextNorTime)
{
    const Booking booking{anna, 0, at(2026, 3, 2, 9), at(2026, 3, 2, 9), L""};
    EXPECT_EQ(booking, desk->fetch(desk->add(booking)));
    const long event = korvane::fetch(desk->events, &IEvents::Add, booking.name, booking.type, booking.t0,
                                      booking.t1, BSTR(nullptr));
    EXPECT_EQ(booking, desk->fetch(event));
}

TEST_F(Activities, KeepTextsInAnyScriptAndLength)
{
    for (const std::wstring& text :
         {std::wstring(L"Überprüfung; 'x' \"y\"\r\n\u4F1A\u8B70"), std::wstring(20000, L'x')})
    {
        Booking booking = meeting();
        booking.text = text;
        EXPECT_EQ(text, desk->fetch(desk->add(booking)).text);
    }
}

TEST_F(Activities, MayBeBookedForABuiltInResource)
{
    EXPECT_EQ(1, desk->fetch(desk->add(meeting(at(2026, 3, 2), 1))).name);
}

TEST_F(Activities, AreRemoved)
{
    const long event = desk->add(meeting());
    const long other = desk->add(meeting());
    desk->remove(event);
    EXPECT_ERROR(desk->fetch(event), Code::unknownEvent, L"Events");
    EXPECT_TRUE(desk->has(other));
}

TEST_F(Activities, HaveOnlyInstance0WithoutARule)
{
    const long event = desk->add(meeting());
    EXPECT_REFUSED(desk->fetch(event, 1), Code::unknownOccurrence, L"Events", L"1");
    EXPECT_REFUSED(desk->update(event, 1, meeting()), Code::unknownOccurrence, L"Events", L"1");
    EXPECT_REFUSED(desk->remove(event, 1), Code::unknownOccurrence, L"Events", L"1");
    EXPECT_REFUSED(desk->fetch(event, -1), Code::unknownOccurrence, L"Events", L"-1");
}

TEST_F(Activities, RefuseWhatIsUnknown)
{
    const long event = desk->add(meeting());
    for (const long id : {0L, -1L, 4711L})
    {
        EXPECT_REFUSED(desk->fetch(id), Code::unknownEvent, L"Events");
        EXPECT_REFUSED(desk->update(id, 0, meeting()), Code::unknownEvent, L"Events");
        EXPECT_REFUSED(desk->remove(id), Code::unknownEvent, L"Events");
        EXPECT_REFUSED(desk->repetition(id), Code::unknownEvent, L"Events");
        EXPECT_REFUSED(desk->repeat(id, Repetition{1}), Code::unknownEvent, L"Events");
        EXPECT_REFUSED(desk->add(meeting(at(2026, 3, 2), id)), Code::unknownName, L"Events");
        EXPECT_REFUSED(desk->update(event, 0, meeting(at(2026, 3, 2), id)), Code::unknownName, L"Events");
    }
    Booking ofNoType = meeting();
    for (ofNoType.type = -1; ofNoType.type <= 3; ofNoType.type += 4)
    {
        EXPECT_REFUSED(desk->add(ofNoType), Code::unknownType, L"Events");
        EXPECT_REFUSED(desk->update(event, 0, ofNoType), Code::unknownType, L"Events");
    }
}

TEST_F(Activities, RefuseToEndBeforeTheyBegin)
{
    Booking backwards = meeting();
    backwards.t1 = backwards.t0 - 1.0 / 24;
    const long event = desk->add(meeting());
    EXPECT_REFUSED(desk->add(backwards), Code::endBeforeBegin, L"Events");
    EXPECT_REFUSED(desk->update(event, 0, backwards), Code::endBeforeBegin, L"Events");
}

TEST_F(Activities, RefuseTimesThatNoCalendarHas)
{
    for (const DATE date : {-1.0, 1.5, 3e6, 1e300, std::numeric_limits<double>::quiet_NaN()})
    {
        EXPECT_REFUSED(desk->add({anna, 1, date, date, L""}), Code::impossibleTime, L"Events");
        EXPECT_REFUSED(desk->add({anna, 1, at(2026, 3, 2), date, L""}), Code::impossibleTime, L"Events");
    }
    EXPECT_TRUE(desk->has(desk->add({anna, 1, at(1900, 1, 1), at(9999, 12, 31, 23, 59), L""})));
}

TEST_F(Activities, AreNoExceptionsByThemselves)
{
    const long event = desk->add(meeting());
    long result = -1;
    EXPECT_EQ(S_OK, desk->events->IsException(event, &result));
    EXPECT_EQ(0, result);
    EXPECT_ERROR(call(desk->events, &IEvents::IsException, 4711L, &result), Code::unknownEvent, L"Events");
}
