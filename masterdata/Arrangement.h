// What an arrange command holds: the items in their stored order, and the order that the user wants.
#pragma once

#include "framework/com/ComPtr.h"
#include "framework/com/Variant.h"

#include <KorvaneData.h>

#include <vector>

namespace korvane
{

/// The items that a collection announces. Any index that is not in the table throws DISP_E_BADINDEX.
class ItemTable
{
public:
    struct Item
    {
        long id = 0;
        Bstr text;
    };

    /// Leaves one empty item, in whose place the first one comes: where none comes, hosts find that one.
    void clear();
    void add(long id, Bstr text);

    long count() const noexcept { return static_cast<long>(items_.size()); }
    const Item& at(long index) const;

private:
    std::vector<Item> items_;
    std::size_t added_ = 0;
};

class Arrangement
{
public:
    const ItemTable& items() const noexcept { return items_; }
    /// Which item is to stand at a place. Throws DISP_E_BADINDEX for a place that no item has.
    void setPos(long index, long id);

    ComPtr<IRoot> Root;
    long GroupID = 0;
    long Pos = 0; ///< the host's, and used for nothing

protected:
    /// Takes over what was loaded, for which no order is chosen yet.
    void arrange(ItemTable&& loaded);
    const std::vector<long>& order() const noexcept { return order_; }

private:
    ItemTable items_;
    std::vector<long> order_;
};

} // namespace korvane
