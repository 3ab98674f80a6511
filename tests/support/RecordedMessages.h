// The messages of the recording data layer.
#pragma once

#include "framework/com/ConnectionPoint.h"
#include "tests/support/EmptyData.h"
#include "tests/support/RecordingData.h"

namespace korvane::test
{

class RecordedMessages final
    : public Object<RecordedMessages, Inherits<EmptyMessages, EventSource<IMessagesEvents>>, IMessages,
                    IConnectionPointContainer>
{
public:
    explicit RecordedMessages(RecordingData& data) : data_(data) {}

    using EventSource<IMessagesEvents>::raise;
    using EventSource<IMessagesEvents>::hasSubscribers;

    void announce(const Message& message);

    STDMETHODIMP LoadFor(long nameId, long flags, VARIANT_BOOL* result) override;
    STDMETHODIMP Fetch(long msgId, BSTR* fromName, DATE* dtg, BSTR* tlf, BSTR* contact, BSTR* about,
                       long* kind, VARIANT_BOOL* wasRead) override;
    STDMETHODIMP Add(long nameId, DATE dtg, BSTR about, BSTR tlf, BSTR contact, long kind,
                     long* newId) override;
    STDMETHODIMP Remove(long msgId) override;

private:
    void announceFor(long nameId);
    void changed();

    RecordingData& data_;
    long reader_ = 0; ///< whose messages were loaded last
};

} // namespace korvane::test
