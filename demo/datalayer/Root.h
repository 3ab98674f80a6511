// The root of an open database.
#pragma once

#include "demo/datalayer/Accounts.h"
#include "demo/datalayer/BuiltIn.h"
#include "demo/datalayer/EventLinks.h"
#include "demo/datalayer/Events.h"
#include "demo/datalayer/Groups.h"
#include "demo/datalayer/Messages.h"
#include "demo/datalayer/Names.h"
#include "demo/datalayer/Types.h"
#include "framework/com/Object.h"

#include <KorvaneStore.h>

namespace korvane::store
{

class Root final : public Object<Root, Inherits<IRoot, ISession>, IRoot, ISession>
{
public:
    explicit Root(std::shared_ptr<Store> store)
        : store_(std::move(store)), groups_(make<store::Groups>(store_)), names_(make<store::Names>(store_)),
          types_(make<store::Types>(store_)), accounts_(make<store::Accounts>(store_)),
          events_(make<store::Events>(store_)), links_(make<store::EventLinks>(store_, events_)),
          messages_(make<store::Messages>(store_))
    {
    }

    STDMETHODIMP get_Groups(IGroups** collection) override
    {
        return given(collection, L"Root.Groups", groups_);
    }
    STDMETHODIMP get_Names(INames** collection) override { return given(collection, L"Root.Names", names_); }
    STDMETHODIMP get_Types(ITypes** collection) override { return given(collection, L"Root.Types", types_); }
    STDMETHODIMP get_Accounts(IAccounts** collection) override
    {
        return given(collection, L"Root.Accounts", accounts_);
    }
    STDMETHODIMP get_Events(IEvents** collection) override
    {
        return given(collection, L"Root.Events", events_);
    }
    STDMETHODIMP get_EventLinks(IEventLinks** links) override
    {
        return given(links, L"Root.EventLinks", links_);
    }
    STDMETHODIMP get_Messages(IMessages** collection) override
    {
        return given(collection, L"Root.Messages", messages_);
    }
    STDMETHODIMP NewRecurrence(long kind, IRecurrence** rule) override;
    STDMETHODIMP OpenScope(long flags, BSTR source, IScope** scope) override;

    STDMETHODIMP get_LoginID(long* loginId) override { return ofAccount(loginId, &Account::id, 0L); }
    STDMETHODIMP get_Login(BSTR* login) override { return ofAccount(login, &Account::login, std::wstring()); }
    STDMETHODIMP get_NameID(long* nameId) override { return ofAccount(nameId, &Account::name, 0L); }
    STDMETHODIMP get_Role(long* role) override { return ofAccount(role, &Account::role, noUser); }
    STDMETHODIMP get_UnreadMessages(long* count) override;
    STDMETHODIMP HasChanged(VARIANT_BOOL* result) override;
    STDMETHODIMP AnnounceAll() override;

    /// Fills the database with groups, resources and activity types to play with, and tells the subscribers.
    void addSample();

    static const GUID* privateId() noexcept;

private:
    template <class Interface, class Collection>
    HRESULT given(Interface** result, const wchar_t* call, const ComPtr<Collection>& collection)
    {
        return returns(result, [&] {
            store_->trace().add(call);
            return ComPtr<Interface>(collection.get());
        });
    }

    /// A value of the account that works in the database; otherwise, when it has been removed.
    template <class Result, class Value>
    HRESULT ofAccount(Result* result, Value Account::* member, const Value& otherwise) const
    {
        return returns(result, [&] {
            const auto account = AccountTable(*store_).current();
            const Value value = account ? (*account).*member : otherwise;
            if constexpr (std::is_same_v<Value, std::wstring>)
                return Bstr(value);
            else
                return value;
        });
    }

    std::shared_ptr<Store> store_;
    // One of each for all, so that subscribers hear of changes whichever reference they are made through.
    ComPtr<store::Groups> groups_;
    ComPtr<store::Names> names_;
    ComPtr<store::Types> types_;
    ComPtr<store::Accounts> accounts_;
    ComPtr<store::Events> events_;
    ComPtr<store::EventLinks> links_;
    ComPtr<store::Messages> messages_;
};

} // namespace korvane::store
