// The activity dialog in a real container, with a recording data layer behind it.
#pragma once

#include "framework/com/Variant.h"
#include "tests/activities/ActivityUser.h"
#include "tests/support/RecordingData.h"

#include <gmock/gmock.h>

#include <optional>

namespace korvane::test
{

class ActivityDialog : public testing::Test, public ActivityUser
{
protected:
    static constexpr DATE monday = 46349; // 23 November 2026
    static constexpr DATE hour = 1.0 / 24;

    void SetUp() override;
    /// The data outlive whoever uses them.
    void TearDown() override;

    /// Gives the command its operation and operands.
    void arrange(long operation, long instance = 0);
    /// The same, and places the dialog and reads Ready.
    bool show(long operation, long instance = 0);
    /// What show throws; empty when it throws nothing.
    std::optional<ErrorInfo> failureOfShowing(long operation);
    /// As show for a dialog that is ready, active and has made its calls.
    void showed(long operation, long instance = 0);

    void let(const wchar_t* name, const Variant& value) const;
    Variant get(const wchar_t* name) const;
    long number(const wchar_t* name) const { return toLong(get(name).get()); }
    DATE date(const wchar_t* name) const { return toDate(get(name).get()).days; }

    RecordingData data;
    ComPtr<IAppCommand> command = create<IAppCommand>(__uuidof(::EditEvents));
};

} // namespace korvane::test
