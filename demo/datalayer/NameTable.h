// The resources as the database holds them, and the rules for changing them.
#pragma once

#include "demo/datalayer/GroupMembers.h"

#include <string>
#include <tuple>
#include <vector>

namespace korvane::store
{

/// A resource as the member of a group.
struct Name
{
    long id;
    std::wstring text;
    long group;
    long color; ///< RGB; below 1 where none is chosen

    auto announced() const { return std::tie(id, text, group, color); }
};

/// What a resource has besides.
struct NameDetails
{
    std::wstring text;
    long color;
    long loginId; ///< 0 where the resource has no login
    std::wstring login;
    long flags;
    long role; ///< that of the login; without one, the resource's own
    std::wstring mailbox;
};

/// The id 0 is that of no resource, which has no values. Rights to it are those to resources in general.
class NameTable final : public GroupMembers
{
public:
    explicit NameTable(Store& store);

    /// The members of a group in their stored order; for group 0 those of every group, group by group. Those that
    /// are in no group stand in the built-in one that has its name from them.
    std::vector<Name> list(long group) const;
    NameDetails fetch(long id) const;
    long role(long id) const;
    std::wstring mailbox(long id) const;

    bool mayPerform(long operation, long id) const;
    void addToGroup(long id, long group, long position);
    void setSyncLogin(long id, std::wstring_view login);
    void setRole(long id, long role);

private:
    bool permits(long operation, long id) const override;
    void requireMayJoin(long id, long group) const override;
    void requireFreeText(std::wstring_view, long) const override {} // people may have the same name
    void prepareGroup(long) override {}
};

} // namespace korvane::store
