#include "tests/support/RecordedAccounts.h"

#include <algorithm>

namespace korvane::test
{

void RecordedAccounts::announce(const Account& account)
{
    raise(2, {Variant(account.id), Variant(Bstr(account.login))});
}

void RecordedAccounts::announceAll()
{
    raise(1);
    for (const Account& account : std::vector(data_.accounts))
        announce(account);
}

void RecordedAccounts::changed()
{
    if (data_.announcesWrites)
        announceAll();
}

Account* RecordedAccounts::find(BSTR login)
{
    const auto found = std::find_if(data_.accounts.begin(), data_.accounts.end(), [&](const Account& each) {
        return CompareStringOrdinal(each.login.c_str(), -1, login ? login : L"", -1, TRUE) == CSTR_EQUAL;
    });
    return found == data_.accounts.end() ? nullptr : &*found;
}

bool RecordedAccounts::detach(long nameId)
{
    bool had = false;
    for (Account& account : data_.accounts)
        if (account.nameId == nameId)
        {
            account.nameId = 0;
            had = true;
        }
    return had;
}

STDMETHODIMP RecordedAccounts::Load(VARIANT_BOOL* result)
{
    return data_.answer("Accounts.Load", [&] {
        announceAll();
        *result = VARIANT_TRUE;
    });
}

STDMETHODIMP RecordedAccounts::Lookup(BSTR login, long* loginId, long* role, long* nameId)
{
    const auto look = [&] {
        const Account* const found = find(login);
        *loginId = found ? found->id : 0;
        *role = found ? found->role : -1;
        *nameId = found ? found->nameId : 0;
    };
    return data_.answer("Accounts.Lookup", look, login);
}

STDMETHODIMP RecordedAccounts::Add(BSTR login, long role, VARIANT nameId, long* newId)
{
    const auto add = [&] {
        detach(nameId.lVal);
        *newId = data_.nextId++;
        data_.accounts.push_back({*newId, std::wstring(view(login)), role, nameId.lVal});
        changed();
    };
    if (nameId.vt != VT_I4)
        return E_INVALIDARG; // and no call that a test could take for one
    return data_.answer("Accounts.Add", add, login, role, nameId.lVal);
}

STDMETHODIMP RecordedAccounts::Attach(long nameId, BSTR login, VARIANT_BOOL* result)
{
    const auto attach = [&] {
        Account* const found = find(login);
        if (found)
        {
            detach(nameId);
            found->nameId = nameId;
        }
        *result = found ? VARIANT_TRUE : VARIANT_FALSE;
        changed();
    };
    return data_.answer("Accounts.Attach", attach, nameId, login);
}

STDMETHODIMP RecordedAccounts::Detach(long nameId, VARIANT_BOOL* result)
{
    const auto leave = [&] {
        *result = detach(nameId) ? VARIANT_TRUE : VARIANT_FALSE;
        changed();
    };
    return data_.answer("Accounts.Detach", leave, nameId);
}

STDMETHODIMP RecordedAccounts::Remove(BSTR login, VARIANT_BOOL* result)
{
    const auto remove = [&] {
        const Account* const found = find(login);
        *result = found ? VARIANT_TRUE : VARIANT_FALSE;
        if (found)
            data_.accounts.erase(data_.accounts.begin() + (found - data_.accounts.data()));
        changed();
    };
    return data_.answer("Accounts.Remove", remove, login);
}

} // namespace korvane::test
