// The link group of an activity: the resources that it is booked for, and those chosen now.
#pragma once

#include "activities/NameSet.h"
#include "framework/DataLayer.h"

namespace korvane
{

/// Rights to the activities of other resources, as the data layer numbers them.
enum class LinkAccess : long
{
    create = 1,
    edit = 3
};

class LinkGroup
{
public:
    /// @param primary the command's own resource, which is part of both sets as often as they are read.
    explicit LinkGroup(const long& primary) noexcept : primary_(primary) {}

    /// Takes the links of a database and hears their events from now on. Only what answers to load() counts: a data
    /// layer may have one collection of links for all, and announce there what somebody else has asked for.
    void connect(const ComPtr<IRoot>& root);

    /// Starts both sets with the primary resource alone.
    void clear();

    /// A single activity has been booked for that resource.
    void book(long nameId);

    /// Reads the link group of an activity: its id and both sets.
    void load(long eventId);

    bool hasAccess(LinkAccess level, long eventId) const;

    bool isLinked() const noexcept { return !id.isEmpty(); }

    // The steps that change the data layer's group, and the id with it.
    void create(long eventId);
    void addNames(const std::vector<long>& names) const;
    void removeNames(const std::vector<long>& names);
    void detach(long nameId) const;
    void updateLinked(long instance, long typeId, OleDate T0, OleDate T1, const Bstr& text);
    void removeOccurrence(long instance) const;
    void removeAll() const;
    void setRecurrence(const ComPtr<IRecurrence>& rule) const;

    Variant id; ///< Empty for an activity that is booked for one resource only, else a Long
    NameSet booked;
    NameSet chosen;

private:
    void addMember(long nameId);

    const long& primary_;
    Subscription<IEventLinks> mLinks;
};

} // namespace korvane
