// The activities as the database holds them, and the rules for changing them.
#pragma once

#include "demo/datalayer/EventChecks.h"
#include "demo/datalayer/EventRows.h"
#include "demo/datalayer/LinkRows.h"

namespace korvane::store
{

/// An unknown activity, resource or type is an error everywhere. Instance 0 is the activity as a whole.
class EventTable
{
public:
    explicit EventTable(Store& store)
        : connection_(store.connection()), rows_(connection_), links_(connection_), checks_(store, L"Events")
    {
    }

    Activity fetch(long event, long instance) const;
    std::optional<Rule> rule(long event) const;

    /// Whether the id is that of an occurrence that was edited by itself: never, as these are kept with their
    /// series and told by their instance.
    bool isException(long event) const;

    // Each is one transaction, and checks the rights by itself.
    long add(const Activity& activity);
    void update(long event, long instance, const Activity& activity);
    void remove(long event, long instance);

    /// Without a rule the activity happens once, at its own times. Occurrences that were edited or removed by
    /// themselves count again when it gets a rule again.
    void setRule(long event, const std::optional<Rule>& rule);

private:
    Connection& connection_;
    EventRows rows_;
    LinkRows links_;
    EventChecks checks_;
};

} // namespace korvane::store
