// What every subscriber to events has.
#pragma once

#include "tests/support/PlainObject.h"

#include <gtest/gtest.h>

namespace korvane::store::test
{

class Sink : public korvane::test::PlainObject<>
{
public:
    /// Whether the sink knows the name of the events, as sinks made by compilers do.
    bool knowsEvents = true;

    STDMETHODIMP Invoke(DISPID event, REFIID iid, LCID, WORD flags, DISPPARAMS* arguments, VARIANT*,
                        EXCEPINFO*, UINT*) override
    {
        EXPECT_EQ(IID_NULL, iid);
        EXPECT_EQ(DISPATCH_METHOD, flags);
        EXPECT_EQ(0u, arguments->cNamedArgs);
        return hear(event, *arguments);
    }

protected:
    explicit Sink(REFIID events) : eventsId_(events) {}

    /// @param arguments last first. The result is the event's.
    virtual HRESULT hear(DISPID event, const DISPPARAMS& arguments) = 0;

private:
    void* find(REFIID iid) override { return knowsEvents && iid == eventsId_ ? this : nullptr; }

    IID eventsId_;
};

} // namespace korvane::store::test
