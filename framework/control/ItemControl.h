// What a list box and a combo box have in common: items, each with a text and a number of its owner's.
#pragma once

#include "framework/control/Control.h"

namespace korvane
{

class ItemControl : public Control
{
public:
    /// Adds an item at the end, with its data. Throws E_OUTOFMEMORY when the list is full.
    void AddItem(BSTR text, long itemData) { InsertItem(-1, text, itemData); }
    int ListCount() const noexcept;
    int ListIndex() const noexcept; ///< -1 without a selection
    long ItemData(int index) const noexcept;
    std::wstring List(int index) const;

    /// The item with this data, or with exactly this text; -1 where there is none.
    int indexOf(long itemData) const noexcept;
    int indexOf(std::wstring_view text) const;

protected:
    /// How the platform calls it for one of the two kinds of windows.
    struct Messages
    {
        UINT insert;
        UINT setData;
        UINT data;
        UINT count;
        UINT selected;
        UINT textLength;
        UINT text;
    };

    ItemControl(Surface surface, const Design& design, const Messages& messages)
        : Control(surface, design), messages_(messages)
    {
    }

    /// Adds an item before another one; -1 for the end.
    void InsertItem(int index, const wchar_t* text, long itemData);

private:
    const Messages& messages_; ///< of the kind
};

} // namespace korvane
