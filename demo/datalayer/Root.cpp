#include "demo/datalayer/Root.h"

#include "demo/datalayer/BuiltIn.h"
#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Recurrence.h"
#include "demo/datalayer/Sample.h"
#include "demo/datalayer/Scope.h"

namespace korvane::store
{

namespace
{

template <class Interface, class Collection>
HRESULT given(Interface** result, Trace& trace, const wchar_t* call, const ComPtr<Collection>& collection)
{
    return returns(result, [&] {
        trace.add(call);
        return ComPtr<Interface>(collection.get());
    });
}

Rule newRule(long kind)
{
    const Rule rule{kind};
    if (!rule.isKnown())
        throw error(Code::unknownRecurrence, L"Root", std::to_wstring(kind));
    return rule;
}

} // namespace

STDMETHODIMP Root::get_Groups(IGroups** collection)
{
    return given(collection, store_->trace(), L"Root.Groups", groups_);
}

STDMETHODIMP Root::get_Names(INames** collection)
{
    return given(collection, store_->trace(), L"Root.Names", names_);
}

STDMETHODIMP Root::get_Types(ITypes** collection)
{
    return given(collection, store_->trace(), L"Root.Types", types_);
}

STDMETHODIMP Root::get_Accounts(IAccounts** collection)
{
    return given(collection, store_->trace(), L"Root.Accounts", accounts_);
}

STDMETHODIMP Root::get_Events(IEvents** collection)
{
    return given(collection, store_->trace(), L"Root.Events", events_);
}

STDMETHODIMP Root::get_EventLinks(IEventLinks** links)
{
    return given(links, store_->trace(), L"Root.EventLinks", links_);
}

STDMETHODIMP Root::get_Messages(IMessages** collection)
{
    return given(collection, store_->trace(), L"Root.Messages", messages_);
}

STDMETHODIMP Root::NewRecurrence(long kind, IRecurrence** rule)
{
    return returns(rule, [&] {
        const Rule made = traced(
            store_->trace(), line(L"Root.NewRecurrence", kind), [&] { return newRule(kind); },
            [](const auto&) { return L""; });
        return ComPtr<IRecurrence>(make<Recurrence>(made).get());
    });
}

STDMETHODIMP Root::OpenScope(long flags, BSTR source, IScope** scope)
{
    return returns(scope, [&] { return ComPtr<IScope>(make<Scope>(store_, flags, view(source)).get()); });
}

template <class Value> Value Root::ofAccount(Value Account::* member, const Value& otherwise) const
{
    const auto account = AccountTable(*store_).current();
    return account ? (*account).*member : otherwise;
}

STDMETHODIMP Root::get_LoginID(long* loginId)
{
    return returns(loginId, [&] { return ofAccount(&Account::id, 0L); });
}

STDMETHODIMP Root::get_Login(BSTR* login)
{
    return returns(login, [&] { return Bstr(ofAccount(&Account::login, std::wstring())); });
}

STDMETHODIMP Root::get_NameID(long* nameId)
{
    return returns(nameId, [&] { return ofAccount(&Account::name, 0L); });
}

STDMETHODIMP Root::get_Role(long* role)
{
    return returns(role, [&] { return ofAccount(&Account::role, noUser); });
}

STDMETHODIMP Root::get_UnreadMessages(long* count)
{
    return returns(count, [&] { return messages_->unread(); });
}

STDMETHODIMP Root::HasChanged(VARIANT_BOOL* result)
{
    return returns(result, [&] { return store_->hasChanged(); });
}

STDMETHODIMP Root::AnnounceAll()
{
    return guard([&] {
        tracedCall(store_->trace(), L"Session.AnnounceAll", [&] {
            groups_->announceAnew();
            accounts_->announceAnew();
            names_->announceAnew();
            types_->announceAnew();
            events_->announceChange();
            messages_->announceNew();
        });
    });
}

void Root::addSample()
{
    tracedCall(store_->trace(), L"Database.AddSample", [&] {
        store::addSample(*store_);
        groups_->announceChange();
        accounts_->announceChange();
        names_->announceChange();
        types_->announceChange();
    });
}

const GUID* Root::privateId() noexcept
{
    static constexpr GUID id = {0x5d0c2a5b, 0x7e42, 0x4b7e, {0x9a, 0x4f, 0x61, 0xd3, 0x0b, 0x8e, 0x52, 0xc7}};
    return &id;
}

} // namespace korvane::store
