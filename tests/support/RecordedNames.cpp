#include "tests/support/RecordedNames.h"

namespace korvane::test
{

void RecordedNames::announce(const Name& name)
{
    if (name.group == Name::withoutGroup)
        raise(2, {Variant(name.id), Variant(Bstr(name.text))});
    else
        raise(2, {Variant(name.id), Variant(Bstr(name.text)), Variant(name.group), Variant(name.color)});
}

STDMETHODIMP RecordedNames::Load(long groupId, VARIANT_BOOL* result)
{
    const HRESULT outcome = data_.record("Names.Load", shown(groupId));
    if (FAILED(outcome))
        return outcome;
    raise(1);
    for (const Name& name : data_.names)
        if (groupId == 0 || name.group == groupId)
            announce(name);
    *result = VARIANT_TRUE;
    return S_OK;
}

void RecordedTypes::announce(const Type& type)
{
    raise(2, {Variant(type.id), Variant(Bstr(type.text)), Variant(type.color)});
}

STDMETHODIMP RecordedTypes::Load(long groupId, VARIANT_BOOL* result)
{
    const HRESULT outcome = data_.record("Types.Load", shown(groupId));
    if (FAILED(outcome))
        return outcome;
    raise(1);
    for (const Type& type : data_.types)
        if (groupId == 0 || type.group == 0 || type.group == groupId)
            announce(type);
    *result = VARIANT_TRUE;
    return S_OK;
}

} // namespace korvane::test
