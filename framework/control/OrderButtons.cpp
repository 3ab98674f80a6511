#include "framework/control/OrderButtons.h"

#include <algorithm>
#include <array>

namespace korvane
{

namespace
{

/// The picture has the id of the text.
struct OrderButton
{
    const wchar_t* name;
    const wchar_t* text;
    long picture;
    WORD key;
};

/// In the order of the moves, from top to bottom.
constexpr std::array designs{
    OrderButton{L"cmdUpUp", L"22521", 22521, VK_HOME}, OrderButton{L"cmdUp", L"22522", 22522, VK_UP},
    OrderButton{L"cmdDown", L"22523", 22523, VK_DOWN}, OrderButton{L"cmdDownDown", L"22524", 22524, VK_END}};

} // namespace

OrderButtons::OrderButtons(Surface surface, const Place& first, float gap)
    : cmdMove(makeControls<designs.size()>([&](int index) {
          const auto& [name, text, picture, key] = designs.at(static_cast<std::size_t>(index));
          const float top = first.top + (first.height + gap) * static_cast<float>(index);
          return Button(surface,
                        {.name = name,
                         .place = {first.left, top, first.width, first.height},
                         .text = text,
                         .toolTip = text},
                        picture);
      }))
{
    for (std::size_t index = 0; index < cmdMove.size(); ++index)
        cmdMove.at(index).onClick = [this, index] { onMove(static_cast<Move>(index)); };
}

void OrderButtons::setLeft(float left)
{
    for (Button& button : cmdMove)
        button.setLeft(left);
}

std::optional<OrderButtons::Move> OrderButtons::moveOf(WORD key) noexcept
{
    const auto* const found =
        std::find_if(designs.begin(), designs.end(), [&](const auto& each) { return each.key == key; });
    return found == designs.end() ? std::nullopt : std::optional(static_cast<Move>(found - designs.begin()));
}

int OrderButtons::target(Move move, int entry, int count) noexcept
{
    switch (move)
    {
    case Move::toTop:
        return 0;
    case Move::up:
        return entry - 1;
    case Move::down:
        return entry + 1;
    case Move::toBottom:
        break;
    }
    return count - 1;
}

} // namespace korvane
