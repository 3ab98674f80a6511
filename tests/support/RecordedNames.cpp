#include "tests/support/RecordedNames.h"

#include <algorithm>

namespace korvane::test
{

namespace
{

// Resources and types are kept alike: a row for each group that one is in, or one row for none.

template <class Row> Row* find(std::vector<Row>& rows, long id)
{
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.id == id; });
    return found == rows.end() ? nullptr : &*found;
}

bool isMember(const Name& name, long group)
{
    return name.group == group || (group == 0 && name.group != inNoGroup);
}

bool isMember(const Type& type, long group)
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

template <class Row> void update(std::vector<Row>& rows, long id, BSTR text, long color, long flags)
{
    for (Row& row : rows)
        if (row.id == id)
        {
            row.text = view(text);
            row.color = color;
            row.flags = flags;
        }
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

} // namespace

void RecordedNames::announce(const Name& name)
{
    if (name.group == Name::withoutGroup)
        raise(2, {Variant(name.id), Variant(Bstr(name.text))});
    else
        raise(2, {Variant(name.id), Variant(Bstr(name.text)), Variant(name.group), Variant(name.color)});
}

void RecordedNames::announceMembers(long groupId)
{
    raise(1);
    for (const Name& name : membersOf(data_.names, groupId))
        announce(name);
}

void RecordedNames::changed()
{
    if (data_.announcesWrites)
        announceMembers(0);
}

Account* RecordedNames::accountOf(long id)
{
    const auto found = std::find_if(data_.accounts.begin(), data_.accounts.end(),
                                    [&](const Account& account) { return account.nameId == id; });
    return id == 0 || found == data_.accounts.end() ? nullptr : &*found;
}

STDMETHODIMP RecordedNames::Load(long groupId, VARIANT_BOOL* result)
{
    const auto load = [&] {
        announceMembers(groupId);
        *result = VARIANT_TRUE;
    };
    return data_.answer("Names.Load", load, groupId);
}

STDMETHODIMP RecordedNames::Fetch(long id, BSTR* text, long* color, long* loginId, BSTR* login, long* flags,
                                  long* role)
{
    const auto read = [&] {
        const Name* const name = find(data_.names, id);
        if (!name)
            return; // an unknown one leaves everything as it is
        const Account* const account = accountOf(id);
        put(text, name->text);
        *color = name->color;
        *loginId = account ? account->id : 0;
        put(login, account ? account->login : L"");
        *flags = name->flags;
        *role = account ? account->role : -1;
    };
    return data_.answer("Names.Fetch", read, id);
}

STDMETHODIMP RecordedNames::HasAccess(long operation, long id, VARIANT_BOOL* result)
{
    const auto tell = [&] { *result = mayPerform(data_.names, operation, id); };
    return data_.answer("Names.HasAccess", tell, operation, id);
}

STDMETHODIMP RecordedNames::GetRole(long id, long* role)
{
    const auto tell = [&] {
        const Account* const account = accountOf(id);
        *role = account ? account->role : -1;
    };
    return data_.answer("Names.GetRole", tell, id);
}

STDMETHODIMP RecordedNames::GetMailbox(long id, BSTR* mailbox)
{
    *mailbox = nullptr;
    const auto tell = [&] {
        if (const Name* const name = find(data_.names, id))
            *mailbox = Bstr(name->mailbox).detach();
    };
    return data_.answer("Names.GetMailbox", tell, id);
}

STDMETHODIMP RecordedNames::Add(BSTR text, long color, long flags, long* newId)
{
    const auto add = [&] {
        *newId = data_.nextId++;
        data_.names.push_back({*newId, std::wstring(view(text)), inNoGroup, color, flags});
        changed();
    };
    return data_.answer("Names.Add", add, text, color, flags);
}

STDMETHODIMP RecordedNames::Update(long id, BSTR text, long color, long flags, long* updatedId)
{
    const auto write = [&] {
        update(data_.names, id, text, color, flags);
        *updatedId = std::exchange(data_.nextUpdatedItem, std::nullopt).value_or(id);
        changed();
    };
    return data_.answer("Names.Update", write, id, text, color, flags);
}

STDMETHODIMP RecordedNames::AddToGroup(long id, long groupId, long position, long* memberPosition)
{
    const auto add = [&] {
        addToGroup(data_.names, id, groupId, position);
        *memberPosition = position;
        changed();
    };
    return data_.answer("Names.AddToGroup", add, id, groupId, position);
}

STDMETHODIMP RecordedNames::RemoveFromGroup(long id, long groupId, long* removedId)
{
    const auto remove = [&] {
        removeFromGroup(data_.names, id, groupId);
        *removedId = std::exchange(data_.nextUpdatedItem, std::nullopt).value_or(id);
        changed();
    };
    return data_.answer("Names.RemoveFromGroup", remove, id, groupId);
}

