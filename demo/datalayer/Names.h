// The resources collection.
#pragma once

#include "demo/datalayer/InfoTable.h"
#include "demo/datalayer/MemberCollection.h"
#include "demo/datalayer/NameTable.h"

namespace korvane::store
{

class Names final : public Object<Names, MemberCollection<INames, INamesEvents, NameTable>, INames,
                                  IConnectionPointContainer>
{
public:
    explicit Names(std::shared_ptr<Store> store) : Object(std::move(store)), info_(*store_) {}

    STDMETHODIMP Fetch(long id, BSTR* text, long* color, long* loginId, BSTR* login, long* flags,
                       long* role) override;
    STDMETHODIMP GetRole(long id, long* role) override;
    STDMETHODIMP GetMailbox(long id, BSTR* mailbox) override;
    STDMETHODIMP SetSyncLogin(long id, BSTR login) override;
    STDMETHODIMP SetRole(long id, long role) override;
    STDMETHODIMP LoadInfo(long nameId, VARIANT_BOOL* result) override;
    STDMETHODIMP SetInfo(long nameId, BSTR label, long position, BSTR value) override;

private:
    InfoTable info_;
};

} // namespace korvane::store
