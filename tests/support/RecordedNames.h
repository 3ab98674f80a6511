// The resources and the activity types of the recording data layer.
#pragma once

#include "framework/com/ConnectionPoint.h"
#include "tests/support/EmptyData.h"
#include "tests/support/RecordingData.h"

namespace korvane::test
{

class RecordedNames final : public Object<RecordedNames, Inherits<EmptyNames, EventSource<INamesEvents>>,
                                          INames, IConnectionPointContainer>
{
public:
    explicit RecordedNames(RecordingData& data) : data_(data) {}

    using EventSource<INamesEvents>::raise;
    using EventSource<INamesEvents>::hasSubscribers;

    void announce(const Name& name);

    STDMETHODIMP Load(long groupId, VARIANT_BOOL* result) override;
    STDMETHODIMP Fetch(long id, BSTR* text, long* color, long* loginId, BSTR* login, long* flags,
                       long* role) override;
    STDMETHODIMP HasAccess(long operation, long id, VARIANT_BOOL* result) override;
    STDMETHODIMP GetRole(long id, long* role) override;
    STDMETHODIMP GetMailbox(long id, BSTR* mailbox) override;
    STDMETHODIMP Add(BSTR text, long color, long flags, long* newId) override;
    STDMETHODIMP Update(long id, BSTR text, long color, long flags, long* updatedId) override;
    STDMETHODIMP AddToGroup(long id, long groupId, long position, long* memberPosition) override;
    STDMETHODIMP RemoveFromGroup(long id, long groupId, long* removedId) override;
    STDMETHODIMP SetSyncLogin(long id, BSTR login) override;
    STDMETHODIMP SetRole(long id, long role) override;
    STDMETHODIMP LoadInfo(long nameId, VARIANT_BOOL* result) override;
    STDMETHODIMP SetInfo(long nameId, BSTR label, long position, BSTR value) override;

private:
    void announceMembers(long groupId);
    void changed();
    Account* accountOf(long id);

    RecordingData& data_;
};

class RecordedTypes final : public Object<RecordedTypes, Inherits<EmptyTypes, EventSource<ITypesEvents>>,
                                          ITypes, IConnectionPointContainer>
{
public:
    explicit RecordedTypes(RecordingData& data) : data_(data) {}

    using EventSource<ITypesEvents>::raise;
    using EventSource<ITypesEvents>::hasSubscribers;

    void announce(const Type& type);

    STDMETHODIMP Load(long groupId, VARIANT_BOOL* result) override;
    STDMETHODIMP Fetch(long id, BSTR* text, long* color, long* flags, long* groups) override;
    STDMETHODIMP HasAccess(long operation, long id, VARIANT_BOOL* result) override;
    STDMETHODIMP Add(BSTR text, long color, long flags, long* newId) override;
    STDMETHODIMP Update(long id, BSTR text, long color, long flags, long* updatedId) override;
    STDMETHODIMP AddToGroup(long id, long groupId, long position, long* memberPosition) override;
    STDMETHODIMP RemoveFromGroup(long id, long groupId, long* removedId) override;

private:
    void announceMembers(long groupId);
    void changed();

    RecordingData& data_;
};

} // namespace korvane::test
