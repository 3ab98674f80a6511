#include "activities/RecurrencePanel.h"

#include "framework/com/Boundary.h"
#include "framework/com/Decimal.h"
#include "framework/modKorvaneDlg.h"

namespace korvane
{

namespace
{

/// The texts of a kind of rule: the option's caption, then the two parts of the interval row and of the count row.
long textOfKind(int index) noexcept
{
    return 25010 + 10L * index;
}

constexpr float checkHeight = 255;
constexpr float rowHeight = 285;
constexpr float optionsWidth = 1350;

Place optionPlace(int index) noexcept
{
    return {0, 60 + rowHeight * static_cast<float>(index), optionsWidth, checkHeight};
}

} // namespace

RecurrencePanel::RecurrencePanel(DialogWindow& dialog, const Place& place,
                                 std::function<EditEvents&()> command, std::function<void()> onToggle)
    : command_(std::move(command)), onToggle_(std::move(onToggle)),
      chkRecurrences(dialog, {.name = L"chkRecurrences",
                              .place = {place.left, place.top, place.width, checkHeight},
                              .text = L"25007",
                              .toolTip = L"25067"}),
      fraRecur(dialog, {.name = L"fraRecur",
                        .place = {place.left, place.top + checkHeight, place.width, place.height}}),
      optRecur(makeControls<kinds>([&](int index) {
          const std::wstring text = decimal(textOfKind(index));
          return OptionButton(fraRecur,
                              {.name = L"optRecur", .place = optionPlace(index), .text = text.c_str()},
                              index == 0 ? OptionButton::Position::first : OptionButton::Position::further);
      })),
      fraRecurStd(fraRecur, {.name = L"fraRecurStd",
                             .place = {optionsWidth, 0, place.width - optionsWidth, place.height}}),
      interval(fraRecurStd, 45, {L"lblRecurIval1", L"txtRecurIval", L"updRecurIval", L"lblRecurIval2"},
               NumberRow::One::blank),
      count(fraRecurStd, 435, {L"lblRecurCnt1", L"txtRecurCnt", L"updRecurCnt", L"lblRecurCnt2"},
            NumberRow::One::digit)
{
    fraRecur.setVisible(false);
    fraRecurStd.setVisible(false);
    chkRecurrences.onClick = [this] { toggle(); };
    for (int index = 0; index < kinds; ++index)
        optRecur[static_cast<std::size_t>(index)].onClick = [this, index] { chooseKind(index); };
    interval.onLostFocus = count.onLostFocus = [this] { showNumbers(); };
    interval.onChange = [this](long every) { write(&IRecurrence::put_Interval, every - 1); };
    count.onChange = [this](long times) { write(&IRecurrence::put_Count, times); };
}

float RecurrencePanel::bottom() const noexcept
{
    return fraRecur.Visible() ? fraRecur.bottom() : fraRecur.Top();
}

void RecurrencePanel::fill()
{
    chkRecurrences.setEnabled(true);
    const auto rule = command_().Rule;
    if (rule)
        showKind(fetch(rule, &IRecurrence::get_Kind));
    open(static_cast<bool>(rule));
}

void RecurrencePanel::lock()
{
    chkRecurrences.setEnabled(false);
    open(false);
}

void RecurrencePanel::toggle()
{
    const bool isOpen = chkRecurrences.Value();
    if (!isOpen)
        command_().Rule.reset();
    else if (!command_().Rule)
        undoOnFailure([&] { chooseKind(0); }, [&] { chkRecurrences.setValue(false); });
    open(isOpen);
}

void RecurrencePanel::open(bool isOpen)
{
    chkRecurrences.setValue(isOpen);
    if (fraRecur.Visible() == isOpen)
        return;
    fraRecur.setVisible(isOpen);
    onToggle_();
}

/// A rule of the same kind is kept as it is; another one starts with the data layer's values. Where the change fails,
/// the former rule stays, and its option with it.
void RecurrencePanel::chooseKind(int index)
{
    auto& command = command_(); // another one may be at hand after a call
    const auto former = command.Rule;
    const long formerKind = kind_;
    undoOnFailure(
        [&] {
            const long kind = index + 1;
            if (!former || fetch(former, &IRecurrence::get_Kind) != kind)
            {
                auto rule = fetch(command.Root, &IRoot::NewRecurrence, kind);
                notNull(rule.get()); // none would be no repetition, whatever is shown
                command.Rule = std::move(rule);
            }
            showKind(kind);
        },
        [&] {
            command.Rule = former;
            showKind(formerKind);
        });
}

/// Shows a kind of rule with the rule's numbers; for a kind that has no option, no option and no numbers.
void RecurrencePanel::showKind(long kind)
{
    kind_ = kind;
    const bool known = kind >= 1 && kind <= kinds;
    for (int index = 0; index < kinds; ++index)
        optRecur[static_cast<std::size_t>(index)].setValue(index + 1 == kind);
    fraRecurStd.setVisible(known);
    if (!known)
        return;
    const long text = textOfKind(static_cast<int>(kind) - 1);
    interval.setCaptions(text + 1);
    count.setCaptions(text + 3);
    // The boxes stand below each other.
    const float width = std::max(interval.captionWidth(), count.captionWidth());
    interval.layOut(width);
    count.layOut(width);
    showNumbers();
}

/// Where the rule does not take a number, the box goes back to the rule's own: what OK stores is what is shown.
void RecurrencePanel::write(HRESULT (STDMETHODCALLTYPE IRecurrence::*property)(long), long number)
{
    const auto rule = command_().Rule;
    if (!rule)
        return;
    undoOnFailure([&] { call(rule, property, number); }, [&] { showNumbers(); });
}

void RecurrencePanel::showNumbers()
{
    const auto rule = command_().Rule;
    if (!rule)
        return;
    const long times = fetch(rule, &IRecurrence::get_Count);
    const long every = fetch(rule, &IRecurrence::get_Interval);
    count.show(times);
    interval.show(every + 1);
}

} // namespace korvane
