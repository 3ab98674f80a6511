#include "framework/control/TextRoom.h"

#include "framework/com/Variant.h"

#include <algorithm>

namespace korvane
{

namespace
{

// Twips.
constexpr float margin = 120; // at the ends of a dialog
constexpr float gap = 60;     // before the next control
constexpr float touching = 15;
constexpr float tolerance = 1; // places are added up

bool standsAtRight(const Control& control) noexcept
{
    return control.frame() && control.frame()->alignsRight();
}

float rightOf(const Place& place) noexcept
{
    return place.left + place.width;
}

/// What its text needs. A number is a count, or the id of a text that could not be had: nothing to make room for.
float neededWidth(const Control& control)
{
    return numberIn(control.textValue()) ? 0 : control.neededWidth();
}

} // namespace

float TextRoom::make()
{
    for (Control* control : controls_)
    {
        if (standsAtRight(*control))
            widenToLeft(*control);
        else if (!fixed_)
            widen(*control);
    }
    keepWithin();
    return wider_;
}

void TextRoom::widen(Control& control)
{
    const float needed = neededWidth(control);
    if (needed <= 0)
        return;
    const Place place = control.placeOnDialog();
    if (const float room = roomAtRight(control); needed > room + tolerance)
        drawApart(place.left + room, needed - room);
    if (needed > place.width)
        control.setWidth(needed);
    // Where its place was chosen for its text, it may reach beyond the dialog.
    if (const float beyond = rightOf(control.placeOnDialog()) - width_; beyond > 0)
        drawApart(width_ - margin, beyond + margin, &control);
}

void TextRoom::widenToLeft(Control& control)
{
    const float by = neededWidth(control) - control.Width();
    if (by <= 0)
        return;
    const float left = control.Left();
    for (Control* other : controls_)
        if (other->frame() == control.frame() && other->Left() <= left)
            other->setLeft(other->Left() - by);
    control.setWidth(control.Width() + by);
}

/// The buttons that have grown to the left have not left the dialog: also where it has laid itself out anew since.
void TextRoom::keepWithin()
{
    float first = margin;
    for (const Control* control : controls_)
        if (standsAtRight(*control))
            first = std::min(first, control->placeOnDialog().left);
    if (first < margin / 2) // a small font makes the designed margin smaller
        drawApart(width_ - margin, margin - first);
}

/// How wide the control's caption can become where it is. What does not show together with it is not in its way.
float TextRoom::roomAtRight(const Control& control) const
{
    const Place place = control.placeOnDialog();
    float end = std::max(width_ - margin, rightOf(place));
    for (const Control* other : controls_)
    {
        const Place theirs = other->placeOnDialog();
        const bool beside = theirs.top < place.bottom() && place.top < theirs.bottom() &&
                            theirs.left >= rightOf(place) - touching;
        if (beside && other->shows() == control.shows())
            end = std::min(end, theirs.left - gap);
    }
    return end - place.left;
}

/// @param reaching a control that reaches beyond the dialog: it has its place, and so has what stands in its frame.
void TextRoom::drawApart(float at, float by, const Control* reaching)
{
    width_ += by;
    wider_ += by;
    if (fixed_)
        return;
    std::vector<Place> places;
    places.reserve(controls_.size());
    for (const Control* control : controls_)
        places.push_back(control->placeOnDialog());
    const auto moves = [&](const Place& place) { return place.left >= at - touching; };
    const auto carriedBy = [&](const Frame* frame) {
        const auto found = std::find(controls_.begin(), controls_.end(), frame);
        return frame && moves(places.at(static_cast<std::size_t>(found - controls_.begin()))) ? by : 0;
    };
    for (std::size_t index = 0; index < controls_.size(); ++index)
    {
        Control& control = *controls_[index];
        if (reaching && (&control == reaching || (control.frame() && control.frame() == reaching->frame())))
            continue;
        if (standsAtRight(control) || moves(places[index]))
            control.setLeft(control.Left() + by - carriedBy(control.frame()));
        else if (control.stretches() && rightOf(places[index]) >= at - touching)
            control.setWidth(control.Width() + by);
    }
}

} // namespace korvane
