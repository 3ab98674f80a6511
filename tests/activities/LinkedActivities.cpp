#include "tests/activities/LinkedActivities.h"

#include <algorithm>

namespace korvane::test
{

namespace
{

std::string shownValues(long nameId, const ActivityValues& values)
{
    return shown(nameId) + ':' + shown(values.typeId) + ' ' + shown(static_cast<long>(values.t0 * 24)) + '-' +
           shown(static_cast<long>(values.t1 * 24)) + test::quoted(values.text);
}

std::string shownBooking(const Booking& booking)
{
    std::string result = shownValues(booking.nameId, booking.values) + ' ' + shownRule(booking.rule);
    for (const auto& [instance, occurrence] : booking.edited)
        result += " #" + shown(instance) + '=' + shownValues(occurrence.nameId, occurrence.values);
    for (const long instance : booking.removed)
        result += " -" + shown(instance);
    return result;
}

} // namespace

void Booking::write(long instance, long name, const ActivityValues& written)
{
    if (instance != 0)
        edited.insert_or_assign(instance, Occurrence{name, written});
    else
    {
        nameId = name;
        values = written;
    }
}

void Booking::remove(long instance)
{
    edited.erase(instance);
    removed.insert(instance);
}

std::string shownGroup(bool linked, const std::vector<const Booking*>& members)
{
    std::vector<std::string> bookings;
    bookings.reserve(members.size());
    for (const Booking* booking : members)
        bookings.push_back(shownBooking(*booking));
    std::sort(bookings.begin(), bookings.end());
    std::string result = linked ? "linked" : "single";
    for (const std::string& booking : bookings)
        result += " [" + booking + ']';
    return result;
}

} // namespace korvane::test
