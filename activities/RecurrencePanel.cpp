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
constexpr float gap = 45;

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
      optRecur{OptionButton{fraRecur,
                            {.name = L"optRecur", .place = optionPlace(0), .text = L"25010"},
                            OptionButton::Position::first},
               OptionButton{fraRecur, {.name = L"optRecur", .place = optionPlace(1), .text = L"25020"}},
               OptionButton{fraRecur, {.name = L"optRecur", .place = optionPlace(2), .text = L"25030"}},
               OptionButton{fraRecur, {.name = L"optRecur", .place = optionPlace(3), .text = L"25040"}},
               OptionButton{fraRecur, {.name = L"optRecur", .place = optionPlace(4), .text = L"25050"}}},
      fraRecurStd(fraRecur, {.name = L"fraRecurStd",
                             .place = {optionsWidth, 0, place.width - optionsWidth, place.height}}),
      lblRecurIval1(fraRecurStd, {.name = L"lblRecurIval1", .place = {0, 90, 1000, 210}}),
      txtRecurIval(fraRecurStd, {.name = L"txtRecurIval", .place = {1000, 45, 480, 300}},
                   TextBox::Kind::digits),
      updRecurIval(fraRecurStd, {.name = L"updRecurIval", .place = {1480, 45, 255, 300}}, txtRecurIval, 1,
                   largestNumber),
      lblRecurIval2(fraRecurStd, {.name = L"lblRecurIval2", .place = {1800, 90, 900, 210}}),
      lblRecurCnt1(fraRecurStd, {.name = L"lblRecurCnt1", .place = {0, 480, 1000, 210}}),
      txtRecurCnt(fraRecurStd, {.name = L"txtRecurCnt", .place = {1000, 435, 480, 300}},
                  TextBox::Kind::digits),
      updRecurCnt(fraRecurStd, {.name = L"updRecurCnt", .place = {1480, 435, 255, 300}}, txtRecurCnt, 1,
                  largestNumber),
      lblRecurCnt2(fraRecurStd, {.name = L"lblRecurCnt2", .place = {1800, 480, 900, 210}})
{
    fraRecur.setVisible(false);
    fraRecurStd.setVisible(false);
    chkRecurrences.onClick = [this] { toggle(); };
    for (int index = 0; index < kinds; ++index)
        optRecur[static_cast<std::size_t>(index)].onClick = [this, index] { chooseKind(index); };
    txtRecurIval.onChange = [this] { intervalTyped(); };
    txtRecurIval.onLostFocus = [this] { showNumbers(); };
    updRecurIval.onChange = [this] { intervalChanged(); };
    txtRecurCnt.onChange = [this] { countTyped(); };
    txtRecurCnt.onLostFocus = [this] { showNumbers(); };
    updRecurCnt.onChange = [this] { countChanged(); };
}

float RecurrencePanel::bottom() const noexcept
{
    return fraRecur.Visible() ? fraRecur.bottom() : fraRecur.Top();
}

void RecurrencePanel::fill()
{
    chkRecurrences.setEnabled(true);
    const auto& rule = command_().Rule;
    if (rule)
    {
        long kind = 0;
        call(rule, &IRecurrence::get_Kind, &kind);
        showKind(kind);
    }
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
    {
        if (const auto failure = attempt([&] { chooseKind(0); }))
        {
            chkRecurrences.setValue(false);
            throw *failure;
        }
    }
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

/// A rule of the same kind is kept as it is; another one starts with the data layer's values.
void RecurrencePanel::chooseKind(int index)
{
    auto& command = command_();
    const long kind = index + 1;
    long present = 0;
    if (command.Rule)
        call(command.Rule, &IRecurrence::get_Kind, &present);
    if (present != kind)
    {
        ComPtr<IRecurrence> rule;
        const auto failure = attempt([&] { call(command.Root, &IRoot::NewRecurrence, kind, rule.put()); });
        if (failure)
        {
            showKind(present); // the option that was left
            throw *failure;
        }
        command.Rule = std::move(rule);
    }
    showKind(kind);
}

/// Shows a kind of rule with the rule's numbers; for a kind that has no option, no option and no numbers.
void RecurrencePanel::showKind(long kind)
{
    const bool known = kind >= 1 && kind <= kinds;
    for (int index = 0; index < kinds; ++index)
        optRecur[static_cast<std::size_t>(index)].setValue(index + 1 == kind);
    fraRecurStd.setVisible(known);
    if (!known)
        return;
    const long text = textOfKind(static_cast<int>(kind) - 1);
    lblRecurIval1.setCaption(resourceText(text + 1).view());
    lblRecurIval2.setCaption(resourceText(text + 2).view());
    lblRecurCnt1.setCaption(resourceText(text + 3).view());
    lblRecurCnt2.setCaption(resourceText(text + 4).view());
    layOutRows();
    showNumbers();
}

/// The boxes of both rows stand below each other, the rest follows them.
void RecurrencePanel::layOutRows()
{
    const float first = std::max(lblRecurIval1.captionWidth(), lblRecurCnt1.captionWidth());
    const auto row = [first](Label& before, TextBox& box, UpDown& arrows, Label& after) {
        before.setWidth(first);
        box.setLeft(before.right() + gap);
        arrows.setLeft(box.right());
        after.setLeft(arrows.right() + gap);
        after.setWidth(after.captionWidth());
    };
    row(lblRecurIval1, txtRecurIval, updRecurIval, lblRecurIval2);
    row(lblRecurCnt1, txtRecurCnt, updRecurCnt, lblRecurCnt2);
}

/// The numbers as the rule has them, also where the arrows do not reach that far.
void RecurrencePanel::showNumbers()
{
    const auto& rule = command_().Rule;
    if (!rule)
        return;
    long interval = 0;
    long count = 0;
    call(rule, &IRecurrence::get_Count, &count);
    call(rule, &IRecurrence::get_Interval, &interval);
    const long every = interval + 1;
    updRecurCnt.setValue(static_cast<int>(count));
    updRecurIval.setValue(static_cast<int>(every));
    txtRecurCnt.setText(decimal(count));
    txtRecurIval.setText(every == 1 ? std::wstring() : decimal(every));
}

void RecurrencePanel::intervalTyped()
{
    const auto number = numberIn(txtRecurIval.Text());
    if (!number || *number < updRecurIval.Min() || *number > updRecurIval.Max() ||
        *number == updRecurIval.Value())
        return;
    updRecurIval.setValue(static_cast<int>(*number));
    intervalChanged();
}

void RecurrencePanel::intervalChanged()
{
    const long every = updRecurIval.Value();
    // Also while the user types: every single period is shown as a blank between the labels.
    if (every == 1)
        txtRecurIval.setText({});
    else if (numberIn(txtRecurIval.Text()) != every)
        txtRecurIval.setText(decimal(every));
    if (const auto& rule = command_().Rule)
        call(rule, &IRecurrence::put_Interval, every - 1);
}

void RecurrencePanel::countTyped()
{
    const auto number = numberIn(txtRecurCnt.Text());
    if (!number || *number < updRecurCnt.Min() || *number > updRecurCnt.Max() ||
        *number == updRecurCnt.Value())
        return;
    updRecurCnt.setValue(static_cast<int>(*number));
    countChanged();
}

void RecurrencePanel::countChanged()
{
    const long count = updRecurCnt.Value();
    if (numberIn(txtRecurCnt.Text()) != count)
        txtRecurCnt.setText(decimal(count));
    if (const auto& rule = command_().Rule)
        call(rule, &IRecurrence::put_Count, count);
}

} // namespace korvane
