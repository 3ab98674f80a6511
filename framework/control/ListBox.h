// A list to choose one item from.
#pragma once

#include "framework/control/Control.h"

#include <functional>

namespace korvane
{

class ListBox : public Control
{
public:
    ListBox(Surface surface, const Design& design) : Control(surface, design, TextProperty::none) {}

    /// Adds an item at the end, with its data. Throws E_OUTOFMEMORY when the list is full.
    void AddItem(BSTR text, long itemData);
    void Clear();
    int ListCount() const noexcept;
    int ListIndex() const noexcept; ///< -1 without a selection
    long ItemData(int index) const noexcept;
    std::wstring List(int index) const;

    std::function<void()> onClick;    ///< the selection was made, by mouse or keyboard
    std::function<void()> onDblClick; ///< comes after onClick

    void notify(WORD code) override;

protected:
    HWND createWindow(HWND parent, int id) override;
};

} // namespace korvane
