#include "demo/datalayer/Types.h"

#include "demo/datalayer/Results.h"

namespace korvane::store
{

namespace
{

std::wstring shownResult(const TypeDetails& found)
{
    return line(L"=", found.text, found.color, found.flags, found.groups);
}

} // namespace

STDMETHODIMP Types::Fetch(long id, BSTR* text, long* color, long* flags, long* groups)
{
    return guard([&] {
        requireAll(text, color, flags, groups);
        const TypeDetails found =
            traced(trace(), called(L"Fetch", id), [&] { return table_.fetch(id); }, shownResult);
        give(text, Bstr(found.text));
        *color = found.color;
        *flags = found.flags;
        *groups = found.groups;
    });
}

} // namespace korvane::store
