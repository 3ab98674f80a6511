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

private:
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

private:
    RecordingData& data_;
};

} // namespace korvane::test
