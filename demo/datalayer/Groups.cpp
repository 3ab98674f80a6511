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
    const auto load = [&] {
        announce(table_.all());
        return true;
    };
    return answered(result, trace(), load, L"Groups.Load");
}

STDMETHODIMP Groups::Fetch(long id, BSTR* text, long* flags, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        requireAll(text, flags);
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
    const auto tell = [&] { return table_.mayPerform(operation, id); };
    return answered(result, trace(), tell, L"Groups.HasAccess", operation, id);
}

STDMETHODIMP Groups::Add(BSTR text, long flags, long* newId)
{
    const auto add = [&] { return announced(table_.add(view(text), flags)); };
    return answered(newId, trace(), add, L"Groups.Add", view(text), flags);
}

STDMETHODIMP Groups::Remove(long id, long* removedId)
{
    const auto remove = [&] { return announced(table_.remove(id)); };
    return answered(removedId, trace(), remove, L"Groups.Remove", id);
}

STDMETHODIMP Groups::Update(long id, BSTR text, long flags, long* updatedId)
{
    const auto update = [&] { return announced(table_.update(id, view(text), flags)); };
    return answered(updatedId, trace(), update, L"Groups.Update", id, view(text), flags);
}

STDMETHODIMP Groups::SetPosition(long id, long position)
{
    const auto write = [&] { announced(table_.setPosition(id, position)); };
    return performed(trace(), write, L"Groups.SetPosition", id, position);
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
