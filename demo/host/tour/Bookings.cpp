#include "demo/host/tour/Bookings.h"

#include "demo/host/schedule/AnnouncedOccurrence.h"
#include "framework/com/EventConnection.h"

#include <algorithm>
#include <tuple>

namespace korvane::host
{

namespace
{

constexpr long everything = 0;
constexpr long oneYear = 365 * minutesPerDay;

/// What a collection announces while it loads: texts by id.
std::map<long, std::wstring> announced(IUnknown* collection, REFIID events, const std::function<void()>& load)
{
    std::map<long, std::wstring> texts;
    EventConnection connection;
    connection.connect(collection, events, {.add = [&](const EventArguments& item) {
                           texts.insert_or_assign(item.number(0), std::wstring(item.text(1).view()));
                       }});
    connection.during(load);
    return texts;
}

} // namespace

std::wstring shown(const Booking& booking)
{
    return booking.text + L" | " + booking.resource + L" | " + shownDay(booking.start, L"yyyy-MM-dd") + L" " +
           shownTime(booking.start) + L" - " + shownTime(booking.end) + L" | " + booking.type;
}

Bookings::Bookings(const OpenDatabase& original) : database_(original.path(), original.account())
{
    call(database_.root(), &IRoot::get_Events, events_.put());
}

std::vector<Booking> Bookings::all() const
{
    std::vector<Occurrence> found;
    {
        EventConnection announcements;
        announcements.connect(
            events_.get(), __uuidof(IEventsEvents),
            {.add = [&](const EventArguments& occurrence) { found.push_back(occurrenceIn(occurrence)); }});
        announcements.during([&] {
            call(events_.as<ISchedule>(), &ISchedule::Load, later(now(), -oneYear).days,
                 later(now(), oneYear).days);
        });
    }
    auto resources = names();
    auto kinds = types();
    std::vector<Booking> bookings;
    bookings.reserve(found.size());
    for (const Occurrence& each : found)
        bookings.push_back({each.id, resources[each.resource], kinds[each.type], each.start, each.end,
                            each.text, linkOf(each.id.event)});
    std::sort(bookings.begin(), bookings.end(), [](const Booking& left, const Booking& right) {
        return std::tuple(left.resource, left.start.days, left.id) <
               std::tuple(right.resource, right.start.days, right.id);
    });
    return bookings;
}

std::optional<BookedRule> Bookings::ruleOf(long event) const
{
    ComPtr<IRecurrence> rule;
    call(events_, &IEvents::GetRecurrence, event, rule.put());
    if (!rule)
        return std::nullopt;
    BookedRule result{};
    call(rule, &IRecurrence::get_Kind, &result.kind);
    call(rule, &IRecurrence::get_Interval, &result.interval);
    call(rule, &IRecurrence::get_Count, &result.count);
    return result;
}

long Bookings::linkOf(long event) const
{
    ComPtr<IEventLinks> links;
    call(database_.root(), &IRoot::get_EventLinks, links.put());
    Variant link;
    call(links, &IEventLinks::Load, event, link.put());
    return link.isEmpty() ? 0 : toLong(link.get());
}

std::map<long, std::wstring> Bookings::names() const
{
    ComPtr<INames> names;
    call(database_.root(), &IRoot::get_Names, names.put());
    return announced(names.get(), __uuidof(INamesEvents), [&] {
        VARIANT_BOOL ignored = VARIANT_FALSE;
        call(names, &INames::Load, everything, &ignored);
    });
}

std::map<long, std::wstring> Bookings::types() const
{
    ComPtr<ITypes> types;
    call(database_.root(), &IRoot::get_Types, types.put());
    return announced(types.get(), __uuidof(ITypesEvents), [&] {
        VARIANT_BOOL ignored = VARIANT_FALSE;
        call(types, &ITypes::Load, everything, &ignored);
    });
}

} // namespace korvane::host
