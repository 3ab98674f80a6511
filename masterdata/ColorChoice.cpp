#include "masterdata/ColorChoice.h"

#include "framework/control/ColorDialog.h"
#include "framework/control/DialogWindow.h"

#include <algorithm>
#include <array>

namespace korvane
{

namespace
{

/// Red, green and blue of the swatches. Chosen so that also people with one of the common kinds of colour blindness
/// tell all of them apart.
constexpr std::array palette{0x0066CC, 0x88AAEE, 0x44FFFF, 0x00AA44, 0xCCFF88, 0xFFEECC, 0xFFCC00, 0xFF88AA,
                             0xEE0000, 0x660000, 0xCC4488, 0x882288, 0x440044, 0x6600FF, 0x220088, 0x444444};

long colorOf(std::size_t index)
{
    const int parts = palette.at(index);
    return static_cast<long>(RGB(parts >> 16, parts >> 8 & 0xFF, parts & 0xFF));
}

/// What screen readers call a swatch: its value, which is the same in every language.
std::wstring nameOf(std::size_t index)
{
    std::wstring name = L"#000000";
    for (int digit = 6, value = palette.at(index); digit > 0; --digit, value >>= 4)
        name[static_cast<std::size_t>(digit)] = L"0123456789ABCDEF"[value & 15];
    return name;
}

} // namespace

ColorChoice::ColorChoice(Surface surface, const Place& caption, const Place& row, const Texts& texts)
    : dialog_(surface.dialog),
      lblColors(surface, {.name = L"lblColors", .place = caption, .text = texts.caption}),
      lblColor(makeControls<count>([&](int index) {
          constexpr float gap = 30;
          const float pitch = (row.width + gap) / count;
          const float left = row.left + pitch * static_cast<float>(index);
          const std::wstring name = nameOf(static_cast<std::size_t>(index));
          return Swatch(surface,
                        {.name = L"lblColor",
                         .place = {left, row.top, pitch - gap, row.height},
                         .text = name.c_str(),
                         .toolTip = texts.toolTip},
                        index == 0 ? Swatch::Kind::first : Swatch::Kind::further);
      })),
      shpColor(surface, {.name = L"shpColor", .place = {row.left, row.bottom() + 90, 345, 345}}),
      cmdCustomColor(surface, {.name = L"cmdCustomColor",
                               .place = {row.left + 435, row.bottom() + 90, 1500, 345},
                               .text = texts.more,
                               .toolTip = texts.toolTip})
{
    for (std::size_t index = 0; index < count; ++index)
    {
        Swatch& swatch = lblColor.at(index);
        swatch.setFillColor(colorOf(index));
        swatch.onClick = [this, &swatch] { choose(swatch); };
    }
    cmdCustomColor.onClick = [this] { chooseCustom(); };
}

long ColorChoice::defaultColor() noexcept
{
    return colorOf(0);
}

void ColorChoice::show(long color)
{
    color_ = color;
    const auto* const swatch = std::find_if(lblColor.begin(), lblColor.end(),
                                            [&](const Swatch& each) { return each.FillColor() == color; });
    const bool custom = swatch == lblColor.end();
    mark(static_cast<std::size_t>(swatch - lblColor.begin()));
    shpColor.setFillColor(color);
    cmdCustomColor.setFillColor(custom && color > 0 ? std::optional(color) : std::nullopt);
}

/// The chosen swatch is flat. @param chosen the number of swatches for none of them.
void ColorChoice::mark(std::size_t chosen)
{
    for (std::size_t index = 0; index < lblColor.size(); ++index)
        lblColor[index].setRaised(index != chosen);
}

void ColorChoice::choose(const Swatch& swatch)
{
    show(swatch.FillColor());
    onChoose(color_);
}

/// What the user puts together is marked on no swatch, and nothing is marked any more where he cancels: the agreed
/// behaviour.
void ColorChoice::chooseCustom()
{
    mark(lblColor.size());
    std::optional<long> chosen;
    dialog_.runModal([&] { chosen = chooseColor(GetAncestor(cmdCustomColor.window(), GA_ROOT), color_); });
    if (!chosen || !cmdCustomColor.window()) // the container may have ended the dialog meanwhile
        return;
    color_ = *chosen;
    shpColor.setFillColor(color_);
    cmdCustomColor.setFillColor(color_);
    onChoose(color_);
}

} // namespace korvane
