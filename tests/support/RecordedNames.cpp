#include "tests/support/RecordedNames.h"

namespace korvane::test
{

void RecordedNames::announce(const Name& name)
{
    if (name.group == Name::withoutGroup)
        raise(2, {Variant(name.id), Variant(Bstr(name.text))});
    else
        raise(2, {Variant(name.id), Variant(Bstr(name.text)), Variant(name.group), Variant(name.color)});
}

Account* RecordedNames::accountOf(long id)
{
    const auto found = std::find_if(data_.accounts.begin(), data_.accounts.end(),
                                    [&](const Account& account) { return account.nameId == id; });
    return id == 0 || found == data_.accounts.end() ? nullptr : &*found;
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

} // namespace korvane::test
