// What the role of an account permits.
#pragma once

#include "demo/datalayer/Sqlite.h"

namespace korvane::store
{

/// Rights to the groups as a whole, or to one group.
struct Rights
{
    bool add = false;
    bool remove = false;
    bool change = false;
};

/// The rights of an account to a group: those of its role to all groups, and those to this one. They are read
/// anew each time, so that a change of roles takes effect at once.
Rights rightsTo(long group, long account, const Connection& connection);

/// Rights to the activities of resources other than the account's own.
struct BookingRights
{
    bool create = false;
    bool edit = false;
};

/// The rights of an account to the activities of others, read anew each time.
BookingRights bookingRights(long account, const Connection& connection);

/// Whether a resource is the one that carries the account's login. Everybody may work on its activities.
bool isOwnName(long name, long account, const Connection& connection);

} // namespace korvane::store
