#include "demo/datalayer/Types.h"

#include "demo/datalayer/TypeTable.h"

namespace korvane::store
{

namespace
{

enum Event : DISPID
{
    onClear = 1,
    onAdd = 2
};

} // namespace

STDMETHODIMP Types::Load(long groupId, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        return traced(store_->trace(), line(L"Types.Load", groupId), [&] {
            const auto types = typesOf(groupId, store_->connection());
            announceClear();
            for (const Type& type : types)
            {
                if (!hasSubscribers())
                    break;
                store_->trace().add(line(L"OnAdd", type.id, type.text, type.color));
                raise(onAdd, {Variant(type.id), Variant(Bstr(type.text)), Variant(type.color)});
            }
            return true;
        });
    });
}

void Types::announceChange()
{
    attempt([&] { announceClear(); });
}

void Types::announceClear()
{
    if (!hasSubscribers())
        return;
    store_->trace().add(L"OnClear");
    raise(onClear);
}

} // namespace korvane::store
