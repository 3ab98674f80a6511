#include "demo/datalayer/Accounts.h"

#include "demo/datalayer/Arguments.h"
#include "demo/datalayer/BuiltIn.h"
#include "demo/datalayer/Results.h"

namespace korvane::store
{

namespace
{

std::wstring shownResult(const std::optional<Account>& found)
{
    return found ? line(L"=", found->id, found->role, found->name) : line(L"=", 0L);
}

} // namespace

STDMETHODIMP Accounts::Load(VARIANT_BOOL* result)
{
    const auto load = [&] {
        announceAnew();
        return true;
    };
    return answered(result, trace(), load, L"Accounts.Load");
}

STDMETHODIMP Accounts::Lookup(BSTR login, long* loginId, long* role, long* nameId)
{
    return guard([&] {
        requireAll(loginId, role, nameId);
        const auto found = traced(
            trace(), line(L"Accounts.Lookup", view(login)), [&] { return table_.find(view(login)); },
            shownResult);
        *loginId = found ? found->id : 0;
        *role = found ? found->role : noUser;
        *nameId = found ? found->name : 0;
    });
}

STDMETHODIMP Accounts::Add(BSTR login, long role, VARIANT nameId, long* newId)
{
    return write(newId, line(L"Accounts.Add", view(login), role, Argument{nameId}), [&] {
        const auto name = longIn(nameId);
        if (!name || *name == 0)
            throw error(Code::loginNeedsName, L"Accounts");
        return table_.add(view(login), role, *name);
    });
}

STDMETHODIMP Accounts::Attach(long nameId, BSTR login, VARIANT_BOOL* result)
{
    return write(result, line(L"Accounts.Attach", nameId, view(login)), [&] {
        table_.attach(nameId, view(login));
        return true;
    });
}

STDMETHODIMP Accounts::Detach(long nameId, VARIANT_BOOL* result)
{
    return write(result, line(L"Accounts.Detach", nameId), [&] { return table_.detach(nameId); });
}

STDMETHODIMP Accounts::Remove(BSTR login, VARIANT_BOOL* result)
{
    return write(result, line(L"Accounts.Remove", view(login)), [&] { return table_.remove(view(login)); });
}

void Accounts::announceChange()
{
    attempt([&] { announceAnew(); });
}

void Accounts::announceAnew()
{
    const auto accounts = table_.all();
    announceClear(trace());
    for (const Account& account : accounts)
        announceItem(trace(), account.id, account.login);
}

template <class Result, class Body> HRESULT Accounts::write(Result* result, std::wstring call, Body&& body)
{
    return returns(result, [&] {
        return traced(trace(), std::move(call), [&] {
            const auto written = body();
            announceChange();
            return written;
        });
    });
}

} // namespace korvane::store
