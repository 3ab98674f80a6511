#include "demo/datalayer/Names.h"

#include "demo/datalayer/Results.h"

namespace korvane::store
{

namespace
{

enum InfoEvent : DISPID
{
    eventInfoClear = 3,
    eventInfoAdd = 4
};

std::wstring shownResult(const std::optional<NameDetails>& found)
{
    return found ? line(L"=", found->text, found->color, found->loginId, found->login, found->flags,
                        found->role)
                 : std::wstring();
}

} // namespace

STDMETHODIMP Names::Fetch(long id, BSTR* text, long* color, long* loginId, BSTR* login, long* flags,
                          long* role)
{
    return guard([&] {
        requireAll(text, color, loginId, login, flags, role);
        const auto fetch = [&] { return id == 0 ? std::nullopt : std::optional(table_.fetch(id)); };
        const auto found = traced(trace(), called(L"Fetch", id), fetch, shownResult);
        if (!found)
            return;
        Bstr foundText(found->text);
        Bstr foundLogin(found->login);
        give(text, std::move(foundText));
        give(login, std::move(foundLogin));
        *color = found->color;
        *loginId = found->loginId;
        *flags = found->flags;
        *role = found->role;
    });
}

STDMETHODIMP Names::GetRole(long id, long* role)
{
    return answered(role, trace(), [&] { return table_.role(id); }, L"Names.GetRole", id);
}

STDMETHODIMP Names::GetMailbox(long id, BSTR* mailbox)
{
    return returns(mailbox, [&] {
        return Bstr(traced(trace(), called(L"GetMailbox", id), [&] { return table_.mailbox(id); }));
    });
}

STDMETHODIMP Names::SetSyncLogin(long id, BSTR login)
{
    const auto write = [&] {
        table_.setSyncLogin(id, view(login));
        announceChange();
    };
    return performed(trace(), write, L"Names.SetSyncLogin", id, view(login));
}

STDMETHODIMP Names::SetRole(long id, long role)
{
    const auto write = [&] {
        table_.setRole(id, role);
        announceChange();
    };
    return performed(trace(), write, L"Names.SetRole", id, role);
}

STDMETHODIMP Names::LoadInfo(long nameId, VARIANT_BOOL* result)
{
    const auto load = [&] {
        const auto rows = info_.rows(nameId);
        announce(trace(), eventInfoClear, L"OnInfoClear");
        for (const InfoRow& row : rows)
            announce(trace(), eventInfoAdd, L"OnInfoAdd", nameId, row.label, row.value);
        return true;
    };
    return answered(result, trace(), load, L"Names.LoadInfo", nameId);
}

STDMETHODIMP Names::SetInfo(long nameId, BSTR label, long position, BSTR value)
{
    // Nothing is announced: whoever replaces the rows one by one walks through those that were announced.
    const auto write = [&] { info_.set(nameId, view(label), position, view(value)); };
    return performed(trace(), write, L"Names.SetInfo", nameId, view(label), position, view(value));
}

} // namespace korvane::store
