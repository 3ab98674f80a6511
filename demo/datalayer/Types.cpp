#include "demo/datalayer/Types.h"

#include "demo/datalayer/TypeTable.h"

namespace korvane::store
{

STDMETHODIMP Types::Load(long groupId, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        return traced(trace(), line(L"Types.Load", groupId), [&] {
            const auto types = typesOf(groupId, store_->connection());
            announceClear(trace());
            for (const Type& type : types)
                announceItem(trace(), type.id, type.text, type.color);
            return true;
        });
    });
}

void Types::announceChange()
{
    attempt([&] { announceClear(trace()); });
}

} // namespace korvane::store
