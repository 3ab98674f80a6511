// The collections that activities are booked with, as tests call them.
#pragma once

#include "tests/demo/datalayer/DataLayer.h"
#include "tests/demo/datalayer/Listener.h"

#include "framework/com/Variant.h"

namespace korvane::store::test
{

/// A date in local time.
DATE at(int year, int month, int day, int hour = 0, int minute = 0);

struct Booking
{
    long name;
    long type;
    DATE t0;
    DATE t1;
    std::wstring text;
    friend bool operator==(const Booking&, const Booking&) = default;
};

void PrintTo(const Booking& booking, std::ostream* stream);

struct Repetition
{
    long kind = 0;
    long interval = 0;
    long count = 10;
    long anchor = 0;
    friend bool operator==(const Repetition&, const Repetition&) = default;
};

/// A link id; empty for an activity that is booked for one resource only.
using Link = std::optional<long>;

using Lines = std::vector<std::wstring>;

/// Everything one account works with in the test's database.
struct Desk
{
    explicit Desk(ComPtr<IRoot> opened);

    long add(const Booking& booking) const;
    void update(long event, long instance, const Booking& booking) const;
    void remove(long event, long instance = 0) const;
    Booking fetch(long event, long instance = 0) const;
    bool has(long event, long instance = 0) const;

    /// A rule object with these values; empty for none.
    ComPtr<IRecurrence> rule(const std::optional<Repetition>& repetition) const;
    void repeat(long event, const std::optional<Repetition>& repetition) const;
    std::optional<Repetition> repetition(long event) const;

    Link create(long event) const;
    Link linkOf(long event) const;
    Lines members(long event) const; ///< "event, name"
    void addNames(Link link, const std::vector<long>& names) const;
    Link removeNames(Link link, const std::vector<long>& names) const;
    void removeOccurrence(Link link, long instance) const;
    void removeAll(Link link) const;
    Link updateLinked(Link link, long instance, const Booking& booking) const;
    void detach(Link link, long name) const;
    void repeatLinked(Link link, const std::optional<Repetition>& repetition) const;
    bool hasAccess(long level, long event) const;

    /// What is booked between two dates, as it is announced without "OnAdd": event, instance, name, type, times
    /// and text.
    Lines schedule(DATE from, DATE to) const;

    /// Where the occurrences of the one activity that there is begin: "2 2026-03-09 09:00".
    Lines starts(DATE from = at(1990, 1, 1), DATE to = at(2200, 1, 1)) const;

    ComPtr<IRoot> root;
    ComPtr<IEvents> events;
    ComPtr<IEventLinks> links;
};

/// An array of VARIANTs that hold Longs, in a VARIANT.
Variant arrayOf(const std::vector<long>& numbers);

} // namespace korvane::store::test
