// The resources collection.
#pragma once

#include "demo/datalayer/MemberCollection.h"
#include "demo/datalayer/NameTable.h"

namespace korvane::store
{

class Names final : public MemberCollection<Names, INames, INamesEvents>
{
public:
    using MemberCollection::MemberCollection;

    static constexpr const wchar_t* loading = L"Names.Load";
    static constexpr auto itemsOf = namesOf;
    static auto announced(const Name& name) { return std::tie(name.id, name.text, name.group, name.color); }
};

} // namespace korvane::store
