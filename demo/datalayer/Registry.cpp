#include "demo/datalayer/Registry.h"

#include "demo/datalayer/Store.h"
#include "demo/datalayer/Text.h"

#include <optional>

namespace korvane::store
{

namespace
{

constexpr std::wstring_view sharedFolder = L"SharedFolder";

std::optional<std::wstring> setting(Store& store, std::wstring_view key)
{
    Statement row(store.connection(), "SELECT value FROM settings WHERE name = ?", key);
    if (row.next())
        return row.text(0);
    // Not stored, so that a database can be moved.
    return sameText(key, sharedFolder) ? std::optional(store.folder()) : std::nullopt;
}

std::wstring shownResult(const std::optional<std::wstring>& text)
{
    return text ? L"= " + shown(*text) : L"= the default";
}

} // namespace

STDMETHODIMP Registry::GetValue(BSTR key, VARIANT defaultValue, VARIANT* value)
{
    return returns(value, [&] {
        const auto store = Store::latest();
        if (!store)
            return Variant::valueOf(defaultValue);
        const auto stored = traced(
            store->trace(), line(L"Registry.GetValue", view(key)), [&] { return setting(*store, view(key)); },
            shownResult);
        return stored ? Variant(Bstr(*stored)) : Variant::valueOf(defaultValue);
    });
}

} // namespace korvane::store
