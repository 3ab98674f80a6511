// Like controls, in an array.
#pragma once

#include <array>
#include <cstddef>
#include <utility>

namespace korvane
{

template <class Item, std::size_t count> using ControlArray = std::array<Item, count>;

/// Makes the controls of an array, in tab order, by a function of their index.
template <std::size_t count, class Make> auto makeControls(const Make& make)
{
    return [&]<std::size_t... index>(std::index_sequence<index...>) {
        return ControlArray<decltype(make(0)), count>{{make(static_cast<int>(index))...}};
    }(std::make_index_sequence<count>());
}

} // namespace korvane
