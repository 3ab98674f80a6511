// The root of an open database.
#pragma once

#include "demo/datalayer/Accounts.h"
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

    STDMETHODIMP get_Groups(IGroups** collection) override;
    STDMETHODIMP get_Names(INames** collection) override;
    STDMETHODIMP get_Types(ITypes** collection) override;
    STDMETHODIMP get_Accounts(IAccounts** collection) override;
    STDMETHODIMP get_Events(IEvents** collection) override;
    STDMETHODIMP get_EventLinks(IEventLinks** links) override;
    STDMETHODIMP get_Messages(IMessages** collection) override;
    STDMETHODIMP NewRecurrence(long kind, IRecurrence** rule) override;
    STDMETHODIMP OpenScope(long flags, BSTR source, IScope** scope) override;

    STDMETHODIMP get_LoginID(long* loginId) override;
    STDMETHODIMP get_Login(BSTR* login) override;
    STDMETHODIMP get_NameID(long* nameId) override;
    STDMETHODIMP get_Role(long* role) override;
    STDMETHODIMP get_UnreadMessages(long* count) override;
    STDMETHODIMP HasChanged(VARIANT_BOOL* result) override;
    STDMETHODIMP AnnounceAll() override;

    /// Fills the database with groups, resources and activity types to play with, and tells the subscribers.
    void addSample();

    static const GUID* privateId() noexcept;

private:
    /// A value of the account that works in the database; otherwise, when it has been removed.
    template <class Value> Value ofAccount(Value Account::* member, const Value& otherwise) const;

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
