// Values as hosts may give them: of any type, and by reference.
#pragma once

#include "framework/com/Platform.h"

namespace korvane::test
{

/// variant(VT_I2, &VARIANT::iVal, -3)
template <class Field, class Value> VARIANT variant(VARTYPE type, Field VARIANT::* field, Value value)
{
    VARIANT result{};
    result.vt = type;
    result.*field = static_cast<Field>(value);
    return result;
}

inline VARIANT variant(VARTYPE type)
{
    VARIANT result{};
    result.vt = type;
    return result;
}

} // namespace korvane::test
