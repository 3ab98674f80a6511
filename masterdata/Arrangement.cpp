#include "masterdata/Arrangement.h"

#include "framework/com/Failure.h"

namespace korvane
{

namespace
{

std::size_t indexIn(std::size_t count, long index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= count)
        throw Failure(DISP_E_BADINDEX);
    return static_cast<std::size_t>(index);
}

} // namespace

void ItemTable::clear()
{
    items_.assign(1, Item{});
    added_ = 0;
}

void ItemTable::add(long id, Bstr text)
{
    if (added_ == items_.size())
        items_.emplace_back();
    items_[added_++] = {id, std::move(text)};
}

const ItemTable::Item& ItemTable::at(long index) const
{
    return items_[indexIn(items_.size(), index)];
}

void Arrangement::arrange(ItemTable&& loaded)
{
    order_.assign(static_cast<std::size_t>(loaded.count()), 0);
    items_ = std::move(loaded);
}

void Arrangement::setPos(long index, long id)
{
    order_[indexIn(order_.size(), index)] = id;
}

} // namespace korvane
