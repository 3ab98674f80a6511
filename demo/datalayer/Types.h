// The activity types collection.
#pragma once

#include "demo/datalayer/MemberCollection.h"
#include "demo/datalayer/TypeTable.h"

namespace korvane::store
{

class Types final : public MemberCollection<Types, ITypes, ITypesEvents>
{
public:
    using MemberCollection::MemberCollection;

    static constexpr const wchar_t* loading = L"Types.Load";
    static constexpr auto itemsOf = typesOf;
    static auto announced(const Type& type) { return std::tie(type.id, type.text, type.color); }
};

} // namespace korvane::store
