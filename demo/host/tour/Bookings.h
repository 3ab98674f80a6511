// What is booked, as it stands in the database: read through a root of its own, past everything that the host holds.
#pragma once

#include "demo/host/OpenDatabase.h"
#include "demo/host/schedule/Schedule.h"

namespace korvane::host
{

struct Booking
{
    BarId id;
    std::wstring resource;
    std::wstring type;
    OleDate start;
    OleDate end;
    std::wstring text;
    long link; ///< 0 for an activity that is booked for one resource only
};

/// As the tour prints it, without what differs from one tour to another: text, resource, start and end, type.
std::wstring shown(const Booking& booking);

struct BookedRule
{
    long kind;
    long interval;
    long count;
    friend bool operator==(const BookedRule&, const BookedRule&) = default;
};

class Bookings
{
public:
    /// To be used on the thread that makes it.
    explicit Bookings(const OpenDatabase& original);

    const ComPtr<IRoot>& root() const noexcept { return database_.root(); }

    /// Everything from a year ago to a year ahead, by resource and start.
    std::vector<Booking> all() const;
    /// Empty for an activity that does not repeat.
    std::optional<BookedRule> ruleOf(long event) const;

private:
    long linkOf(long event) const;
    std::map<long, std::wstring> names() const;
    std::map<long, std::wstring> types() const;

    OpenDatabase database_;
    ComPtr<IEvents> events_;
};

} // namespace korvane::host
