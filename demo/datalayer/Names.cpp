#include "demo/datalayer/Names.h"

#include "demo/datalayer/NameTable.h"

namespace korvane::store
{

STDMETHODIMP Names::Load(long groupId, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        return traced(trace(), line(L"Names.Load", groupId), [&] {
            const auto names = namesOf(groupId, store_->connection());
            announceClear(trace());
            for (const Name& name : names)
                announceItem(trace(), name.id, name.text, name.group, name.color);
            return true;
        });
    });
}

void Names::announceChange()
{
    attempt([&] { announceClear(trace()); });
}

} // namespace korvane::store
