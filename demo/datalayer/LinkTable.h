// The link groups as the database holds them, and the rules for changing them.
#pragma once

#include "demo/datalayer/EventChecks.h"
#include "demo/datalayer/EventRows.h"
#include "demo/datalayer/LinkRows.h"

namespace korvane::store
{

/// A link group has the id of one of its activities. It may come down to one activity, which callers see as one
/// that is booked for one resource only, and which they can extend again or detach under its id.
class LinkTable
{
public:
    explicit LinkTable(Store& store)
        : store_(store), connection_(store.connection()), rows_(connection_), links_(connection_),
          checks_(store, L"EventLinks")
    {
    }

    struct Group
    {
        std::optional<long> link; ///< empty for an activity that is booked for one resource only
        std::vector<Member> members;
    };

    /// The link group of an activity, or the activity alone.
    Group groupOf(long event) const;

    /// Whether the account may work on activities of others (1 create, 3 edit), or on one activity.
    bool mayPerform(long level, long event) const;

    // Each is one transaction, and checks the rights by itself.

    /// Gives the link id; that of the link group where the activity is in one already.
    long create(long event);

    /// Books further resources; those that it is booked for already stay as they are.
    void addNames(long link, const std::vector<long>& names);

    /// Gives the link id of what is left; empty when nothing is. Resources that it is not booked for do not matter.
    std::optional<long> removeNames(long link, const std::vector<long>& names);

    // One occurrence: activities that have lost it by themselves stay without it.
    void update(long link, long instance, const Activity& activity);
    void removeOccurrence(long link, long instance);

    void removeAll(long link);
    void detach(long link, long name);
    void setRule(long link, const std::optional<Rule>& rule);

private:
    std::vector<Member> requireMembers(long link) const;
    std::vector<Member> requireEditable(long link, long instance) const;

    Store& store_;
    Connection& connection_;
    EventRows rows_;
    LinkRows links_;
    EventChecks checks_;
};

} // namespace korvane::store
