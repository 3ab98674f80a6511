// The login accounts of the recording data layer.
#pragma once

#include "framework/com/ConnectionPoint.h"
#include "tests/support/EmptyData.h"
#include "tests/support/RecordingData.h"

namespace korvane::test
{

class RecordedAccounts final
    : public Object<RecordedAccounts, Inherits<EmptyAccounts, EventSource<IAccountsEvents>>, IAccounts,
                    IConnectionPointContainer>
{
public:
    explicit RecordedAccounts(RecordingData& data) : data_(data) {}

    using EventSource<IAccountsEvents>::raise;
    using EventSource<IAccountsEvents>::hasSubscribers;

    void announce(const Account& account);

    STDMETHODIMP Load(VARIANT_BOOL* result) override;
    STDMETHODIMP Lookup(BSTR login, long* loginId, long* role, long* nameId) override;
    STDMETHODIMP Add(BSTR login, long role, VARIANT nameId, long* newId) override;
    STDMETHODIMP Attach(long nameId, BSTR login, VARIANT_BOOL* result) override;
    STDMETHODIMP Detach(long nameId, VARIANT_BOOL* result) override;
    STDMETHODIMP Remove(BSTR login, VARIANT_BOOL* result) override;

private:
    void announceAll();
    Account* find(BSTR login);
    bool detach(long nameId);
    void changed();

    RecordingData& data_;
};

} // namespace korvane::test
