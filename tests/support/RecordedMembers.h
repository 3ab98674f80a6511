// What resources and activity types of the recording data layer have in common: a row for each group that one is in, or
// one row for none.
#pragma once

#include "framework/com/ConnectionPoint.h"
#include "tests/support/EmptyData.h"
#include "tests/support/RecordingData.h"

#include <algorithm>

namespace korvane::test
{

template <class Row> Row* find(std::vector<Row>& rows, long id)
{
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.id == id; });
    return found == rows.end() ? nullptr : &*found;
}

inline bool isMember(const Name& name, long group)
{
    return name.group == group || (group == 0 && name.group != inNoGroup);
}

inline bool isMember(const Type& type, long group)
{
    return type.group == group || type.group == 0 || group == 0;
}

/// The members of a group in their order.
template <class Row> std::vector<Row> membersOf(const std::vector<Row>& rows, long group)
{
    std::vector<Row> result;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(result),
                 [&](const Row& row) { return isMember(row, group); });
    if (group != 0)
        std::stable_sort(result.begin(), result.end(),
                         [](const Row& left, const Row& right) { return left.position < right.position; });
    return result;
}

/// In general, without an item, everything may be done.
template <class Row> VARIANT_BOOL mayPerform(std::vector<Row>& rows, long operation, long id)
{
    const Row* const row = find(rows, id);
    return id == 0 || (row && !row->refused.contains(operation)) ? VARIANT_TRUE : VARIANT_FALSE;
}

template <class Row> void addToGroup(std::vector<Row>& rows, long id, long group, long position)
{
    const Row* const known = find(rows, id);
    if (!known)
        return;
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) {
        return row.id == id && (row.group == inNoGroup || isMember(row, group));
    });
    if (found != rows.end() && found->group != inNoGroup)
    {
        found->position = position != 0 ? position : found->position;
        return;
    }
    Row added = *known;
    added.group = group;
    added.position = position;
    for (const Row& row : membersOf(rows, group)) // behind all others
        added.position = position != 0 ? position : std::max(added.position, row.position);
    if (found != rows.end())
        rows.erase(found);
    rows.push_back(std::move(added));
}

template <class Row> void removeFromGroup(std::vector<Row>& rows, long id, long group)
{
    const auto removed = std::find_if(rows.begin(), rows.end(),
                                      [&](const Row& row) { return row.id == id && isMember(row, group); });
    if (removed == rows.end())
        return;
    removed->group = inNoGroup;
    if (std::count_if(rows.begin(), rows.end(), [&](const Row& row) { return row.id == id; }) > 1)
        rows.erase(removed);
}

/// @tparam Empty their interface, answered for by nothing. @tparam Events what they raise.
template <class Row, class Empty, class Events>
class RecordedMembers : public Empty, public EventSource<Events>
{
public:
    using EventSource<Events>::raise;
    using EventSource<Events>::hasSubscribers;

    virtual void announce(const Row& row) = 0;

    STDMETHODIMP Load(long groupId, VARIANT_BOOL* result) override
    {
        const auto load = [&] {
            announceMembers(groupId);
            *result = VARIANT_TRUE;
        };
        return data_.answer(name_ + ".Load", load, groupId);
    }
    STDMETHODIMP HasAccess(long operation, long id, VARIANT_BOOL* result) override
    {
        const auto tell = [&] { *result = mayPerform(rows_, operation, id); };
        return data_.answer(name_ + ".HasAccess", tell, operation, id);
    }
    STDMETHODIMP Add(BSTR text, long color, long flags, long* newId) override
    {
        const auto add = [&] {
            Row& row = rows_.emplace_back();
            row.id = *newId = data_.nextId++;
            row.text = view(text);
            row.group = inNoGroup;
            row.color = color;
            row.flags = flags;
            changed();
        };
        return data_.answer(name_ + ".Add", add, text, color, flags);
    }
    STDMETHODIMP Update(long id, BSTR text, long color, long flags, long* updatedId) override
    {
        const auto write = [&] {
            for (Row& row : rows_)
                if (row.id == id)
                {
                    row.text = view(text);
                    row.color = color;
                    row.flags = flags;
                }
            *updatedId = changedId(id);
            changed();
        };
        return data_.answer(name_ + ".Update", write, id, text, color, flags);
    }
    STDMETHODIMP AddToGroup(long id, long groupId, long position, long* memberPosition) override
    {
        const auto add = [&] {
            addToGroup(rows_, id, groupId, position);
            *memberPosition = position;
            changed();
        };
        return data_.answer(name_ + ".AddToGroup", add, id, groupId, position);
    }
    STDMETHODIMP RemoveFromGroup(long id, long groupId, long* removedId) override
    {
        const auto remove = [&] {
            removeFromGroup(rows_, id, groupId);
            *removedId = changedId(id);
            changed();
        };
        return data_.answer(name_ + ".RemoveFromGroup", remove, id, groupId);
    }

protected:
    /// @param name of the collection, in the records of calls.
    RecordedMembers(RecordingData& data, std::vector<Row>& rows, const char* name)
        : data_(data), rows_(rows), name_(name)
    {
    }
    ~RecordedMembers() = default;

    void changed()
    {
        if (data_.announcesWrites)
            announceMembers(0);
    }

    RecordingData& data_;
    std::vector<Row>& rows_;

private:
    void announceMembers(long groupId)
    {
        raise(1);
        std::set<long> announced; // a type of several groups once, a resource for each of them
        for (const Row& row : membersOf(rows_, groupId))
            if (std::is_same_v<Row, Name> || announced.insert(row.id).second)
                announce(row);
    }
    /// The id that a change returns.
    long changedId(long id) { return std::exchange(data_.nextUpdatedItem, std::nullopt).value_or(id); }

    std::string name_;
};

} // namespace korvane::test
