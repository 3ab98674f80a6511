// What the account that works in a database may do: what its role permits.
#pragma once

#include "demo/datalayer/Store.h"

namespace korvane::store
{

/// Everything is read anew each time, so that a change of roles takes effect at once.
class Rights
{
public:
    explicit Rights(Store& store) : store_(store) {}

    /// Rights to the groups themselves.
    struct Group
    {
        bool add = false;
        bool remove = false;
        bool change = false;
    };
    /// Those of the role to all groups, and those to this one.
    Group toGroup(long group) const;

    /// Whether the resources and activity types of a group, and their order, are the account's to decide on:
    /// an administrator's everywhere, a manager's in the groups that his own resource is in. Nobody's in
    /// built-in groups.
    bool coversGroup(long group) const;
    bool coversAnyGroup() const;

    /// A resource is covered with a group that it is in; one that is in no group, with any.
    bool coversName(long name) const;
    /// An activity type is covered with all groups that it is in: a change shows in all of them.
    bool coversType(long type) const;
    bool isRole(long role) const;
    /// Who gives or takes a role must have no less himself.
    bool coversRole(long role) const;

    /// Whether the account may work on a resource itself: one that is covered, and its own.
    bool mayEditName(long name) const;
    bool mayEditAnyName() const;

    /// Rights to activities: those that may be edited are everybody's for some roles, and for the others those
    /// of resources that they may edit.
    bool mayBookForAll() const;
    bool mayEditForAll() const;
    bool mayBook(long name) const { return mayBookForAll() || mayEditName(name); }
    bool mayEditActivities(long name) const { return mayEditForAll() || mayEditName(name); }

    /// Whether the account may do more than read.
    bool mayWrite() const { return reach() > 0; }
    bool isAdministrator() const { return reach() == everything; }

private:
    // How far a role reaches. The numbers are those of the table.
    static constexpr long ownName = 1;
    static constexpr long ownGroups = 2;
    static constexpr long everything = 3;

    long reach() const;
    template <class... Parameters> bool holds(const char* query, const Parameters&... parameters) const
    {
        return Statement(store_.connection(), query, store_.account(), parameters...).next();
    }

    Store& store_;
};

} // namespace korvane::store
