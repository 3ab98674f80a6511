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

STDMETHODIMP RecordedGroups::Load(VARIANT_BOOL* result)
{
    const HRESULT outcome = data_.record("Groups.Load", "");
    if (FAILED(outcome))
        return outcome;
    announceAll();
    *result = VARIANT_TRUE;
    return S_OK;
}

STDMETHODIMP RecordedGroups::Fetch(long id, BSTR* name, long* flags, VARIANT_BOOL* result)
{
    const HRESULT outcome = data_.record("Groups.Fetch", shown(id));
    if (FAILED(outcome))
        return outcome;
    const auto found =
        std::find_if(data_.groups.begin(), data_.groups.end(), [&](auto& g) { return g.id == id; });
    *result = VARIANT_FALSE;
    if (found == data_.groups.end())
        return S_OK;
    put(name, found->name);
    *flags = found->flags;
    *result = VARIANT_TRUE;
    return S_OK;
}

STDMETHODIMP RecordedGroups::HasAccess(long operation, long id, VARIANT_BOOL* result)
{
    const HRESULT outcome = data_.record("Groups.HasAccess", shown(operation) + ", " + shown(id));
    if (FAILED(outcome))
        return outcome;
    const auto found =
        std::find_if(data_.groups.begin(), data_.groups.end(), [&](auto& g) { return g.id == id; });
    *result = found != data_.groups.end() && found->editable ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

STDMETHODIMP RecordedGroups::Add(BSTR name, long flags, long* newId)
{
    const HRESULT outcome = data_.record("Groups.Add", quoted(view(name)) + ", " + shown(flags));
    if (FAILED(outcome))
        return outcome;
    *newId = data_.nextId++;
    data_.groups.push_back({*newId, std::wstring(view(name)), flags, true});
    changed();
    return S_OK;
}

STDMETHODIMP RecordedGroups::Remove(long id, long* removedId)
{
    const HRESULT outcome = data_.record("Groups.Remove", shown(id));
    if (FAILED(outcome))
        return outcome;
    std::erase_if(data_.groups, [id](const Group& group) { return group.id == id; });
    *removedId = 0;
    changed();
    return S_OK;
}

STDMETHODIMP RecordedGroups::Update(long id, BSTR name, long flags, long* updatedId)
{
    const HRESULT outcome =
        data_.record("Groups.Update", shown(id) + ", " + quoted(view(name)) + ", " + shown(flags));
    if (FAILED(outcome))
        return outcome;
    for (Group& group : data_.groups)
        if (group.id == id)
            group = {id, std::wstring(view(name)), flags, group.editable, group.position};
    *updatedId = std::exchange(data_.nextUpdatedGroup, std::nullopt).value_or(id);
    changed();
    return S_OK;
}

STDMETHODIMP RecordedGroups::SetPosition(long id, long position)
{
    const auto write = [&] {
        for (Group& group : data_.groups)
            if (group.id == id)
                group.position = position;
        changed();
    };
    return data_.answer("Groups.SetPosition", write, id, position);
}

} // namespace korvane::test
