#include "demo/datalayer/Names.h"

#include "demo/datalayer/NameTable.h"

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

STDMETHODIMP Names::Load(long groupId, VARIANT_BOOL* result)
{
    return returns(result, [&] {
        return traced(store_->trace(), line(L"Names.Load", groupId), [&] {
            const auto names = namesOf(groupId, store_->connection());
            announceClear();
            for (const Name& name : names)
            {
                if (!hasSubscribers())
                    break;
                store_->trace().add(line(L"OnAdd", name.id, name.text, name.group, name.color));
                raise(onAdd,
                      {Variant(name.id), Variant(Bstr(name.text)), Variant(name.group), Variant(name.color)});
            }
            return true;
        });
    });
}

void Names::announceChange()
{
    attempt([&] { announceClear(); });
}

void Names::announceClear()
{
    if (!hasSubscribers())
        return;
    store_->trace().add(L"OnClear");
    raise(onClear);
}

} // namespace korvane::store
