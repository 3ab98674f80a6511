// The activity dialog in a real container, with a recording data layer behind it.
#pragma once

#include "tests/activities/ActivityUser.h"
#include "tests/support/CommandUser.h"

#include <gmock/gmock.h>

#include <optional>

namespace korvane::test
{

class ActivityDialog : public testing::Test, public CommandUser, public ActivityUser
{
protected:
    static constexpr DATE monday = 46349; // 23 November 2026
    static constexpr DATE hour = 1.0 / 24;

    ActivityDialog() : CommandUser(create<IAppCommand>(__uuidof(::EditEvents))) {}

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
};

/// The panel for the repetition of an activity.
class RecurrencePanel : public ActivityDialog
{
protected:
    void SetUp() override;

    void showedWith(const Rule& rule);
    /// What OK stores as the rule of the activity.
    std::string storedRule();
    void clickArrow(int index, bool up);
    /// For another dialog.
    void closeAndForget();
};

} // namespace korvane::test
