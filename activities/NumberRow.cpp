#include "activities/NumberRow.h"

#include "framework/com/Decimal.h"
#include "framework/com/Variant.h"
#include "framework/modKorvaneDlg.h"

namespace korvane
{

namespace
{

constexpr float gap = 60;
constexpr float drop = 45; // of a label beside a box

} // namespace

NumberRow::NumberRow(Frame& frame, float top, const Names& names, One one)
    : one_(one), lblBefore(frame, {.name = names.before, .place = {0, top + drop, 1000, 210}}),
      txtNumber(frame, {.name = names.box, .place = {1000, top, 480, 300}}, TextBox::Kind::digits, digits),
      updNumber(frame, {.name = names.arrows, .place = {1480, top, 255, 300}}, txtNumber, 1, largest),
      lblAfter(frame, {.name = names.after, .place = {1800, top + drop, 900, 210}})
{
    txtNumber.onChange = [this] { typed(); };
    txtNumber.onLostFocus = [this] { onLostFocus(); };
    updNumber.onChange = [this] { changed(); };
}

void NumberRow::show(long number)
{
    number_ = number;
    updNumber.setValue(static_cast<int>(number));
    txtNumber.setText(shown(number));
}

std::wstring NumberRow::shown(long number) const
{
    return number == 1 && one_ == One::blank ? std::wstring() : decimal(number);
}

/// The arrows count on from the number in the box. What is no number changes nothing, and one that is not within the
/// limits nothing else.
void NumberRow::typed()
{
    const auto number = numberIn(txtNumber.Text());
    if (!number || *number > updNumber.Max())
        return;
    updNumber.setValue(static_cast<int>(*number));
    if (*number >= updNumber.Min() && *number != number_)
        changed();
}

void NumberRow::changed()
{
    const long number = number_ = updNumber.Value();
    const std::wstring text = shown(number);
    // What the user types is left as it is, leading zeros and all, unless a blank is to stand for it.
    if (text.empty() || numberIn(txtNumber.Text()) != number)
        txtNumber.setText(text);
    onChange(number);
}

void NumberRow::setCaptions(long text)
{
    lblBefore.setCaption(resourceText(text).view());
    lblAfter.setCaption(resourceText(text + 1).view());
}

void NumberRow::layOut(float labelWidth)
{
    lblBefore.setWidth(labelWidth);
    txtNumber.setLeft(lblBefore.right() + gap);
    updNumber.setLeft(txtNumber.right());
    lblAfter.setLeft(updNumber.right() + gap);
    lblAfter.setWidth(lblAfter.captionWidth());
}

} // namespace korvane
