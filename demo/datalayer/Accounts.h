// The login accounts collection.
#pragma once

#include "demo/datalayer/AccountTable.h"
#include "demo/datalayer/Announcer.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

namespace korvane::store
{

class Accounts final : public Object<Accounts, Inherits<IAccounts, Announcer<IAccountsEvents>>, IAccounts,
                                     IConnectionPointContainer>
{
public:
    explicit Accounts(std::shared_ptr<Store> store) : store_(std::move(store)), table_(*store_) {}

    STDMETHODIMP Load(VARIANT_BOOL* result) override;
    STDMETHODIMP Lookup(BSTR login, long* loginId, long* role, long* nameId) override;
    STDMETHODIMP Add(BSTR login, long role, VARIANT nameId, long* newId) override;
    STDMETHODIMP Attach(long nameId, BSTR login, VARIANT_BOOL* result) override;
    STDMETHODIMP Detach(long nameId, VARIANT_BOOL* result) override;
    STDMETHODIMP Remove(BSTR login, VARIANT_BOOL* result) override;

    void announceAnew();
    /// The same after a write that was not made through here, which is done whatever happens now.
    void announceChange();

private:
    Trace& trace() const noexcept { return store_->trace(); }
    template <class Result, class Body> HRESULT write(Result* result, std::wstring call, Body&& body);

    std::shared_ptr<Store> store_;
    AccountTable table_;
};

} // namespace korvane::store
