#include "demo/datalayer/Root.h"

#include "demo/datalayer/Errors.h"
#include "demo/datalayer/Recurrence.h"
#include "demo/datalayer/Sample.h"
#include "demo/datalayer/Scope.h"

namespace korvane::store
{

namespace
{

Rule newRule(long kind)
{
    const Rule rule{kind};
    if (!rule.isKnown())
        throw error(Code::unknownRecurrence, L"Root", std::to_wstring(kind));
    return rule;
}

} // namespace

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
    const auto announce = [&] {
        groups_->announceAnew();
        accounts_->announceAnew();
        names_->announceAnew();
        types_->announceAnew();
        events_->announceChange();
        messages_->announceNew();
    };
    return performed(store_->trace(), announce, L"Session.AnnounceAll");
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
