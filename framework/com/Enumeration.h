// A COM enumerator over a list that was taken when the enumeration began.
#pragma once

#include "framework/com/Object.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace korvane
{

/// Interface is the enumerator's, Raw what its Next stores, and Item what keeps a Raw alive; copy makes the
/// caller's own Raw.
template <class Interface, class Raw, class Item, Raw (*copy)(const Item&)>
class Enumeration final
    : public Object<Enumeration<Interface, Raw, Item, copy>, Inherits<Interface>, Interface>
{
public:
    explicit Enumeration(std::vector<Item> items, std::size_t next = 0)
        : items_(std::move(items)), next_(next)
    {
    }

    STDMETHODIMP Next(ULONG count, Raw* items, ULONG* fetched) override
    {
        if (!items || (!fetched && count != 1))
            return E_POINTER;
        const auto given = static_cast<ULONG>(std::min<std::size_t>(count, items_.size() - next_));
        for (ULONG index = 0; index < given; ++index)
            items[index] = copy(items_[next_ + index]);
        next_ += given;
        if (fetched)
            *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }

    STDMETHODIMP Skip(ULONG count) override
    {
        const std::size_t skipped = std::min<std::size_t>(count, items_.size() - next_);
        next_ += skipped;
        return skipped == count ? S_OK : S_FALSE;
    }

    STDMETHODIMP Reset() override
    {
        next_ = 0;
        return S_OK;
    }

    STDMETHODIMP Clone(Interface** clone) override
    {
        return returns(clone, [&] { return ComPtr<Interface>(make<Enumeration>(items_, next_).get()); });
    }

private:
    std::vector<Item> items_;
    std::size_t next_;
};

} // namespace korvane
