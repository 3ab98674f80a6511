#include "masterdata/ColorChoice.h"

#include "framework/control/ColorDialog.h"

#include <algorithm>
#include <array>

namespace korvane
{

namespace
{

struct PaletteColor
{
    COLORREF color;
    const wchar_t* name; ///< for screen readers: its value, which is the same in every language
};

/// Chosen so that also people with one of the common kinds of colour blindness tell all of them apart.
constexpr std::array palette{
    PaletteColor{RGB(0x00, 0x66, 0xCC), L"#0066CC"}, PaletteColor{RGB(0x88, 0xAA, 0xEE), L"#88AAEE"},
    PaletteColor{RGB(0x44, 0xFF, 0xFF), L"#44FFFF"}, PaletteColor{RGB(0x00, 0xAA, 0x44), L"#00AA44"},
    PaletteColor{RGB(0xCC, 0xFF, 0x88), L"#CCFF88"}, PaletteColor{RGB(0xFF, 0xEE, 0xCC), L"#FFEECC"},
    PaletteColor{RGB(0xFF, 0xCC, 0x00), L"#FFCC00"}, PaletteColor{RGB(0xFF, 0x88, 0xAA), L"#FF88AA"},
    PaletteColor{RGB(0xEE, 0x00, 0x00), L"#EE0000"}, PaletteColor{RGB(0x66, 0x00, 0x00), L"#660000"},
    PaletteColor{RGB(0xCC, 0x44, 0x88), L"#CC4488"}, PaletteColor{RGB(0x88, 0x22, 0x88), L"#882288"},
    PaletteColor{RGB(0x44, 0x00, 0x44), L"#440044"}, PaletteColor{RGB(0x66, 0x00, 0xFF), L"#6600FF"},
    PaletteColor{RGB(0x22, 0x00, 0x88), L"#220088"}, PaletteColor{RGB(0x44, 0x44, 0x44), L"#444444"},
};

} // namespace

ColorChoice::ColorChoice(Surface surface, const Place& caption, const Place& row, const Texts& texts)
    : lblColors(surface, {.name = L"lblColors", .place = caption, .text = texts.caption}),
      lblColor(makeControls<count>([&](int index) {
          const float pitch = row.width / count;
          return Swatch(
              surface,
              {.name = L"lblColor",
               .place = {row.left + pitch * static_cast<float>(index), row.top, pitch - 30, row.height},
               .text = palette[static_cast<std::size_t>(index)].name,
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
        swatch.setFillColor(static_cast<long>(palette.at(index).color));
        swatch.onClick = [this, &swatch] { choose(swatch); };
    }
    cmdCustomColor.onClick = [this] { chooseCustom(); };
}

long ColorChoice::defaultColor() noexcept
{
    return static_cast<long>(palette.front().color);
}

void ColorChoice::show(long color)
{
    color_ = color;
    const auto swatch = std::find_if(lblColor.begin(), lblColor.end(),
                                     [&](const Swatch& each) { return each.FillColor() == color; });
    const bool custom = swatch == lblColor.end();
    mark(custom ? nullptr : &*swatch);
    shpColor.setFillColor(color);
    cmdCustomColor.setFillColor(custom && color > 0 ? std::optional(color) : std::nullopt);
}

/// The chosen swatch is flat.
void ColorChoice::mark(const Swatch* chosen)
{
    for (Swatch& swatch : lblColor)
        swatch.setRaised(&swatch != chosen);
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
    mark(nullptr);
    const auto chosen = chooseColor(GetAncestor(cmdCustomColor.window(), GA_ROOT), color_);
    if (!chosen || !cmdCustomColor.window()) // the container may have ended the dialog meanwhile
        return;
    color_ = *chosen;
    shpColor.setFillColor(color_);
    cmdCustomColor.setFillColor(color_);
    onChoose(color_);
}

} // namespace korvane
