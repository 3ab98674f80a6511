// The part of the activity dialog that makes an activity repeat. Every change of a control is written into the
// command's working rule at once; a rule is changed by nothing else.
#pragma once

#include "activities/EditEvents.h"
#include "activities/NumberRow.h"
#include "framework/control/CheckBox.h"
#include "framework/control/ControlArray.h"
#include "framework/control/OptionButton.h"

#include <functional>

namespace korvane
{

class RecurrencePanel
{
public:
    /// @param command the command at hand. @param onToggle called when the panel has opened or closed.
    RecurrencePanel(DialogWindow& dialog, const Place& place, std::function<EditEvents&()> command,
                    std::function<void()> onToggle);

    /// Shows the command's rule.
    void fill();
    /// Shows that the activity cannot repeat: it is an occurrence that is edited by itself.
    void lock();

    /// Where what follows the panel goes: below it, or in its place while it is closed.
    float bottom() const noexcept;

private:
    static constexpr int kinds = 5;

    void toggle();
    void open(bool isOpen);
    void chooseKind(int index);
    void showKind(long kind);
    void write(HRESULT (STDMETHODCALLTYPE IRecurrence::*property)(long), long number);
    void showNumbers();

    std::function<EditEvents&()> command_;
    std::function<void()> onToggle_;
    long kind_ = 0; ///< the one shown

    CheckBox chkRecurrences;
    Frame fraRecur;
    ControlArray<OptionButton, kinds> optRecur;
    Frame fraRecurStd;
    NumberRow interval; ///< how many periods from one occurrence to the next: the rule's interval plus one
    NumberRow count;
};

} // namespace korvane
