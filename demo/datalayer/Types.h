// The activity types collection.
#pragma once

#include "demo/datalayer/Announcer.h"
#include "demo/datalayer/Store.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

namespace korvane::store
{

class Types final
    : public Object<Types, Inherits<ITypes, Announcer<ITypesEvents>>, ITypes, IConnectionPointContainer>
{
public:
    explicit Types(std::shared_ptr<Store> store) : store_(std::move(store)) {}

    STDMETHODIMP Load(long groupId, VARIANT_BOOL* result) override;

    /// Tells that what was announced no longer holds. Subscribers load again what they show.
    void announceChange();

private:
    Trace& trace() const noexcept { return store_->trace(); }

    std::shared_ptr<Store> store_;
};

} // namespace korvane::store
