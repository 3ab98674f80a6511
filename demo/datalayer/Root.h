// The root of an open database.
#pragma once

#include "demo/datalayer/EventLinks.h"
#include "demo/datalayer/Events.h"
#include "demo/datalayer/Groups.h"
#include "demo/datalayer/MemberCollection.h"
#include "demo/datalayer/NameTable.h"
#include "demo/datalayer/Store.h"
#include "demo/datalayer/TypeTable.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

namespace korvane::store
{

using Names = MemberCollection<Name, INames, INamesEvents>;
using Types = MemberCollection<Type, ITypes, ITypesEvents>;

class Root final : public Object<Root, Inherits<IRoot>, IRoot>
{
public:
    explicit Root(std::shared_ptr<Store> store)
        : store_(std::move(store)), groups_(make<store::Groups>(store_)), names_(make<store::Names>(store_)),
          types_(make<store::Types>(store_)), events_(make<store::Events>(store_)),
          links_(make<store::EventLinks>(store_, events_))
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

    /// Fills the database with groups, resources and activity types to play with, and tells the subscribers.
    void addSample();

    static const GUID* privateId() noexcept;

private:
    std::shared_ptr<Store> store_;
    // One of each for all, so that subscribers hear of changes whichever reference they are made through.
    ComPtr<store::Groups> groups_;
    ComPtr<store::Names> names_;
    ComPtr<store::Types> types_;
    ComPtr<store::Events> events_;
    ComPtr<store::EventLinks> links_;
};

} // namespace korvane::store
