#include "demo/datalayer/Root.h"

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

/// What a collection is answered with that this data layer does not have yet.
template <class Interface> HRESULT lacks(Interface** result)
{
    return returns(result, []() -> ComPtr<Interface> { throw Failure(E_NOTIMPL); });
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
    return lacks(collection);
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
    return lacks(collection);
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

void Root::addSample()
{
    tracedCall(store_->trace(), L"Database.AddSample", [&] {
        store::addSample(*store_);
        groups_->announceChange();
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
