#include "tests/demo/datalayer/Desk.h"

#include <algorithm>
#include <string>

namespace korvane::store::test
{

namespace
{

Link linkIn(const Variant& value)
{
    if (value.isEmpty())
        return std::nullopt;
    EXPECT_EQ(VT_I4, value.type());
    return value.get().lVal;
}

/// What was announced after a clearing, without "OnAdd".
Lines added(Lines announced)
{
    EXPECT_FALSE(announced.empty());
    EXPECT_EQ(L"OnClear", announced.front());
    announced.erase(announced.begin());
    for (std::wstring& line : announced)
        line.erase(0, 6);
    return announced;
}

VARIANT valueOf(const Link& link)
{
    return link ? Variant(*link).detach() : VARIANT{};
}

} // namespace

DATE at(int year, int month, int day, int hour, int minute)
{
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    time.wHour = static_cast<WORD>(hour);
    time.wMinute = static_cast<WORD>(minute);
    DATE date = 0;
    EXPECT_TRUE(SystemTimeToVariantTime(&time, &date));
    return date;
}

void PrintTo(const Booking& booking, std::ostream* stream)
{
    const std::wstring text = std::to_wstring(booking.name) + L", " + std::to_wstring(booking.type) + L", " +
                              written(booking.t0) + L", " + written(booking.t1) + L", " + booking.text;
    *stream << testing::PrintToString(text);
}

Desk::Desk(ComPtr<IRoot> opened)
    : root(std::move(opened)), events(korvane::fetch(root, &IRoot::get_Events)),
      links(korvane::fetch(root, &IRoot::get_EventLinks))
{
}

long Desk::add(const Booking& booking) const
{
    return korvane::fetch(events, &IEvents::Add, booking.name, booking.type, booking.t0, booking.t1,
                          Bstr(booking.text).get());
}

void Desk::update(long event, long instance, const Booking& booking) const
{
    call(events, &IEvents::Update, event, instance, booking.name, booking.type, booking.t0, booking.t1,
         Bstr(booking.text).get());
}

void Desk::remove(long event, long instance) const
{
    call(events, &IEvents::Remove, event, instance);
}

Booking Desk::fetch(long event, long instance) const
{
    Booking result{};
    Bstr text(L"before");
    call(events, &IEvents::Fetch, event, instance, &result.name, &result.type, &result.t0, &result.t1,
         text.inOut());
    result.text = text.c_str();
    return result;
}

bool Desk::has(long event, long instance) const
{
    return !attempt([&] { fetch(event, instance); });
}

ComPtr<IRecurrence> Desk::rule(const std::optional<Repetition>& repetition) const
{
    if (!repetition)
        return nullptr;
    auto result = korvane::fetch(root, &IRoot::NewRecurrence, repetition->kind);
    result->put_Interval(repetition->interval);
    result->put_Count(repetition->count);
    result->put_Anchor(repetition->anchor);
    return result;
}

void Desk::repeat(long event, const std::optional<Repetition>& repetition) const
{
    call(events, &IEvents::SetRecurrence, event, rule(repetition).get());
}

std::optional<Repetition> Desk::repetition(long event) const
{
    const auto stored = korvane::fetch(events, &IEvents::GetRecurrence, event);
    if (!stored)
        return std::nullopt;
    return Repetition{
        korvane::fetch(stored, &IRecurrence::get_Kind), korvane::fetch(stored, &IRecurrence::get_Interval),
        korvane::fetch(stored, &IRecurrence::get_Count), korvane::fetch(stored, &IRecurrence::get_Anchor)};
}

Link Desk::create(long event) const
{
    return linkIn(korvane::fetch(links, &IEventLinks::Create, event));
}

Link Desk::linkOf(long event) const
{
    return linkIn(korvane::fetch(links, &IEventLinks::Load, event));
}

Lines Desk::members(long event) const
{
    const Listener::Subscription listener(links, DIID_IEventLinksEvents);
    linkOf(event);
    return added(listener->events());
}

void Desk::addNames(Link link, const std::vector<long>& names) const
{
    call(links, &IEventLinks::AddNames, valueOf(link), arrayOf(names).get());
}

Link Desk::removeNames(Link link, const std::vector<long>& names) const
{
    return linkIn(korvane::fetch(links, &IEventLinks::RemoveNames, valueOf(link), arrayOf(names).get()));
}

void Desk::removeOccurrence(Link link, long instance) const
{
    call(links, &IEventLinks::RemoveOccurrence, valueOf(link), instance);
}

void Desk::removeAll(Link link) const
{
    call(links, &IEventLinks::RemoveAll, valueOf(link));
}

Link Desk::updateLinked(Link link, long instance, const Booking& booking) const
{
    return linkIn(korvane::fetch(links, &IEventLinks::UpdateLinked, valueOf(link), instance, booking.type,
                                 booking.t0, booking.t1, Bstr(booking.text).get()));
}

void Desk::detach(Link link, long name) const
{
    call(links, &IEventLinks::Detach, valueOf(link), name);
}

void Desk::repeatLinked(Link link, const std::optional<Repetition>& repetition) const
{
    call(links, &IEventLinks::SetRecurrence, valueOf(link), rule(repetition).get());
}

bool Desk::hasAccess(long level, long event) const
{
    return korvane::fetch(links, &IEventLinks::HasAccess, level, event);
}

Lines Desk::schedule(DATE from, DATE to) const
{
    const Listener::Subscription listener(events, DIID_IEventsEvents);
    call(events.as<ISchedule>(), &ISchedule::Load, from, to);
    return added(listener->events());
}

Lines Desk::starts(DATE from, DATE to) const
{
    Lines result;
    for (const std::wstring& line : schedule(from, to))
    {
        Lines fields;
        for (std::size_t begin = 0, end = 0; end != std::wstring::npos; begin = end + 2)
        {
            end = line.find(L", ", begin);
            fields.push_back(line.substr(begin, end - begin));
        }
        result.push_back(fields[1] + L' ' + fields[4]);
    }
    return result;
}

Variant arrayOf(const std::vector<long>& numbers)
{
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(numbers.size()));
    Variant result;
    result.put()->vt = VT_ARRAY | VT_VARIANT;
    const_cast<VARIANT&>(result.get()).parray = array;
    for (LONG index = 0; index < static_cast<LONG>(numbers.size()); ++index)
    {
        Variant number(numbers[static_cast<std::size_t>(index)]);
        require(SafeArrayPutElement(array, &index, &const_cast<VARIANT&>(number.get())));
    }
    return result;
}

} // namespace korvane::store::test
