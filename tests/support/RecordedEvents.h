// The activities and the recurrence rules of the recording data layer.
#pragma once

#include "framework/com/ConnectionPoint.h"
#include "tests/support/EmptyData.h"
#include "tests/support/RecordingData.h"

namespace korvane::test
{

class RecordedRecurrence final : public Object<RecordedRecurrence, Inherits<IRecurrence>, IRecurrence>
{
public:
    RecordedRecurrence(RecordingData& data, const Rule& rule) : data_(data), rule_(rule)
    {
        ++data_.rulesAlive;
    }
    ~RecordedRecurrence() { --data_.rulesAlive; }

    STDMETHODIMP get_Kind(long* value) override { return read("Kind", rule_.kind, value); }
    STDMETHODIMP get_Interval(long* value) override { return read("Interval", rule_.interval, value); }
    STDMETHODIMP put_Interval(long value) override { return write("Interval", rule_.interval, value); }
    STDMETHODIMP get_Count(long* value) override { return read("Count", rule_.count, value); }
    STDMETHODIMP put_Count(long value) override { return write("Count", rule_.count, value); }
    STDMETHODIMP get_Anchor(long* value) override { return read("Anchor", rule_.anchor, value); }
    STDMETHODIMP put_Anchor(long value) override { return write("Anchor", rule_.anchor, value); }

private:
    HRESULT read(const std::string& property, long field, long* value);
    HRESULT write(const std::string& property, long& field, long value);

    RecordingData& data_;
    Rule rule_;
};

HRESULT unknownActivity();

class RecordedEvents final : public Object<RecordedEvents, Inherits<EmptyEvents, EventSource<IEventsEvents>>,
                                           IEvents, IConnectionPointContainer>
{
public:
    explicit RecordedEvents(RecordingData& data) : data_(data) {}

    using EventSource<IEventsEvents>::raise;
    using EventSource<IEventsEvents>::hasSubscribers;

    void announce(const Event& event, long instance);

    STDMETHODIMP Add(long nameId, long typeId, DATE T0, DATE T1, BSTR text, long* eventId) override;
    STDMETHODIMP Update(long eventId, long instance, long nameId, long typeId, DATE T0, DATE T1,
                        BSTR text) override;
    STDMETHODIMP Remove(long eventId, long instance) override;
    STDMETHODIMP Fetch(long eventId, long instance, long* nameId, long* typeId, DATE* T0, DATE* T1,
                       BSTR* text) override;
    STDMETHODIMP GetRecurrence(long eventId, IRecurrence** rule) override;
    STDMETHODIMP SetRecurrence(long eventId, IRecurrence* rule) override;
    STDMETHODIMP IsException(long eventId, long* result) override;

private:
    /// Answers a call about an activity, which is refused for one that is not there.
    template <class Body, class... Arguments>
    HRESULT answer(const std::string& call, const Body& body, long eventId, const Arguments&... arguments)
    {
        const auto known = [&] {
            Event* const stored = data_.event(eventId);
            if (!stored)
                return unknownActivity();
            body(*stored);
            return S_OK;
        };
        return data_.answer(call, known, eventId, arguments...);
    }

    RecordingData& data_;
};

/// What a rule holds, without a record of the reading.
std::optional<Rule> peek(RecordingData& data, IRecurrence* rule);

} // namespace korvane::test
