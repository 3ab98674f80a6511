// The activity types collection.
#pragma once

#include "demo/datalayer/MemberCollection.h"
#include "demo/datalayer/TypeTable.h"

namespace korvane::store
{

class Types final : public Object<Types, MemberCollection<ITypes, ITypesEvents, TypeTable>, ITypes,
                                  IConnectionPointContainer>
{
public:
    explicit Types(std::shared_ptr<Store> store) : Object(std::move(store)) {}

    STDMETHODIMP Fetch(long id, BSTR* text, long* color, long* flags, long* groups) override;
};

} // namespace korvane::store
