// A collection of what belongs to a group and is only read: resources, activity types.
#pragma once

#include "demo/datalayer/Announcer.h"
#include "demo/datalayer/Store.h"
#include "framework/com/Object.h"
#include "tests/support/EmptyData.h"

#include <KorvaneData.h>

namespace korvane::store
{

template <class Interface> struct Unanswered;
template <> struct Unanswered<INames>
{
    using Base = test::EmptyNames;
};
template <> struct Unanswered<ITypes>
{
    using Base = test::EmptyTypes;
};

/// The item says how the trace calls Load, reads the items of a group, and tells which of its values are announced.
template <class Item, class Interface, class Events>
class MemberCollection final
    : public Object<MemberCollection<Item, Interface, Events>,
                    Inherits<typename Unanswered<Interface>::Base, Announcer<Events>>, Interface,
                    IConnectionPointContainer>
{
public:
    explicit MemberCollection(std::shared_ptr<Store> store) : store_(std::move(store)) {}

    STDMETHODIMP Load(long groupId, VARIANT_BOOL* result) override
    {
        return returns(result, [&] {
            return traced(trace(), line(Item::loading, groupId), [&] {
                const auto items = Item::allOf(groupId, store_->connection());
                this->announceClear(trace());
                for (const auto& item : items)
                    std::apply([&](const auto&... values) { this->announceItem(trace(), values...); },
                               item.announced());
                return true;
            });
        });
    }

    /// Tells that what was announced no longer holds. Subscribers load again what they show.
    void announceChange()
    {
        attempt([&] { this->announceClear(trace()); });
    }

private:
    Trace& trace() const noexcept { return store_->trace(); }

    std::shared_ptr<Store> store_;
};

} // namespace korvane::store