STDMETHODIMP RecordedNames::SetSyncLogin(long id, BSTR login)
{
    const auto write = [&] {
        for (Name& name : data_.names)
            if (name.id == id)
                name.mailbox = view(login);
        changed();
    };
    return data_.answer("Names.SetSyncLogin", write, id, login);
}

STDMETHODIMP RecordedNames::SetRole(long id, long role)
{
    const auto write = [&] {
        if (Account* const account = accountOf(id))
            account->role = role;
        changed();
    };
    return data_.answer("Names.SetRole", write, id, role);
}

STDMETHODIMP RecordedNames::LoadInfo(long nameId, VARIANT_BOOL* result)
{
    const auto load = [&] {
        raise(3);
        auto rows = data_.info;
        std::stable_sort(rows.begin(), rows.end(),
                         [](const Info& left, const Info& right) { return left.position < right.position; });
        for (const Info& row : rows)
            if (row.nameId == nameId)
                raise(4, {Variant(nameId), Variant(Bstr(row.label)), Variant(Bstr(row.value))});
        *result = VARIANT_TRUE;
    };
    return data_.answer("Names.LoadInfo", load, nameId);
}

STDMETHODIMP RecordedNames::SetInfo(long nameId, BSTR label, long position, BSTR value)
{
    const auto write = [&] {
        std::erase_if(data_.info,
                      [&](const Info& row) { return row.nameId == nameId && row.label == view(label); });
        if (position >= 0)
            data_.info.push_back({nameId, std::wstring(view(label)), std::wstring(view(value)), position});
    };
    return data_.answer("Names.SetInfo", write, nameId, label, position, value);
}

void RecordedTypes::announce(const Type& type)
{
    raise(2, {Variant(type.id), Variant(Bstr(type.text)), Variant(type.color)});
}

void RecordedTypes::announceMembers(long groupId)
{
    raise(1);
    std::set<long> announced; // one in several groups once
    for (const Type& type : membersOf(data_.types, groupId))
        if (announced.insert(type.id).second)
            announce(type);
}

void RecordedTypes::changed()
{
    if (data_.announcesWrites)
        announceMembers(0);
}

STDMETHODIMP RecordedTypes::Load(long groupId, VARIANT_BOOL* result)
{
    const auto load = [&] {
        announceMembers(groupId);
        *result = VARIANT_TRUE;
    };
    return data_.answer("Types.Load", load, groupId);
}

STDMETHODIMP RecordedTypes::Fetch(long id, BSTR* text, long* color, long* flags, long* groups)
{
    const auto read = [&] {
        const Type* const type = find(data_.types, id);
        if (!type)
            return; // an unknown one leaves everything as it is
        put(text, type->text);
        *color = type->color;
        *flags = type->flags;
        *groups = static_cast<long>(std::count_if(data_.types.begin(), data_.types.end(), [&](auto& row) {
            return row.id == id && row.group != inNoGroup;
        }));
    };
    return data_.answer("Types.Fetch", read, id);
}

STDMETHODIMP RecordedTypes::HasAccess(long operation, long id, VARIANT_BOOL* result)
{
    const auto tell = [&] { *result = mayPerform(data_.types, operation, id); };
    return data_.answer("Types.HasAccess", tell, operation, id);
}

STDMETHODIMP RecordedTypes::Add(BSTR text, long color, long flags, long* newId)
{
    const auto add = [&] {
        *newId = data_.nextId++;
        data_.types.push_back({*newId, std::wstring(view(text)), color, inNoGroup, flags});
        changed();
    };
    return data_.answer("Types.Add", add, text, color, flags);
}

STDMETHODIMP RecordedTypes::Update(long id, BSTR text, long color, long flags, long* updatedId)
{
    const auto write = [&] {
        update(data_.types, id, text, color, flags);
        *updatedId = std::exchange(data_.nextUpdatedItem, std::nullopt).value_or(id);
        changed();
    };
    return data_.answer("Types.Update", write, id, text, color, flags);
}

STDMETHODIMP RecordedTypes::AddToGroup(long id, long groupId, long position, long* memberPosition)
{
    const auto add = [&] {
        addToGroup(data_.types, id, groupId, position);
        *memberPosition = position;
        changed();
    };
    return data_.answer("Types.AddToGroup", add, id, groupId, position);
}

STDMETHODIMP RecordedTypes::RemoveFromGroup(long id, long groupId, long* removedId)
{
    const auto remove = [&] {
        removeFromGroup(data_.types, id, groupId);
        *removedId = std::exchange(data_.nextUpdatedItem, std::nullopt).value_or(id);
        changed();
    };
    return data_.answer("Types.RemoveFromGroup", remove, id, groupId);
}

} // namespace korvane::test
