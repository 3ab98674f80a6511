// The links between activities that are booked together. Nothing is checked here.
#pragma once

#include "demo/datalayer/Sqlite.h"

#include <optional>
#include <vector>

namespace korvane::store
{

/// An activity of a link group.
struct Member
{
    long event;
    long name;
};

class LinkRows
{
public:
    explicit LinkRows(const Connection& connection) : connection_(connection) {}

    std::optional<long> linkOf(long event) const;

    /// The activities of a link group in the order of their ids.
    std::vector<Member> members(long link) const;

    /// Starts a link group with an activity, whose id becomes the link id.
    void begin(long event);

    /// Takes an activity out of its link group, if it is in one. When the group had the activity's id, it gets
    /// that of the first one left.
    void leave(long event);

    /// Adds a copy of an activity for another resource to the link group, with its rule, and with its
    /// occurrences that were edited or removed by themselves.
    void copy(long event, long name);

private:
    const Connection& connection_;
};

} // namespace korvane::store
