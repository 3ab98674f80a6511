// The activity types as the database holds them, and the rules for changing them.
#pragma once

#include "demo/datalayer/GroupMembers.h"

#include <string>
#include <tuple>
#include <vector>

namespace korvane::store
{

struct Type
{
    long id;
    std::wstring text;
    long color; ///< RGB; below 1 where none is chosen

    auto announced() const { return std::tie(id, text, color); }
};

/// What an activity type has besides.
struct TypeDetails
{
    std::wstring text;
    long color;
    long flags;
    long groups; ///< in how many it stands
};

class TypeTable final : public GroupMembers
{
public:
    explicit TypeTable(Store& store);

    /// The types of a group in their stored order; all types for group 0, and for a group that has none of its own.
    /// The built-in type is in every group, and comes first where it was not given another place.
    std::vector<Type> list(long group) const;
    TypeDetails fetch(long id) const;

private:
    bool permits(long operation, long id) const override;
    void requireMayJoin(long, long) const override {}
    void requireFreeText(std::wstring_view text, long exceptItem) const override;
    void prepareGroup(long group) override;
};

} // namespace korvane::store
