#include "demo/datalayer/Groups.h"

#include "demo/datalayer/Results.h"

namespace korvane::store
{

namespace
{

std::wstring shownResult(const std::optional<Group>& group)
{
    return group ? line(L"= True,", group->name, group->flags) : L"= " + shown(false);
}

} // namespace

STDMETHODIMP Groups::Load(VARIANT_BOOL* result)
{
    return returns(result, [&] {
        return traced(trace(), L"Groups.Load", [&] {
            announce(table_.all());
            return true;
        });
    });
}

STDMETHODIMP Groups::Fetch(long id, BSTR* text, long* flags, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        notNull(text);
        notNull(flags);
        const auto find = [&] { return table_.find(id); };
        const auto group = traced(trace(), line(L"Groups.Fetch", id), find, shownResult);
        if (group)
        {
            give(text, Bstr(group->name));
            *flags = group->flags;
        }
        return group.has_value();
    });
}

STDMETHODIMP Groups::HasAccess(long operation, long id, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        return traced(trace(), line(L"Groups.HasAccess", operation, id),
                      [&] { return table_.mayPerform(operation, id); });
    });
}

STDMETHODIMP Groups::Add(BSTR text, long flags, long* newId)
{
    return returns(newId, [&] {
        return traced(trace(), line(L"Groups.Add", view(text), flags),
                      [&] { return announced(table_.add(view(text), flags)); });
    });
}

STDMETHODIMP Groups::Remove(long id, long* removedId)
{
    return returns(removedId, [&] {
        return traced(trace(), line(L"Groups.Remove", id), [&] { return announced(table_.remove(id)); });
    });
}

STDMETHODIMP Groups::Update(long id, BSTR text, long flags, long* updatedId)
{
    return returns(updatedId, [&] {
        return traced(trace(), line(L"Groups.Update", id, view(text), flags),
                      [&] { return announced(table_.update(id, view(text), flags)); });
    });
}

STDMETHODIMP Groups::SetPosition(long id, long position)
{
    return guard([&] {
        tracedCall(trace(), line(L"Groups.SetPosition", id, position),
                   [&] { announced(table_.setPosition(id, position)); });
    });
}

void Groups::announceChange()
{
    attempt([&] { announceAnew(); });
}

void Groups::announce(const std::vector<Group>& groups)
{
    announceClear(trace());
    for (const Group& group : groups)
        announceItem(trace(), group.id, group.name, group.flags);
}

/// Announces what a write has left, and gives the write's result.
long Groups::announced(GroupChange change)
{
    // The write is done: a shortage of memory now must not tell the caller otherwise.
    attempt([&] { announce(change.groups); });
    return change.result;
}

} // namespace korvane::store
