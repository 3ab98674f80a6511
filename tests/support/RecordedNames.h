// The resources and the activity types of the recording data layer.
#pragma once

#include "tests/support/RecordedMembers.h"

namespace korvane::test
{

class RecordedNames final : public Object<RecordedNames, RecordedMembers<Name, EmptyNames, INamesEvents>,
                                          INames, IConnectionPointContainer>
{
public:
    explicit RecordedNames(RecordingData& data) : Object(data, data.names, "Names") {}

    void announce(const Name& name) override;

    STDMETHODIMP Fetch(long id, BSTR* text, long* color, long* loginId, BSTR* login, long* flags,
                       long* role) override;
    STDMETHODIMP GetRole(long id, long* role) override;
    STDMETHODIMP GetMailbox(long id, BSTR* mailbox) override;
    STDMETHODIMP SetSyncLogin(long id, BSTR login) override;
    STDMETHODIMP SetRole(long id, long role) override;
    STDMETHODIMP LoadInfo(long nameId, VARIANT_BOOL* result) override;
    STDMETHODIMP SetInfo(long nameId, BSTR label, long position, BSTR value) override;

private:
    Account* accountOf(long id);
};

class RecordedTypes final : public Object<RecordedTypes, RecordedMembers<Type, EmptyTypes, ITypesEvents>,
                                          ITypes, IConnectionPointContainer>
{
public:
    explicit RecordedTypes(RecordingData& data) : Object(data, data.types, "Types") {}

    void announce(const Type& type) override;

    STDMETHODIMP Fetch(long id, BSTR* text, long* color, long* flags, long* groups) override;
};

} // namespace korvane::test
