// The groups as the database holds them, and the rules for changing them.
#pragma once

#include "demo/datalayer/Rights.h"

#include <optional>
#include <string>
#include <vector>

namespace korvane::store
{

struct Group
{
    long id;
    std::wstring name;
    long flags;
};

/// A write that was committed, and all groups as it left them.
struct GroupChange
{
    long result; ///< what the caller is told
    std::vector<Group> groups;
};

class GroupTable
{
public:
    explicit GroupTable(Store& store) : connection_(store.connection()), rights_(store) {}

    /// All groups in their stored order.
    std::vector<Group> all() const;
    std::optional<Group> find(long id) const;

    /// Whether the account may perform an operation (1 add, 2 delete, 3 change) on a group.
    bool mayPerform(long operation, long id) const;

    // Each checks the rights by itself: callers need not have asked.
    GroupChange add(std::wstring_view name, long flags);
    GroupChange remove(long id);
    GroupChange update(long id, std::wstring_view name, long flags);
    GroupChange setPosition(long id, long position);

private:
    void requireExisting(long id) const;
    bool isLast(long id) const;
    void requireFreeName(std::wstring_view name, long exceptGroup) const;
    GroupChange committed(Transaction& transaction, long result) const;

    Connection& connection_;
    Rights rights_;
};

} // namespace korvane::store
