// Objects by ProgID, as the users of the library create them.
#pragma once

#include "framework/com/Call.h"

namespace korvane::host
{

/// Throws the failure of the look-up or of the creation.
template <class Interface> ComPtr<Interface> createByProgId(const wchar_t* progId)
{
    CLSID classId{};
    require(CLSIDFromProgID(progId, &classId));
    ComPtr<Interface> object;
    require(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), object.putVoid()));
    return object;
}

} // namespace korvane::host
