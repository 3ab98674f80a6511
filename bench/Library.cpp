#include "bench/Library.h"

#include "bench/Measurement.h"

namespace korvane::bench
{

CLSID classIdOf(const wchar_t* progId)
{
    CLSID classId{};
    require(CLSIDFromProgID(progId, &classId));
    return classId;
}

void createByName(const wchar_t* progId, REFIID iid, void** object)
{
    CLSID classId{};
    require(CLSIDFromProgID(progId, &classId));
    require(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, iid, object));
}

HMODULE library()
{
    const HMODULE module = GetModuleHandleW(L"KorvaneDlg.dll");
    demand(module != nullptr, "the library is not loaded");
    return module;
}

std::wstring libraryPath()
{
    wchar_t path[MAX_PATH];
    return {path, GetModuleFileNameW(library(), path, MAX_PATH)};
}

} // namespace korvane::bench
