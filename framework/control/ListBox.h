// A list to choose one item from.
#pragma once

#include "framework/control/ItemControl.h"
#include "framework/control/ItemDrag.h"

namespace korvane
{

class ListBox : public ItemControl
{
public:
    ListBox(Surface surface, const Design& design) : ItemControl(surface, design, messages) {}

    using ItemControl::InsertItem;
    void RemoveItem(int index) const noexcept;
    /// Moves an item to the place of another one and selects it. What is not between the two is not drawn anew.
    void MoveItem(int from, int to);
    void Clear();
    /// Selects an item and shows it; -1 selects none. Does not raise onClick.
    void setListIndex(int index) const noexcept;

    std::function<void()> onClick;    ///< the selection was made or taken back, by mouse or keyboard
    std::function<void()> onDblClick; ///< comes after onClick
    /// The selected item is dragged to the place of another one, where its owner may move it. To be bound before the
    /// list has its window.
    std::function<void(int target)> onDrag;

    void notify(WORD code) override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    static const Messages messages;

    void redraw(int first, int last) const noexcept;
    void drag(int target) const noexcept;

    ItemDrag drag_{dialog_, [this](int target) { drag(target); }};
};

} // namespace korvane
