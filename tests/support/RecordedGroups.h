// The groups of resources of the recording data layer.
#pragma once

#include "framework/com/ConnectionPoint.h"
#include "tests/support/EmptyData.h"
#include "tests/support/RecordingData.h"

namespace korvane::test
{

class RecordedGroups final : public Object<RecordedGroups, Inherits<EmptyGroups, EventSource<IGroupsEvents>>,
                                           IGroups, IConnectionPointContainer>
{
public:
    explicit RecordedGroups(RecordingData& data) : data_(data) {}

    using EventSource<IGroupsEvents>::raise;
    using EventSource<IGroupsEvents>::hasSubscribers;

    void announce(const Group& group);

    STDMETHODIMP Load(VARIANT_BOOL* result) override;
    STDMETHODIMP Fetch(long id, BSTR* name, long* flags, VARIANT_BOOL* result) override;
    STDMETHODIMP HasAccess(long operation, long id, VARIANT_BOOL* result) override;
    STDMETHODIMP Add(BSTR name, long flags, long* newId) override;
    STDMETHODIMP Remove(long id, long* removedId) override;
    STDMETHODIMP Update(long id, BSTR name, long flags, long* updatedId) override;
    STDMETHODIMP SetPosition(long id, long position) override;

private:
    void announceAll();
    void changed();
    Group* find(long id);

    RecordingData& data_;
};

} // namespace korvane::test
