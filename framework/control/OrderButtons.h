// The buttons with which the user moves an entry within the order of its list, and the keys that do the same.
#pragma once

#include "framework/control/Button.h"
#include "framework/control/ControlArray.h"

namespace korvane
{

class OrderButtons
{
public:
    enum class Move
    {
        toTop,
        up,
        down,
        toBottom
    };

    /// @param first place of the uppermost button; the others stand below it. @param gap twips between two of them.
    OrderButtons(Surface surface, const Place& first, float gap);

    void setLeft(float left);
    float Width() const noexcept { return cmdMove.front().Width(); }
    float bottom() const noexcept { return cmdMove.back().bottom(); }

    /// What a key of the list is for while Alt is held; none for a key of another meaning.
    static std::optional<Move> moveOf(WORD key) noexcept;
    /// Where an entry of a list moves to; beyond the ends of the list where it is at its end already.
    static int target(Move move, int entry, int count) noexcept;

    std::function<void(Move move)> onMove; ///< by a button

private:
    ControlArray<Button, 4> cmdMove; ///< cmdUpUp, cmdUp, cmdDown, cmdDownDown
};

} // namespace korvane
