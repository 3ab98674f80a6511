#include "framework/com/SafeArray.h"

#include "framework/com/Failure.h"

#include <new>

namespace korvane
{

Variant arrayOf(const std::vector<long>& numbers)
{
    Variant result;
    VARIANT* const value = result.put();
    value->parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(numbers.size()));
    if (!value->parray)
        throw std::bad_alloc();
    value->vt = VT_ARRAY | VT_VARIANT;

    void* data = nullptr;
    require(SafeArrayAccessData(value->parray, &data));
    auto* elements = static_cast<VARIANT*>(data);
    for (const long number : numbers)
    {
        elements->vt = VT_I4;
        elements->lVal = number;
        ++elements;
    }
    require(SafeArrayUnaccessData(value->parray));
    return result;
}

} // namespace korvane
