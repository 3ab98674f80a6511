// The root of an open database.
#pragma once

#include "demo/datalayer/Groups.h"
#include "demo/datalayer/Store.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

namespace korvane::store
{

class Root final : public Object<Root, Inherits<IRoot>, IRoot>
{
public:
    explicit Root(std::shared_ptr<Store> store)
        : store_(std::move(store)), groups_(make<store::Groups>(store_))
    {
    }

    STDMETHODIMP get_Groups(IGroups** collection) override;
    STDMETHODIMP OpenScope(long flags, BSTR source, IScope** scope) override;

private:
    std::shared_ptr<Store> store_;
    // One for all, so that subscribers hear of changes whichever reference they are made through.
    ComPtr<store::Groups> groups_;
};

} // namespace korvane::store
