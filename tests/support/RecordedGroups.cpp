#include "tests/support/RecordedGroups.h"

#include <algorithm>

namespace korvane::test
{

void RecordedGroups::announce(const Group& group)
{
    raise(2, {Variant(group.id), Variant(Bstr(group.name)), Variant(group.flags)});
}

void RecordedGroups::announceAll()
{
    raise(1);
    auto groups = data_.groups;
    std::stable_sort(groups.begin(), groups.end(),
                     [](const Group& left, const Group& right) { return left.position < right.position; });
    for (const Group& group : groups)
        announce(group);
}

void RecordedGroups::changed()
{
    if (data_.announcesWrites)
        announceAll();
}

Group* RecordedGroups::find(long id)
{
    const auto found = std::find_if(data_.groups.begin(), data_.groups.end(),
                                    [&](const Group& group) { return group.id == id; });
    return found == data_.groups.end() ? nullptr : &*found;
}

STDMETHODIMP RecordedGroups::Load(VARIANT_BOOL* result)
{
    return data_.answer("Groups.Load", [&] {
        announceAll();
        *result = VARIANT_TRUE;
    });
}

STDMETHODIMP RecordedGroups::Fetch(long id, BSTR* name, long* flags, VARIANT_BOOL* result)
{
    const auto read = [&] {
        const Group* const found = find(id);
        *result = found ? VARIANT_TRUE : VARIANT_FALSE;
        if (!found)
            return; // an unknown one leaves everything as it is
        put(name, found->name);
        *flags = found->flags;
    };
    return data_.answer("Groups.Fetch", read, id);
}

STDMETHODIMP RecordedGroups::HasAccess(long operation, long id, VARIANT_BOOL* result)
{
    const auto tell = [&] {
        const Group* const found = find(id);
        *result = found && found->editable ? VARIANT_TRUE : VARIANT_FALSE;
    };
    return data_.answer("Groups.HasAccess", tell, operation, id);
}

STDMETHODIMP RecordedGroups::Add(BSTR name, long flags, long* newId)
{
    const auto add = [&] {
        *newId = data_.nextId++;
        data_.groups.push_back({*newId, std::wstring(view(name)), flags, true});
        changed();
    };
    return data_.answer("Groups.Add", add, name, flags);
}

STDMETHODIMP RecordedGroups::Remove(long id, long* removedId)
{
    const auto remove = [&] {
        std::erase_if(data_.groups, [id](const Group& group) { return group.id == id; });
        *removedId = 0;
        changed();
    };
    return data_.answer("Groups.Remove", remove, id);
}

STDMETHODIMP RecordedGroups::Update(long id, BSTR name, long flags, long* updatedId)
{
    const auto write = [&] {
        if (Group* const found = find(id))
        {
            found->name = view(name);
            found->flags = flags;
        }
        *updatedId = std::exchange(data_.nextUpdatedGroup, std::nullopt).value_or(id);
        changed();
    };
    return data_.answer("Groups.Update", write, id, name, flags);
}

STDMETHODIMP RecordedGroups::SetPosition(long id, long position)
{
    const auto write = [&] {
        if (Group* const found = find(id))
            found->position = position;
        changed();
    };
    return data_.answer("Groups.SetPosition", write, id, position);
}

} // namespace korvane::test
