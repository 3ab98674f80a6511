// A box to choose one item of a list from, which drops down.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

class ComboBox : public Control
{
public:
    ComboBox(Surface surface, const Design& design) : Control(surface, design, TextProperty::none) {}

    /// Adds an item at the end, with its data. Throws E_OUTOFMEMORY when the list is full.
    void AddItem(BSTR text, long itemData);
    void Clear();
    int ListCount() const noexcept;
    int ListIndex() const noexcept; ///< -1 without a selection
    void setListIndex(int index) const noexcept;
    long ItemData(int index) const noexcept;

    std::function<void()> onClick; ///< the user has chosen an item; setListIndex does not raise it

    float hiddenHeight() const noexcept override;
    void placed() override;
    void notify(WORD code) override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    int height() const noexcept; ///< in pixels, without the list
};

} // namespace korvane
